#include "bench/uExportBenches.h"

#include <xlsxwriter.h>

#include <array>
#include <charconv>
#include <numeric>
#include <optional>

#include "analysis/uMissionDatasets.h"
#include "bench/uMeasure.h"
#include "export/uCsvExports.h"
#include "export/uXlsxExports.h"

namespace fs = std::filesystem;

namespace {

TNoProgress Silent;

std::vector<std::uint32_t> FirstEvents(std::size_t count) {
  std::vector<std::uint32_t> events(std::min(count, EventList.Count()));
  std::iota(events.begin(), events.end(), 0U);
  return events;
}

void ExportCsv(const fs::path& folder) {
  ExportEventsCsv(MissionData, EventList, FirstEvents(EventList.Count()), TEventFiles::Samples, folder, Silent);
}

// The least that a line of five numbers can cost.
void FormatSamples(const TEvent& event, std::FILE* file) {
  std::array<char, 256> line{};
  for (const TEventValue& value : event.Values()) {
    char* to = line.data();
    for (const double number : RowOf(value, event.GetStartTime())) {
      to = std::to_chars(to, line.data() + line.size(), number, std::chars_format::general, 15).ptr;
      *to++ = ',';
    }
    *to++ = '\n';
    std::fwrite(line.data(), 1, static_cast<std::size_t>(to - line.data()), file);
  }
}

void FormatToOneFile(const fs::path& out) {
  std::FILE* file = std::fopen(out.string().c_str(), "wb");
  for (const TEvent& event : EventList.Events()) FormatSamples(event, file);
  std::fclose(file);
}

void FormatToAFileEach(const fs::path& folder) {
  fs::create_directory(folder);
  for (std::size_t i = 0; i < EventList.Count(); ++i) {
    std::FILE* file = std::fopen((folder / fmt::format("ID-{}.csv", i)).string().c_str(), "wb");
    FormatSamples(EventList.GetItem(i), file);
    std::fclose(file);
  }
}

class TBareBook {
 public:
  explicit TBareBook(const fs::path& file) : FFolder(file.parent_path().string()) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = FFolder.data();
    FBook = workbook_new_opt(file.string().c_str(), &options);
  }
  lxw_worksheet* Add(const std::string& name) { return workbook_add_worksheet(FBook, name.c_str()); }
  lxw_format* AddFormat() { return workbook_add_format(FBook); }
  void Close() { workbook_close(FBook); }

 private:
  std::string FFolder;
  lxw_workbook* FBook;
};

// The cells of an event's sheet: four labels and values at the top, titles, five numbers a sample.
void WriteBare(const fs::path& file, std::span<const std::uint32_t> events) {
  TBareBook book(file);
  for (const std::uint32_t index : events) {
    const TEvent& event = EventList.GetItem(index);
    lxw_worksheet* sheet = book.Add(fmt::format("Event {}", index));
    for (lxw_row_t row = 0; row < 3; ++row) {
      for (const lxw_col_t column : {lxw_col_t{0}, lxw_col_t{3}}) {
        worksheet_write_string(sheet, row, column, "Acceleration max:", nullptr);
        worksheet_write_number(sheet, row, static_cast<lxw_col_t>(column + 1), 12.5, nullptr);
      }
    }
    for (lxw_col_t column = 0; column < 5; ++column) worksheet_write_string(sheet, 4, column, "Time (msec)", nullptr);
    lxw_row_t row = 5;
    for (const TEventValue& value : event.Values()) {
      lxw_col_t column = 0;
      for (const double number : RowOf(value, event.GetStartTime())) {
        worksheet_write_number(sheet, row, column++, number, nullptr);
      }
      ++row;
    }
  }
  book.Close();
}

void CompareEventBooks(const fs::path& file, std::size_t sheets, const TDataset& table, int rounds) {
  const std::vector<std::uint32_t> events = FirstEvents(sheets);
  PrintRatio(
      fmt::format("{} sheets of 1,000 samples to XLSX / bare, rows on disk", events.size()), 1.25, rounds,
      [&] { return SpentOn([&] {
              ExportEventsXlsx({MissionData, EventList, table}, events, file, Silent);
            }); },
      [&] { return SpentOn([&] { WriteBare(file, events); }); });
}

