#include "shell/uExportCommands.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/uFiles.h"
#include "base/uText.h"
#include "export/uCsvExports.h"
#include "export/uXlsxExports.h"
#include "shell/uExportOutcome.h"
#include "shell/uViewSwitch.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBatteryGrid = "DBGrid8";
constexpr std::string_view kSensorsGrid = "DBGrid2";
constexpr std::string_view kShocksGrid = "dbgFilteredShocks";

// The parts of the window that are disabled while an export runs: they stand around and behind the loading panel, and
// nothing in them can be reached.
constexpr std::string_view kOutOfReach[] = {"Ribbon", "WellcomePanel", "MainPanel"};

void SetReachable(IMainScreen& screen, bool reachable) {
  for (const std::string_view part : kOutOfReach) screen.SetEnabled(part, reachable);
}

// Puts the loading panel in front where an export first lets the window handle its messages, so that what the export
// says before stands in it from the start. What is behind it goes after, when the panel knows where the focus was.
class TShowingProgress final : public IProgress {
 public:
  TShowingProgress(IProgress& progress, IMainScreen& screen) : FProgress(progress), FScreen(screen) {}
  void SetStatus(std::string_view text) override { FProgress.SetStatus(text); }
  void SetPosition(double position) override { FProgress.SetPosition(position); }
  void SetMaximum(double maximum) override { FProgress.SetMaximum(maximum); }
  void ProcessMessages() override {
    if (!std::exchange(FShown, true)) {
      FScreen.SetTaskbarProgress(true);
      FScreen.BringToFront("pnlLoading");
      FScreen.SetVisible("pnlLoading", true);
      CloseAllPanels(FScreen);
      SetReachable(FScreen, false);
    }
    FProgress.ProcessMessages();
  }

 private:
  IProgress& FProgress;
  IMainScreen& FScreen;
  bool FShown = false;
};

}  // namespace

struct TExportCommands::TShownEvent {
  std::size_t index;
  const TEvent& event;
  bool highPass;
  std::string_view spectrumType;  // empty in the time domain
  TSpectrum spectrum;
};

void TExportCommands::barbtnEventsCSVAllShocksClick() {
  EventsToCsv(TEventFiles::Samples, AllEvents());
}

void TExportCommands::barbtnEventsCSVVisibleShocksClick() {
  EventsToCsv(TEventFiles::Samples, VisibleEvents(ShocksTable()));
}

void TExportCommands::barbtnEventsCSVCalibrationClick() {
  EventsToCsv(TEventFiles::Peaks, AllEvents());
}

void TExportCommands::barbtnEventsCSVCalibrationVisibleClick() {
  EventsToCsv(TEventFiles::Calibration, VisibleEvents(ShocksTable()));
}

void TExportCommands::actExportShockToCSVExecute() {
  const auto shown = EventInChart();
  if (!shown) return;
  const auto file = Ask(TKind::Csv, "Save the Shock Event CSV file",
                        ProposedEventName(FFlow.Mission().Data, shown->index, shown->spectrumType));
  if (!file) return;
  const auto write = [&](IProgress& progress) {
    if (shown->spectrumType.empty()) {
      ExportEventCsv(shown->event, shown->highPass, *file, progress);
    } else {
      const std::size_t samples = shown->event.Count();
      const std::size_t points = shown->highPass ? std::min(samples, SpectrumSizeFor(samples)) : samples;
      ExportSpectrumCsv(shown->spectrum, points, *file, progress);
    }
  };
  if (Run(*file, {}, write)) Done(*file);
}

void TExportCommands::barbtnShockSaveChartAsXLSXClick() {
  const auto shown = EventInChart();
  if (!shown) return;
  const auto file =
      Ask(TKind::Xlsx, "Export Shock Event to XLSX file", ProposedName(kMissionName, FFlow.Mission().Data));
  if (!file) return;
  const TEventSource source{FFlow.Mission().Data, FFlow.Mission().Events, FFlow.Mission().Tables.Events};
  const auto write = [&](IProgress& progress) {
    if (shown->spectrumType.empty()) {
      ExportEventXlsx(source, shown->index, shown->highPass, *file, progress);
    } else {
      ExportSpectrumXlsx(source, shown->index, shown->spectrum, *file, progress);
    }
  };
  Workbook(*file, {}, write);
}

