#include "export/uCsvExports.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <exception>
#include <fstream>
#include <system_error>

#include "base/uFiles.h"
#include "base/uText.h"
#include "export/uExportFile.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLinesPerStep = 100;
constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;
constexpr std::size_t kFilesPerSync = 64;  // each of them is open until then
constexpr std::string_view kEmptyRow = R"("","","","","",)";

void Begin(std::size_t steps, IProgress& progress) {
  progress.SetStatus("Creating CSV exports...");
  progress.SetPosition(0);
  progress.SetMaximum(static_cast<double>(std::max<std::size_t>(steps, 1)));
  progress.ProcessMessages();
}

[[noreturn]] void ThrowLastError() {
  throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
}

// Lines that go to a file in large pieces, with messages processed meanwhile. Throws std::system_error.
class TCsvFile {
 public:
  TCsvFile(const fs::path& path, IProgress& progress) : FProgress(progress) {
    errno = 0;
    FFile.rdbuf()->pubsetbuf(nullptr, 0);  // the pieces are large already
    FFile.open(path, std::ios::binary);
    if (!FFile) ThrowLastError();
    FText.reserve(kPieceBytes + kPieceBytes / 16);
  }
  // Append a line, then call EndLine.
  [[nodiscard]] std::string& Text() { return FText; }
  void EndLine() {
    if (FText.size() >= kPieceBytes) Flush();
    if (++FLines % kLinesPerStep == 0) FProgress.ProcessMessages();
  }
  // Writes the rest; without it the file is cut short.
  void Close() {
    Flush();
    FFile.close();
    if (!FFile) ThrowLastError();
  }

 private:
  void Flush() {
    errno = 0;
    FFile.write(FText.data(), static_cast<std::streamsize>(FText.size()));
    if (!FFile) ThrowLastError();
    FText.clear();
  }

  std::ofstream FFile;
  std::string FText;
  IProgress& FProgress;
  std::size_t FLines = 0;
};

// The file of a curve, with the columns of other curves behind its own.
class TCurveFile {
 public:
  // Writes the titles, of which the first five are also those of the other curves.
  template <class TTitles>
  TCurveFile(const fs::path& path, const TTitles& titles, std::span<const TBesideCurve> curves, IProgress& progress)
      : FFile(path, progress), FFields(titles.size()), FCurves(curves) {
    AppendCsvTitles(Text(), titles);
    for (const TBesideCurve& curve : FCurves) {
      std::string name = curve.name;
      std::ranges::replace(name, '"', '\'');
      ReopenLine();
      for (std::size_t i = 0; i < std::tuple_size_v<TCurveRow>; ++i) {
        AppendCsvField(Text(), fmt::format("{} {}", titles[i], name));
      }
      Text() += kLineBreak;
    }
  }

  // Append a line of the curve, then call EndLine.
  [[nodiscard]] std::string& Text() { return FFile.Text(); }
  void EndLine() {
    for (const TBesideCurve& curve : FCurves) {
      ReopenLine();
      if (FRow < curve.count) {
        AppendCsvRow(Text(), curve.rowAt(FRow));
      } else {
        Text().append(kEmptyRow).append(kLineBreak);
      }
    }
    ++FRow;
    FFile.EndLine();
  }
  // Writes what is left of longer curves, behind empty fields.
  void Close() {
    std::size_t count = 0;
    for (const TBesideCurve& curve : FCurves) count = std::max(count, curve.count);
    while (FRow < count) {
      for (std::size_t i = 0; i < FFields; ++i) AppendCsvField(Text(), {});
      Text() += kLineBreak;
      EndLine();
    }
    FFile.Close();
  }

 private:
  void ReopenLine() { Text().resize(Text().size() - kLineBreak.size()); }

  TCsvFile FFile;
  std::size_t FFields;
  std::span<const TBesideCurve> FCurves;
  std::size_t FRow = 0;
};

TFileWriter EventWriter(const TEvent& event, bool highPass, IProgress& progress,
                        std::span<const TBesideCurve> curves = {}) {
  return [&event, highPass, &progress, curves](const fs::path& path) {
    TCurveFile file(path, kTimeTitles, curves, progress);
    ForEachCurveRow(event, highPass, [&](const TCurveRow& row) {
      AppendCsvRow(file.Text(), row);
      file.EndLine();
    });
    file.Close();
  };
}

void AppendResponseLine(std::string& text, const TResponseLine& line) {
  for (const double value : RowOf(line)) AppendCsvExact(text, value);
  AppendCsvField(text, kResponseRangeNames[static_cast<std::size_t>(line.range)]);
  text += kLineBreak;
}

// Progress goes on from `before` lines.
TFileWriter TableWriter(TDataset& table, std::size_t before, IProgress& progress) {
  return [&table, before, &progress](const fs::path& beside) {
    TCsvFile file(beside, progress);
    std::size_t line = 0;
    WriteTableCsv(table, [&](std::string_view text) {
      if (line++ % kLinesPerStep == 0) progress.SetPosition(static_cast<double>(before + line - 1));
      file.Text() += text;
      file.EndLine();
    });
    file.Close();
  };
}

}  // namespace