void CompareTableBooks(TDataset& table, const fs::path& file, int rounds) {
  // The reference writes the same cells with the same formats; its texts are there beforehand.
  const std::optional<std::size_t> timestamp = table.FindField("Timestamp");
  std::vector<std::vector<std::string>> cells(table.RecordCount());
  for (std::size_t row = 0; row < cells.size(); ++row) {
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      cells[row].push_back(table.DisplayText(row, field));
    }
  }
  PrintRatio(
      fmt::format("a table of {} × {} to XLSX / bare, rows on disk", cells.size(), table.Fields().size()), 1.15, rounds,
      [&] { return SpentOn([&] { ExportTableXlsx(MissionData, table, file, Silent); }); },
      [&] {
        return SpentOn([&] {
          TBareBook book(file);
          lxw_worksheet* sheet = book.Add("Mission");
          lxw_format* right = book.AddFormat();
          lxw_format* date = book.AddFormat();
          format_set_align(right, LXW_ALIGN_RIGHT);
          format_set_num_format(date, "yyyy-mm-dd hh:mm:ss.000");
          for (std::size_t row = 0; row < cells.size(); ++row) {
            for (std::size_t field = 0; field < cells[row].size(); ++field) {
              const auto down = static_cast<lxw_row_t>(row);
              const auto column = static_cast<lxw_col_t>(field);
              if (field == timestamp) {
                worksheet_write_number(sheet, down, column, table.DateTime(row, field), date);
              } else {
                worksheet_write_string(sheet, down, column, cells[row][field].c_str(), right);
              }
            }
          }
          book.Close();
        });
      });
}

}  // namespace

void BenchCsvOfSamples(const fs::path& folder, int rounds) {
  PrintRatio(
      "2,000,000 samples to CSV / to_chars and fwrite", 1, rounds, [&] { return SpentOn([&] { ExportCsv(folder); }); },
      [&] { return SpentOn([&] { FormatToOneFile(folder / "formatted"); }); });
}

void BenchCsvOfManyEvents(const fs::path& folder, int rounds) {
  PrintRatio(
      fmt::format("{} events to CSV files / to_chars and fwrite to as many", EventList.Count()), 2, rounds,
      [&] { return SpentOn([&] { ExportCsv(folder); }); },
      [&] { return SpentOn([&] { FormatToAFileEach(folder / "bare"); }); });
}

void BenchWorkbooks(const fs::path& folder, int rounds) {
  TMissionDatasets tables;
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, Silent, tables);
  const fs::path file = folder / "book.xlsx";
  CompareEventBooks(file, 500, tables.Events, rounds);
  CompareTableBooks(tables.Sensors, file, rounds);
}

void BenchMemoryOfTableCsv(const fs::path& folder, std::size_t rows) {
  TDataset table;
  const std::size_t id = table.AddField("ID", TFieldType::Integer);
  const std::size_t value = table.AddField("Temp.", TFieldType::Single);
  table.Reserve(rows);
  for (std::size_t row = 0; row < rows; ++row) {
    table.Append();
    table.SetInteger(id, static_cast<std::int32_t>(row));
    table.SetSingle(value, static_cast<float>(row % 1000) / 8);
  }
  constexpr double kMebibyte = 1024 * 1024;
  ResetPeak();
  const double before = PeakBytes() / kMebibyte;
  const TSpent spent = SpentOn([&] { ExportTableCsv(table, folder / "table.csv", Silent); });
  const double after = PeakBytes() / kMebibyte;
  PrintRow(fmt::format("a table of {} rows to CSV, growth in MiB", rows),
           fmt::format("{:6.3f}  (at most 4; from {:.1f} to {:.1f}, in {:.0f} ms)", after - before, before, after,
                       spent.wall * 1000));
}
