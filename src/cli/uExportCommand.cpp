#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numeric>
#include <optional>
#include <stdexcept>

#include "analysis/uEventFilter.h"
#include "analysis/uMissionDatasets.h"
#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "export/uCsvExports.h"
#include "export/uXlsxExports.h"

namespace fs = std::filesystem;

namespace {

// The keys of --filter, in the order of kFilterQuantities.
constexpr std::array<std::string_view, kFilterQuantities.size()> kFilterKeys = {"acc", "tot",    "totmax",
                                                                                "iot", "iotmax", "dv"};

// A filter cannot be read; the text says why.
struct EFilter : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Nothing for an open end.
std::optional<double> EndOf(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto number = NumberIn<double>(text);
  if (!number || !std::isfinite(*number)) throw EFilter(fmt::format("\"{}\" is no number", text));
  return number;
}

TRange RangeOf(std::string_view key, std::string_view text) {
  const bool hasDots = text.find("..") != std::string_view::npos;
  const std::string_view from = TakeUntil(text, "..");
  if (!hasDots || (from.empty() && text.empty())) {
    throw EFilter(fmt::format("{0} takes a range such as {0}=6..20, {0}=6.. or {0}=..20", key));
  }
  const TRange range{EndOf(from), EndOf(text)};
  if (range.from > range.to && range.to) throw EFilter(fmt::format("the range of {} begins above its end", key));
  return range;
}

void TakeCondition(std::string_view key, std::string_view value, TEventFilter& filter) {
  if (key == "axis") {
    const auto axis = std::ranges::find(kPeakAxes, value);
    if (axis == kPeakAxes.end()) {
      throw EFilter(fmt::format("the axis \"{}\" is none of {}", value, fmt::join(kPeakAxes, ", ")));
    }
    filter.axes[static_cast<std::size_t>(axis - kPeakAxes.begin())] = true;
    return;
  }
  const auto found = std::ranges::find(kFilterKeys, key);
  if (found == kFilterKeys.end()) {
    throw EFilter(fmt::format("\"{}\" is none of {}, axis", key, fmt::join(kFilterKeys, ", ")));
  }
  TRange& range = filter.ranges[static_cast<std::size_t>(found - kFilterKeys.begin())];
  if (range.IsSet()) throw EFilter(fmt::format("{} stands twice", key));
  range = RangeOf(key, value);
}

// Throws EFilter. Several axes are any of these.
TEventFilter ParseFilter(std::string_view text) {
  TEventFilter filter;
  while (!text.empty()) {
    std::string_view condition = TakeUntil(text, ",");
    const std::string_view key = TakeUntil(condition, "=");
    TakeCondition(key, condition, filter);
  }
  return filter;
}

class TShortDateFormat {  // for as long as it lives
 public:
  explicit TShortDateFormat(const std::string& mask) { SetShortDateFormat(mask); }
  ~TShortDateFormat() { SetShortDateFormat(FBefore); }
  TShortDateFormat(const TShortDateFormat&) = delete;
  TShortDateFormat& operator=(const TShortDateFormat&) = delete;

 private:
  std::string FBefore = ShortDateFormat();
};

class TConsoleProgress final : public IProgress {
 public:
  TConsoleProgress(std::string_view what, const TConsole& console) : FWhat(what), FConsole(console) {}
  ~TConsoleProgress() override {
    if (FShown) FConsole.err("\r\033[K");
  }
  TConsoleProgress(const TConsoleProgress&) = delete;
  TConsoleProgress& operator=(const TConsoleProgress&) = delete;

  void SetStatus(std::string_view) override {}
  void SetMaximum(double maximum) override { FMaximum = maximum; }
  void SetPosition(double position) override {
    const int percent = FMaximum > 0 ? static_cast<int>(position * 100 / FMaximum) : 0;
    if (!FConsole.showProgress || (FShown && percent == FPercent)) return;
    FConsole.err(fmt::format("\r{} {} %", FWhat, percent));
    FPercent = percent;
    FShown = true;
  }
  void ProcessMessages() override {}