void TExportCommands::barbtnTablesExportCSVBatteryClick() {
  TableToCsv("Save the Battery Grid to CSV file", kBatteryName, FFlow.Mission().Tables.Battery, kBatteryGrid);
}

void TExportCommands::barbtnTablesExportCSVClick() {
  TableToCsv("Save the Filtered Shocks Grid to CSV file", kShocksName, ShocksTable(), kShocksGrid);
}

void TExportCommands::barbtnTablesExportCSVSensorsClick() {
  TableToCsv("Save the Sensors Grid to CSV file", kSensorsName, FFlow.Mission().Tables.Sensors, kSensorsGrid);
}

void TExportCommands::barbtnTablesExportXLSXBatteryClick() {
  TableToXlsx("Save the Battery Grid to XLSX file", kBatteryName, FFlow.Mission().Tables.Battery, kBatteryGrid);
}

void TExportCommands::barbtnTablesExportXLSXClick() {
  TableToXlsx("Save the Shocks Grid to XLSX file", kShocksWorkbookName, ShocksTable(), kShocksGrid);
}

void TExportCommands::barbtnTablesExportXLSXSensorsClick() {
  TableToXlsx("Save the Sensors Grid to XLSX file", kSensorsName, FFlow.Mission().Tables.Sensors, kSensorsGrid);
}

void TExportCommands::barbtnSensorsExportToXLSXClick() {
  TShownMission& mission = FFlow.Mission();
  const auto file =
      Ask(TKind::Xlsx, "Save the Sensor Measurments to XLSX file", ProposedName(kMissionName, mission.Data));
  if (!file) return;
  const auto write = [&](IProgress& progress) {
    ExportMeasurementsXlsx(mission.Data, mission.Tables.Sensors, mission.Tables.Battery, *file, progress);
  };
  Workbook(*file, {}, write);
}

void TExportCommands::barbtnEventsXLSXAllShocksClick() {
  EventsToXlsx(AllEvents());
}

void TExportCommands::barbtnEventsXLSXVisibileShocksClick() {
  EventsToXlsx(VisibleEvents(ShocksTable()));
}

TDataset& TExportCommands::ShocksTable() {
  TShownMission& mission = FFlow.Mission();
  return mission.FilterActive ? mission.CLDS : mission.Tables.Events;
}

std::vector<std::uint32_t> TExportCommands::AllEvents() {
  std::vector<std::uint32_t> all(FFlow.Mission().Events.Count());
  std::iota(all.begin(), all.end(), 0U);
  return all;
}

std::optional<TExportCommands::TShownEvent> TExportCommands::EventInChart() {
  if (!FFlow.FileShown()) return std::nullopt;
  const TShownMission& mission = FFlow.Mission();
  if (!mission.SelectedEvent) {
    FScreen.ShowMessage("There is no event to export.", "No shock event is selected.");
    return std::nullopt;
  }
  TShownEvent shown{
      *mission.SelectedEvent, mission.Events.GetItem(*mission.SelectedEvent), mission.Settings.highPass, {}, {}};
  const auto choice = FScreen.ShownSpectrum();
  if (!choice) return shown;
  const auto& [name, type] = kSpectrumTypes.at(choice->type);
  shown.spectrumType = name;
  shown.spectrum = CalcSpectrum(shown.event.Values(), type, kWeightingWindows.at(choice->window).second);
  if (shown.spectrum.problem == TSpectrumProblem::None) return shown;
  FScreen.ShowMessage("There is no spectrum to export.", WhyNoSpectrum(shown.spectrum));
  return std::nullopt;
}

std::optional<fs::path> TExportCommands::Ask(TKind kind, std::string_view title, std::string name) {
  if (!FFlow.FileShown()) return std::nullopt;
  TSaveDialog dialog{title, FFlow.RememberedFolder(), std::move(name), "XLSX file|*.xlsx", "xlsx"};
  if (kind == TKind::Csv) {
    dialog.filter = "CSV file|*.csv";
    dialog.extension = "csv";
    dialog.replaces = true;  // kept on purpose
  }
  const auto file = FScreen.AskWhereToSave(dialog);
  if (!file) return std::nullopt;
  return PathFromUtf8(*file);
}

