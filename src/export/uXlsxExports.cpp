#include "export/uXlsxExports.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <future>
#include <iterator>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/uBackground.h"
#include "base/uDateTime.h"
#include "export/uCurveRows.h"
#include "export/uExportFile.h"
#include "export/uWorkbook.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kEventTitleRows = 5;
constexpr std::size_t kMaxSamples = TWorkbook::kMaxRows - kEventTitleRows;  // of a sheet
constexpr std::size_t kRowsPerStep = 100;
constexpr std::size_t kMaxWidth = 60;  // of a column, in characters
constexpr std::size_t kMargin = 2;
constexpr std::size_t kFilterButton = 3;                          // of a title, which is bold besides
constexpr std::size_t kEventWidths[] = {18, 24, 14, 14, 14, 10};  // of labels, the start, numbers, a range
constexpr std::string_view kTimestamp = "Timestamp";

std::string WorkbookDateMask() {
  return ShortDateFormat() + " hh:nn:ss.zzz";
}

std::string MissionSheetName(const TMissionData& mission) {
  return SafeSheetName(fmt::format("{}{}", kMissionName, mission.sID));
}

// The sheets of a workbook, with their progress.
class TSheets {
 public:
  TSheets(const TMissionData& mission, const fs::path& file, const TWorkbookSize& size, IProgress& progress)
      : FMission(mission),
        FWorkbook(file, size, WorkbookDateMask(), mission.rec_starttime),
        FCount(size.sheets),
        FProgress(progress) {}

  TWorkbook& Add(const std::string& name, std::size_t frozenRows) {
    FProgress.SetPosition(static_cast<double>(FAdded++));
    FProgress.SetStatus(fmt::format("Creating Sheet {} of {}", FAdded, FCount));
    FProgress.ProcessMessages();
    FWorkbook.AddSheet(name, frozenRows);
    return FWorkbook;
  }
  void RowWritten() {
    if (++FRows % kRowsPerStep == 0) FProgress.ProcessMessages();
  }
  void Close() {
    if (FAdded == 0) FWorkbook.AddSheet(MissionSheetName(FMission), 0);
    RunInBackground([this](const std::stop_token& stop) { FWorkbook.Close(stop); }, FProgress);
    FProgress.SetPosition(static_cast<double>(std::max<std::size_t>(FCount, 1)));
  }

 private:
  const TMissionData& FMission;
  TWorkbook FWorkbook;
  std::size_t FCount;
  std::size_t FAdded = 0;
  std::size_t FRows = 0;
  IProgress& FProgress;
};

// Writes a file whose sheets `fill` adds.
template <class TFill>
void WriteSheets(const TMissionData& mission, const fs::path& file, const TWorkbookSize& size, IProgress& progress,
                 const TFill& fill) {
  progress.SetStatus("Creating XLSX File...");
  progress.SetPosition(0);
  progress.ProcessMessages();
  progress.SetMaximum(static_cast<double>(std::max<std::size_t>(size.sheets, 1)));
  WriteExport(file, progress, [&](const fs::path& beside) {
    TSheets sheets(mission, beside, size, progress);
    fill(sheets);
    sheets.Close();
  });
}

void RefuseTooLong(const TDataset& table, std::size_t titleRows) {
  const std::size_t max = TWorkbook::kMaxRows - titleRows;
  if (table.RecordCount() <= max) return;
  throw std::runtime_error(
      fmt::format("The table has {} rows, and a sheet of an XLSX file holds {}. Export the table as CSV instead.",
                  table.RecordCount(), max));
}

std::size_t CellsOf(const TDataset& table) {
  return table.RecordCount() * table.Fields().size();
}

// Widths of columns in characters.
class TWidths {
 public:
  void Add(std::size_t column, std::string_view text, std::size_t extra = 0) {
    if (FWidths.size() <= column) FWidths.resize(column + 1);
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    const auto characters = static_cast<std::size_t>(std::ranges::count_if(text, begins));
    FWidths[column] = std::max(FWidths[column], characters + kMargin + extra);
  }
  void Set(TWorkbook& book) const {
    for (std::size_t i = 0; i < FWidths.size(); ++i) book.SetColumnWidth(i, std::min(FWidths[i], kMaxWidth));
  }