void AppendCsvField(std::string& line, std::string_view text) {
  line += '"';
  line += text;
  line += "\",";
}

void AppendCsvRow(std::string& text, const TCurveRow& row) {
  for (const double value : row) {
    text += '"';
    AppendGeneralFloat(text, value);
    text += "\",";
  }
  text += kLineBreak;
}

void AppendCsvExact(std::string& text, double value) {
  AppendCsvField(text, std::isnan(value) ? std::string() : fmt::format("{}", value));
}

std::string ResponseCsv(std::span<const TResponseLine> lines, TResponse response) {
  std::string text;
  AppendCsvTitles(text, ResponseTitles(response));
  for (const TResponseLine& line : lines) AppendResponseLine(text, line);
  return text;
}

void WriteTableCsv(TDataset& table, const TCsvSink& sink) {
  std::string line;
  const auto finishLine = [&] {
    line += kLineBreak;
    sink(line);
    line.clear();
  };
  for (const TField& field : table.Fields()) AppendCsvField(line, field.Label);
  finishLine();
  for (table.First(); !table.Eof(); table.Next()) {
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      AppendCsvField(line, table.DisplayText(table.CurrentRow(), field));
    }
    finishLine();
  }
  table.Last();
}

fs::path ExportEventsCsv(const TMissionData& mission, const TEventList& events, std::span<const std::uint32_t> indices,
                         TEventFiles kind, const fs::path& chosen, IProgress& progress,
                         const std::function<void(const fs::path&)>& inPlace) {
  Begin(indices.empty() ? 0 : indices.size() - 1, progress);
  fs::path folder = chosen / PathFromUtf8(EventFolderName(kind, mission));
  fs::create_directory(folder);
  TFileSet files;
  const auto putInPlace = [&](IProgress& told) {
    if (files.Count() == 0) return;
    PutInPlace(files, told);
    if (inPlace) inPlace(folder);
  };
  try {
    for (std::size_t i = 0; i < indices.size(); ++i) {
      progress.SetPosition(static_cast<double>(i));
      progress.ProcessMessages();
      const TEvent& event = events.GetItem(indices[i]);
      const fs::path file = folder / PathFromUtf8(EventFileName(kind, indices[i], event));
      files.Write(file, EventWriter(event, false, progress));
      if (files.Count() == kFilesPerSync) putInPlace(progress);
    }
    putInPlace(progress);
  } catch (...) {
    TNoProgress silent;
    try {
      putInPlace(silent);
    } catch (const std::exception&) {  // what ended the export is what is told
    }
    throw;
  }
  return folder;
}

void ExportEventCsv(const TEvent& event, bool highPass, const fs::path& file, IProgress& progress,
                    std::span<const TBesideCurve> beside) {
  Begin(1, progress);
  WriteExport(file, progress, EventWriter(event, highPass, progress, beside));
}

void ExportSpectrumCsv(const TSpectrum& spectrum, std::size_t timePoints, const fs::path& path, IProgress& progress,
                       std::span<const TBesideCurve> curves) {
  Begin(1, progress);
  WriteExport(path, progress, [&](const fs::path& part) {
    TCurveFile file(part, kSpectrumTitles, curves, progress);
    for (std::size_t i = 0; i < timePoints; ++i) {
      if (i < spectrum.lines.size()) {
        AppendCsvRow(file.Text(), RowOf(spectrum.lines[i]));
      } else {
        file.Text().append(kEmptyRow).append(kLineBreak);
      }
      file.EndLine();
    }
    file.Close();
  });
}

void ExportResponseCsv(std::span<const TResponseLine> lines, TResponse response, const fs::path& path,
                       IProgress& progress, std::span<const TBesideCurve> curves) {
  Begin(1, progress);
  WriteExport(path, progress, [&](const fs::path& part) {
    TCurveFile file(part, ResponseTitles(response), curves, progress);
    for (const TResponseLine& line : lines) {
      AppendResponseLine(file.Text(), line);
      file.EndLine();
    }
    file.Close();
  });
}

void ExportTableCsv(TDataset& table, const fs::path& path, IProgress& progress) {
  Begin(table.RecordCount(), progress);
  WriteExport(path, progress, TableWriter(table, 0, progress));
}

void ExportTablesCsv(std::span<const TNamedTable> tables, const fs::path& folder, IProgress& progress) {
  std::size_t records = 0;
  for (const TNamedTable& each : tables) records += each.table.RecordCount();
  Begin(records, progress);
  fs::create_directory(folder);
  TFileSet files;
  records = 0;
  for (const auto& [name, table] : tables) {
    files.Write(folder / PathFromUtf8(SafeFileName(name) + ".csv"), TableWriter(table, records, progress));
    records += table.RecordCount();
  }
  PutInPlace(files, progress);
}