 private:
  std::string_view FWhat;
  const TConsole& FConsole;
  double FMaximum = 1;
  int FPercent = 0;
  bool FShown = false;
};

// What the exports are made from.
struct TExportSource {
  const TRecording& recording;
  TMissionDatasets tables;
  std::vector<std::uint32_t> all;
  TDataset visibleTable;
  TDataset analysis;  // the visible rows; only where the filter or an export needs it
  std::vector<std::uint32_t> visible;
  fs::path folder;
};

void LoadTables(const TEventFilter& filter, bool needsAnalysis, TExportSource& source) {
  const TRecording& recording = source.recording;
  source.tables = TablesOf(recording);
  source.all.resize(recording.events.Count());
  std::iota(source.all.begin(), source.all.end(), 0U);
  source.visibleTable = source.tables.Events;
  if (needsAnalysis || filter.NeedsAnalysis()) {
    source.analysis = AnalysisOf(recording);
  }
  if (filter.HasCondition()) {
    source.visibleTable.SetShownRows(
        EventsThrough(filter, source.tables.Events, recording.events, std::nullopt, &source.analysis));
    source.analysis.SetShownRows(source.visibleTable.ShownRows());
  }
  source.visible = VisibleEvents(source.visibleTable);
}

fs::path FileFor(const TExportSource& source, std::string_view prefix, std::string_view extension) {
  return source.folder / PathFromUtf8(ProposedName(prefix, source.recording.mission).append(extension));
}

void Export(std::string_view what, TExportSource& source, IProgress& progress) {
  const TRecording& recording = source.recording;
  const struct {
    std::string_view name;
    TDataset* dataset;
    std::string_view csv, xlsx;  // prefixes of the files
  } tables[] = {{"shocks", &source.visibleTable, kShocksName, kShocksWorkbookName},
                {"sensors", &source.tables.Sensors, kSensorsName, kSensorsName},
                {"battery", &source.tables.Battery, kBatteryName, kBatteryName},
                {"analysis", &source.analysis, kAnalysisName, kAnalysisName}};
  for (const auto& [name, dataset, csv, xlsx] : tables) {
    if (what == fmt::format("{}-csv", name)) ExportTableCsv(*dataset, FileFor(source, csv, ".csv"), progress);
    if (what != fmt::format("{}-xlsx", name)) continue;
    ExportTableXlsx(recording.mission, *dataset, FileFor(source, xlsx, ".xlsx"), progress);
  }
  const auto events = [&](TEventFiles kind, const std::vector<std::uint32_t>& indices) {
    ExportEventsCsv(recording.mission, recording.events, indices, kind, source.folder, progress);
  };
  if (what == "events-csv") events(TEventFiles::Samples, source.visible);
  if (what == "peaks-csv") events(TEventFiles::Peaks, source.all);
  if (what == "calibration-csv") events(TEventFiles::Calibration, source.visible);
  const fs::path workbook = FileFor(source, kMissionName, ".xlsx");
  if (what == "events-xlsx") {
    const TEventSource all{recording.mission, recording.events, source.tables.Events};
    ExportEventsXlsx(all, source.visible, workbook, progress);
  }
  if (what == "measurements-xlsx") {
    ExportMeasurementsXlsx(recording.mission, source.tables.Sensors, source.tables.Battery, workbook, progress);
  }
}

// The file or folder that could not be written, where the failure knows it.
std::string PlaceOf(const std::exception& error, const std::string& otherwise) {
  const auto* failure = dynamic_cast<const fs::filesystem_error*>(&error);
  return failure == nullptr ? otherwise : Utf8FromPath(failure->path1());
}

}  // namespace

TStatus ExportCommand(const std::string& file, const TExportRequest& request, const TConsole& console) {
  TEventFilter filter;
  try {
    filter = ParseFilter(request.filter);
  } catch (const EFilter& error) {
    console.err(fmt::format("kshock: --filter: {}. A filter looks like acc=6..20,tot=..50,axis=X-pos.\n",
                            Printable(error.what())));
    return TStatus::WrongUse;
  }
  const auto isWanted = [&request](std::string_view what) {
    return std::ranges::find(request.what, what) != request.what.end();
  };
  if (isWanted("events-xlsx") && isWanted("measurements-xlsx")) {
    console.err("kshock: events-xlsx and measurements-xlsx have one name; write them to two folders.\n");
    return TStatus::WrongUse;
  }
  const TRecording recording = ReadRecording(file, console);
  if (!recording.HasMission()) return recording.status;
  const TShortDateFormat dateFormat(request.dateFormat);
  TExportSource source{recording, {}, {}, {}, {}, {}, PathFromUtf8(request.folder)};
  LoadTables(filter, isWanted("analysis-csv") || isWanted("analysis-xlsx"), source);
  TStatus status = recording.status;
  for (const std::string_view what : kExports) {
    if (!isWanted(what)) continue;
    if (what.starts_with("battery-") && source.tables.Battery.Fields().empty()) {
      Complain(console, file, fmt::format("{}: {}", what, kNoBattery));
      status = WorseOf(status, TStatus::NoResult);
      continue;
    }
    try {
      TConsoleProgress progress(what, console);
      Export(what, source, progress);
    } catch (const std::exception& error) {
      Complain(console, PlaceOf(error, request.folder), Describe(error));
      status = WorseOf(status, TStatus::CannotWrite);
    }
  }
  return status;
}