 private:
  std::vector<std::size_t> FWidths;
};

// The texts of a table's cells, in its order, a block of rows at a time: those of the next block are made on another
// core while the library writes this one. A time stamp has none, because it is written as a number.
class TTextsAhead {
 public:
  TTextsAhead(const TDataset& table, std::optional<std::size_t> timestamp)
      : FTable(table), FTimestamp(timestamp), FNext(Begin(0)) {}

  // The texts of the row at a position, by field. Positions come one after the other, from 0 on.
  std::span<const std::string> At(std::size_t position) {
    const std::size_t row = position % kBlock;
    if (row == 0) {
      FTexts = FNext.get();
      FNext = Begin(position + kBlock);
    }
    return std::span(FTexts).subspan(row * FTable.Fields().size(), FTable.Fields().size());
  }

 private:
  static constexpr std::size_t kBlock = 500;  // rows

  std::future<std::vector<std::string>> Begin(std::size_t position) {
    std::vector<std::size_t> rows;  // collected here, because a table makes its order when it is asked for it
    for (; rows.size() < kBlock && position < FTable.RecordCount(); ++position) rows.push_back(FTable.RowAt(position));
    return std::async([this, rows = std::move(rows)] {
      const std::size_t fields = FTable.Fields().size();
      std::vector<std::string> texts(rows.size() * fields);
      for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i % fields != FTimestamp) FTable.AppendDisplayText(texts[i], rows[i / fields], i % fields);
      }
      return texts;
    });
  }

  const TDataset& FTable;
  std::optional<std::size_t> FTimestamp;
  std::vector<std::string> FTexts;
  std::future<std::vector<std::string>> FNext;  // last: its work uses the others
};

// The titles in the given row, the records below.
void WriteTable(TDataset& table, std::size_t titleRow, TWidths widths, TWorkbook& book, TSheets& sheets) {
  const std::size_t fields = table.Fields().size();
  const auto timestamp = table.FindField(kTimestamp);
  for (std::size_t field = 0; field < fields; ++field) {
    widths.Add(field, table.Fields()[field].Label, kFilterButton);
    book.WriteText(titleRow, field, table.Fields()[field].Label, TCellStyle::Title);
  }
  if (timestamp) widths.Add(*timestamp, WorkbookDateMask());
  TTextsAhead texts(table, timestamp);
  std::size_t row = titleRow;
  for (std::size_t position = 0; position < table.RecordCount(); ++position) {
    ++row;
    const std::size_t record = table.RowAt(position);
    const auto cells = texts.At(position);
    for (std::size_t field = 0; field < fields; ++field) {
      if (field != timestamp) {
        widths.Add(field, cells[field]);
        book.WriteText(row, field, cells[field], TCellStyle::NumberAsText);
      } else if (!table.IsNull(record, field)) {
        book.WriteDateTime(row, field, table.DateTime(record, field));
      }
    }
    sheets.RowWritten();
  }
  table.Last();
  widths.Set(book);
  if (fields > 0) book.MarkTable(titleRow, row, fields);
}

void WriteTitles(const auto& titles, TWorkbook& book) {
  for (std::size_t i = 0; i < titles.size(); ++i) {
    book.WriteText(kEventTitleRows - 1, i, std::string(titles[i]));
    book.SetColumnWidth(i, kEventWidths[i]);
  }
}

void WriteEventHead(const TEventSource& source, std::size_t index, TWorkbook& book) {
  const TEvent& event = source.events.GetItem(index);
  const auto metric = [&](std::size_t row, std::size_t column, std::string_view field) {
    book.WriteText(row, column, fmt::format("{}:", field));
    const auto found = source.table.FindField(field);
    if (found && !source.table.IsNull(index, *found)) {
      book.WriteNumber(row, column + 1, double{source.table.Single(index, *found)});
    }
  };
  book.WriteText(0, 0, "Start Time:");
  const double start = DateTimeOf(source.events.StartTime, event.GetStartTime());
  book.WriteText(0, 1, FormatDateTime(WorkbookDateMask(), start));
  book.WriteText(0, 3, "Event ID:");
  book.WriteNumber(0, 4, event.ID);
  metric(1, 0, "Acceleration max");
  metric(1, 3, "IoT total");
  metric(2, 0, "ToT total");
  metric(2, 3, "IoT max");
}