void TExportCommands::EventsToCsv(TEventFiles kind, const std::vector<std::uint32_t>& events) {
  if (!FFlow.FileShown()) return;
  const auto chosen = FScreen.AskForFolder("Choose the folder for the CSV files", FFlow.RememberedFolder());
  if (!chosen) return;
  const auto write = [&](IProgress& progress) {
    const auto inPlace = [this](const fs::path& folder) { FFlow.RememberFolderOf(Utf8FromPath(folder)); };
    ExportEventsCsv(FFlow.Mission().Data, FFlow.Mission().Events, events, kind, PathFromUtf8(*chosen), progress,
                    inPlace);
  };
  const fs::path place = PathFromUtf8(*chosen);
  if (Run(place, {.welcomePanel = true, .endsInShockView = true}, write)) {
    TellWritten(FScreen, place / EventFolderName(kind, FFlow.Mission().Data));
  }
}

void TExportCommands::EventsToXlsx(const std::vector<std::uint32_t>& events) {
  const auto file =
      Ask(TKind::Xlsx, "Export Shock Events to XLSX file", ProposedName(kMissionName, FFlow.Mission().Data));
  if (!file) return;
  const TEventSource source{FFlow.Mission().Data, FFlow.Mission().Events, FFlow.Mission().Tables.Events};
  Workbook(*file, {}, [&](IProgress& progress) { ExportEventsXlsx(source, events, *file, progress); });
}

void TExportCommands::TableToCsv(std::string_view title, std::string_view name, TDataset& table,
                                 std::string_view grid) {
  if (!FFlow.FileShown()) return;
  const auto file = Ask(TKind::Csv, title, ProposedName(name, FFlow.Mission().Data));
  if (!file) return FScreen.SetVisible(grid, true);
  const auto write = [&](IProgress& progress) { ExportTableCsv(table, *file, progress); };
  if (Run(*file, {.grid = grid}, write)) Done(*file);
}

void TExportCommands::TableToXlsx(std::string_view title, std::string_view name, TDataset& table,
                                  std::string_view grid) {
  if (!FFlow.FileShown()) return;
  const auto file = Ask(TKind::Xlsx, title, ProposedName(name, FFlow.Mission().Data));
  if (!file) return FScreen.SetVisible(grid, true);
  const auto write = [&](IProgress& progress) { ExportTableXlsx(FFlow.Mission().Data, table, *file, progress); };
  Workbook(*file, grid, write);
}

void TExportCommands::Done(const fs::path& file) {
  FFlow.RememberFolderOf(Utf8FromPath(file));
  TellWritten(FScreen, file);
}

void TExportCommands::Workbook(const fs::path& file, std::string_view grid, const TWork& work) {
  if (!Run(file, {.grid = grid, .welcomePanel = true}, work)) return;
  FScreen.ShowInformation("Excel sheet created");
  Done(file);
}

bool TExportCommands::Run(const fs::path& place, const TSurroundings& around, const TWork& work) {
  const std::vector<std::string_view> panels = OpenPanels(FScreen);
  if (!around.grid.empty()) FScreen.SetVisible(around.grid, false);
  bool complete = false;
  std::string failure;
  try {
    complete = FFlow.RunExport([&](IProgress& progress) {
      FScreen.SetText("lblStatusValue", "");
      FScreen.SetText("PnlLoadingDetail", Printable(Utf8FromPath(place)));
      if (around.endsInShockView) CloseDockPanels(FScreen);
      if (around.welcomePanel) FScreen.BringToFront("WellcomePanel");
      TShowingProgress showing(progress, FScreen);
      work(showing);
    });
  } catch (const std::exception& error) {
    failure = ExportFailure(error, place);
  }
  PutBack(around, panels, complete);
  if (FFlow.CloseIfWanted()) return false;
  if (!failure.empty()) FScreen.ShowMessage("The export could not be written.", failure);
  return complete;
}

void TExportCommands::PutBack(const TSurroundings& around, const std::vector<std::string_view>& panels, bool complete) {
  const bool toShockView = complete && around.endsInShockView;
  SetReachable(FScreen, true);
  FScreen.SetVisible("pnlLoading", false);
  FScreen.SetTaskbarProgress(false);
  if (around.welcomePanel) FScreen.BringToFront("MainPanel");
  for (const std::string_view panel : panels) {
    if (!toShockView || panel == kFilterPanelName) FScreen.SetVisible(panel, true);
  }
  if (toShockView) FFlow.SwitchView(TView::Shock);
  if (!around.grid.empty()) FScreen.SetVisible(around.grid, true);
}