std::size_t CellsOf(std::size_t curveRows) {
  return curveRows * std::tuple_size_v<TCurveRow>;
}

TWorkbookSize SizeOf(const TEvent& event) {
  return {std::max<std::size_t>(1, (event.Count() + kMaxSamples - 1) / kMaxSamples), CellsOf(event.Count())};
}

void WriteCurveRow(const TCurveRow& values, std::size_t row, TWorkbook& book, TSheets& sheets) {
  for (std::size_t i = 0; i < values.size(); ++i) book.WriteNumber(row, i, values[i]);
  sheets.RowWritten();
}

void WriteEvent(const TEventSource& source, std::size_t index, bool highPass, TSheets& sheets) {
  const TEvent& event = source.events.GetItem(index);
  std::size_t part = 0;
  TWorkbook* book = nullptr;
  const auto newSheet = [&] {
    book = &sheets.Add(EventSheetName(event.ID, ++part), kEventTitleRows);
    WriteEventHead(source, index, *book);
    WriteTitles(kTimeTitles, *book);
    return kEventTitleRows;
  };
  std::size_t row = newSheet();
  ForEachCurveRow(event, highPass, [&](const TCurveRow& values) {
    if (row == TWorkbook::kMaxRows) row = newSheet();
    WriteCurveRow(values, row++, *book, sheets);
  });
}

TWorkbookSize WithBeside(TWorkbookSize size, std::span<const TBesideCurve> curves) {
  for (const TBesideCurve& curve : curves) {
    size.sheets += std::max<std::size_t>(1, (curve.count + kMaxSamples - 1) / kMaxSamples);
    size.cells += CellsOf(curve.count);
  }
  return size;
}

// Curves may have equal names, so their sheets are numbered.
void WriteBeside(std::span<const TBesideCurve> curves, const auto& titles, TSheets& sheets) {
  std::size_t number = 0;
  for (const TBesideCurve& curve : curves) {
    std::size_t written = 0;
    do {
      TWorkbook& book = sheets.Add(SafeSheetName(fmt::format("Pinned {}", ++number)), kEventTitleRows);
      book.WriteText(0, 0, "Pinned event:");
      book.WriteText(0, 1, curve.name);
      WriteTitles(titles, book);
      const std::size_t end = std::min(curve.count, written + kMaxSamples);
      for (std::size_t row = kEventTitleRows; written < end; ++row) {
        const TCurveRow values = curve.rowAt(written++);
        for (std::size_t i = 0; i < values.size(); ++i) {
          if (!std::isnan(values[i])) book.WriteNumber(row, i, values[i]);
        }
        sheets.RowWritten();
      }
    } while (written < curve.count);
  }
}

}  // namespace

void ExportTableXlsx(const TMissionData& mission, TDataset& table, const fs::path& file, IProgress& progress) {
  RefuseTooLong(table, 2);
  WriteSheets(mission, file, {1, CellsOf(table)}, progress, [&](TSheets& sheets) {
    TWorkbook& book = sheets.Add(MissionSheetName(mission), 2);
    const std::string head[] = {"Mission ID:", mission.sID};
    TWidths widths;
    for (std::size_t i = 0; i < std::size(head); ++i) {
      widths.Add(i, head[i]);
      book.WriteText(0, i, head[i]);
    }
    WriteTable(table, 1, std::move(widths), book, sheets);
  });
}

void ExportTablesXlsx(const TMissionData& mission, std::span<const TNamedTable> tables, const fs::path& file,
                      IProgress& progress) {
  TWorkbookSize size{tables.size(), 0};
  for (const TNamedTable& each : tables) {
    RefuseTooLong(each.table, 1);
    size.cells += CellsOf(each.table);
  }
  WriteSheets(mission, file, size, progress, [&](TSheets& sheets) {
    for (const auto& [name, table] : tables) WriteTable(table, 0, {}, sheets.Add(std::string(name), 1), sheets);
  });
}

void ExportMeasurementsXlsx(const TMissionData& mission, TDataset& sensors, TDataset& battery, const fs::path& file,
                            IProgress& progress) {
  const TNamedTable tables[] = {{"Sensors", sensors}, {"Battery", battery}};
  ExportTablesXlsx(mission, tables, file, progress);
}

void ExportEventsXlsx(const TEventSource& source, std::span<const std::uint32_t> indices, const fs::path& file,
                      IProgress& progress) {
  TWorkbookSize size{0, 0};
  for (const std::uint32_t index : indices) {
    const TWorkbookSize more = SizeOf(source.events.GetItem(index));
    size = {size.sheets + more.sheets, size.cells + more.cells};
  }
  WriteSheets(source.mission, file, size, progress, [&](TSheets& sheets) {
    for (const std::uint32_t index : indices) WriteEvent(source, index, false, sheets);
  });
}

void ExportEventXlsx(const TEventSource& source, std::size_t index, bool highPass, const fs::path& file,
                     IProgress& progress, std::span<const TBesideCurve> beside) {
  TWorkbookSize size = SizeOf(source.events.GetItem(index));
  if (highPass) size.sheets = 1;
  WriteSheets(source.mission, file, WithBeside(size, beside), progress, [&](TSheets& sheets) {
    WriteEvent(source, index, highPass, sheets);
    WriteBeside(beside, kTimeTitles, sheets);
  });
}

void ExportSpectrumXlsx(const TEventSource& source, std::size_t index, const TSpectrum& spectrum, const fs::path& file,
                        IProgress& progress, std::span<const TBesideCurve> beside) {
  const TWorkbookSize size = WithBeside({1, CellsOf(spectrum.lines.size())}, beside);
  WriteSheets(source.mission, file, size, progress, [&](TSheets& sheets) {
    const std::string name = fmt::format("{} Spectral Analysis", EventSheetName(source.events.GetItem(index).ID));
    TWorkbook& book = sheets.Add(SafeSheetName(name), kEventTitleRows);
    WriteEventHead(source, index, book);
    WriteTitles(kSpectrumTitles, book);
    std::size_t row = kEventTitleRows;
    for (const TSpectrumLine& line : spectrum.lines) WriteCurveRow(RowOf(line), row++, book, sheets);
    WriteBeside(beside, kSpectrumTitles, sheets);
  });
}

void ExportResponseXlsx(const TEventSource& source, std::optional<std::size_t> index,
                        std::span<const TResponseLine> lines, TResponse response, const fs::path& file,
                        IProgress& progress, std::span<const TBesideCurve> beside) {
  const auto titles = ResponseTitles(response);
  const TWorkbookSize size = WithBeside({1, lines.size() * titles.size()}, beside);
  WriteSheets(source.mission, file, size, progress, [&](TSheets& sheets) {
    const std::string whose = index ? EventSheetName(source.events.GetItem(*index).ID) : std::string("Envelope");
    TWorkbook& book = sheets.Add(SafeSheetName(whose + " Response"), kEventTitleRows);
    if (index) WriteEventHead(source, *index, book);
    WriteTitles(titles, book);
    std::size_t row = kEventTitleRows;
    for (const TResponseLine& line : lines) {
      std::size_t column = 0;
      for (const double value : {line.hertz, line.x, line.y, line.z, line.total}) {
        if (!std::isnan(value)) book.WriteNumber(row, column, value);
        ++column;
      }
      book.WriteText(row++, column, std::string(kResponseRangeNames[static_cast<std::size_t>(line.range)]));
      sheets.RowWritten();
    }
    WriteBeside(beside, std::span(titles).first<5>(), sheets);
  });
}
