#include "shell/uExportCommands.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "analysis/uHighPassFilter.h"
#include "analysis/uPinnedEvents.h"
#include "analysis/uSpectrum.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "export/uCsvExports.h"
#include "export/uCurveRows.h"
#include "export/uRecordingPart.h"
#include "export/uXlsxExports.h"
#include "shell/uMissionLoad.h"
#include "shell/uOrderingCommands.h"

namespace fs = std::filesystem;

// The selected event as the shock chart shows it, with what stands beside it: what an export of the chart holds.
struct TChartedEvent {
  std::size_t index = 0;
  const TEvent* event = nullptr;  // of the mission
  bool highPass = false;
  std::string_view spectrumType = {};  // empty for curves
  TSpectrum spectrum = {};
  std::optional<TShownResponse> response = {};
  std::vector<TBesideCurve> beside = {};  // the visible pinned events
  std::string lack = {};                  // says that there is nothing to export, else empty
  std::string why = {};                   // the reason
};

namespace {

// Nothing for a spectrum without lines.
void AddLines(const TPinnedEvent& pinned, std::vector<TSpectrumLine> lines, std::vector<TBesideCurve>& curves) {
  if (lines.empty()) return;
  const std::size_t count = lines.size();
  curves.push_back({PinName(pinned), count, [lines = std::move(lines)](std::size_t row) { return RowOf(lines[row]); }});
}

// Its times as in the chart: from the start of the shown event.
TBesideCurve CurveBeside(const TEvent& shown, const TShownMission& mission, const TPinnedEvent& pinned) {
  const TShift shift = ShiftBetween(shown, ThresholdsOf(mission.Data), pinned, mission.Pins.alignment);
  const double start = pinned.event.GetStartTime() - shift.ms;
  if (mission.Settings.highPass) {
    auto values = HighPassFiltered(pinned.event.Values());
    const std::size_t count = values.size();
    return {PinName(pinned), count,
            [values = std::move(values), start](std::size_t row) { return RowOf(values[row], start); }};
  }
  return {PinName(pinned), pinned.event.Count(),
          [values = pinned.event.Values(), start](std::size_t row) { return RowOf(values[row], start); }};
}

TChartedEvent Without(std::string lack, std::string why) {
  return {.lack = std::move(lack), .why = std::move(why)};
}

TChartedEvent WithResponse(TChartedEvent charted, TShownResponse response, const TShownMission& mission) {
  if (response.lines.empty()) return Without("There is no response spectrum to export.", response.why);
  charted.spectrumType = "Response";
  for (std::size_t i = 0; i < response.pinned.size(); ++i) {
    AddLines(*mission.Pins.items[i].event, response.pinned[i], charted.beside);
  }
  charted.response = std::move(response);
  return charted;
}

TChartedEvent WithSpectrum(TChartedEvent charted, const TSpectrumChoice& choice, const TShownMission& mission) {
  const auto& [name, type] = kSpectrumTypes.at(choice.type);
  const TWeightingWindow window = kWeightingWindows.at(choice.window).second;
  charted.spectrumType = name;
  charted.spectrum = CalcSpectrum(charted.event->Values(), type, window);
  if (charted.spectrum.problem != TSpectrumProblem::None) {
    return Without("There is no spectrum to export.", WhyNoSpectrum(charted.spectrum));
  }
  for (const TPin& pin : mission.Pins.items) {
    if (pin.visible) AddLines(*pin.event, CalcSpectrum(pin.event->event.Values(), type, window).lines, charted.beside);
  }
  return charted;
}

// Of an open recording. Spectra are calculated anew.
TChartedEvent ChartedEvent(const TShownMission& mission, const IMissionViews& views) {
  if (!mission.SelectedEvent) return Without("There is no event to export.", "No shock event is selected.");
  TChartedEvent charted{.index = *mission.SelectedEvent,
                        .event = &mission.Events.GetItem(*mission.SelectedEvent),
                        .highPass = mission.Settings.highPass};
  if (auto response = views.ShownResponse()) return WithResponse(std::move(charted), *std::move(response), mission);
  if (const auto choice = views.ShownSpectrum()) return WithSpectrum(std::move(charted), *choice, mission);
  for (const TPin& pin : mission.Pins.items) {
    if (pin.visible) charted.beside.push_back(CurveBeside(*charted.event, mission, *pin.event));
  }
  return charted;
}

}  // namespace

void TExportCommands::actExportShockToCSVExecute() {
  const auto shown = EventInChart();
  if (!shown) return;
  const auto file = Ask(TKind::Csv, "Save the Shock Event CSV file", ShockName(shown->spectrumType));
  if (!file) return;
  const auto write = [&](IProgress& progress) {
    if (shown->response) {
      ExportResponseCsv(shown->response->lines, shown->response->response, *file, progress, shown->beside);
    } else if (shown->spectrumType.empty()) {
      ExportEventCsv(*shown->event, shown->highPass, *file, progress, shown->beside);
    } else {
      const std::size_t samples = shown->event->Count();
      const std::size_t points = shown->highPass ? std::min(samples, SpectrumSizeFor(samples)) : samples;
      ExportSpectrumCsv(shown->spectrum, points, *file, progress, shown->beside);
    }
  };
  if (FRunner.Run(*file, {}, write)) FRunner.Done(*file);
}

void TExportCommands::barbtnShockSaveChartAsXLSXClick() {
  const auto shown = EventInChart();
  if (!shown) return;
  const auto file = Ask(TKind::Xlsx, "Export Shock Event to XLSX file", MissionName());
  if (!file) return;
  const TEventSource source{FFlow.Mission().Data, FFlow.Mission().Events, FFlow.Mission().Tables.Events};
  const auto write = [&](IProgress& progress) {
    if (const auto& response = shown->response) {
      const auto index = response->isEnvelope ? std::nullopt : std::optional(shown->index);
      ExportResponseXlsx(source, index, response->lines, response->response, *file, progress, shown->beside);
    } else if (shown->spectrumType.empty()) {
      ExportEventXlsx(source, shown->index, shown->highPass, *file, progress, shown->beside);
    } else {
      ExportSpectrumXlsx(source, shown->index, shown->spectrum, *file, progress, shown->beside);
    }
  };
  Workbook(*file, {}, write);
}

std::optional<fs::path> TExportCommands::AskForTable(TKind kind, const TTableExport& what) {
  const std::string title = fmt::format("Save the {} Grid to {} file", what.word, kind == TKind::Csv ? "CSV" : "XLSX");
  return Ask(kind, title, ProposedName(what.prefix, FFlow.Mission().Data));
}

void TExportCommands::WriteTable(TKind kind, const TTableExport& what, const fs::path& file,
                                 const std::function<TDataset&(IProgress&)>& table) {
  if (kind == TKind::Xlsx) {
    return Workbook(file, what.grid, [&](IProgress& progress) {
      ExportTableXlsx(FFlow.Mission().Data, table(progress), file, progress);
    });
  }
  const auto write = [&](IProgress& progress) { ExportTableCsv(table(progress), file, progress); };
  if (FRunner.Run(file, {.grid = what.grid}, write)) FRunner.Done(file);
}

void TExportCommands::ExportTable(TKind kind, const TTableExport& what, TDataset& table) {
  if (!FFlow.FileShown()) return;
  const auto file = AskForTable(kind, what);
  if (!file) return FControls.SetVisible(what.grid, true);
  WriteTable(kind, what, *file, [&table](IProgress&) -> TDataset& { return table; });
}

void TExportCommands::ExportAnalysis(TKind kind) {
  if (!FFlow.FileShown()) return;
  TShownMission& mission = FFlow.Mission();
  const auto file = AskForTable(kind, kAnalysis);
  if (!file) return;
  std::optional<TMissionAnalysis> made;
  WriteTable(kind, kAnalysis, *file, [&](IProgress& progress) -> TDataset& {
    if (!mission.Analysis) made = AnalysisOf(mission, progress);
    return made ? made->Table : mission.Analysis->Table;
  });
  if (made && !mission.Analysis) TakeAnalysis(mission, *std::move(made), FViews);
}

void TExportCommands::barbtnSensorsExportToXLSXClick() {
  TShownMission& mission = FFlow.Mission();
  const auto file = Ask(TKind::Xlsx, "Save the Sensor Measurments to XLSX file", MissionName());
  if (!file) return;
  const auto write = [&](IProgress& progress) {
    ExportMeasurementsXlsx(mission.Data, mission.Tables.Sensors, mission.Tables.Battery, *file, progress);
  };
  Workbook(*file, {}, write);
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

std::optional<TChartedEvent> TExportCommands::EventInChart() {
  if (!FFlow.FileShown()) return std::nullopt;
  TChartedEvent charted = ChartedEvent(FFlow.Mission(), FViews);
  if (charted.lack.empty()) return charted;
  FDialogs.ShowMessage(charted.lack, charted.why);
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
  const auto file = FDialogs.AskWhereToSave(dialog);
  if (!file) return std::nullopt;
  return PathFromUtf8(file->file);
}

void TExportCommands::EventsToCsv(TEventFiles kind, const std::vector<std::uint32_t>& events) {
  if (!FFlow.FileShown()) return;
  const auto chosen = FDialogs.AskForFolder("Choose the folder for the CSV files", FFlow.RememberedFolder());
  if (!chosen) return;
  const auto write = [&](IProgress& progress) {
    const auto inPlace = [this](const fs::path& folder) { FFlow.RememberFolderOf(Utf8FromPath(folder)); };
    ExportEventsCsv(FFlow.Mission().Data, FFlow.Mission().Events, events, kind, PathFromUtf8(*chosen), progress,
                    inPlace);
  };
  const fs::path place = PathFromUtf8(*chosen);
  if (FRunner.Run(place, {.welcomePanel = true, .endsInShockView = true}, write)) {
    FRunner.ShowWritten(place / EventFolderName(kind, FFlow.Mission().Data));
  }
}

void TExportCommands::EventsToXlsx(const std::vector<std::uint32_t>& events) {
  const auto file = Ask(TKind::Xlsx, "Export Shock Events to XLSX file", MissionName());
  if (!file) return;
  const TEventSource source{FFlow.Mission().Data, FFlow.Mission().Events, FFlow.Mission().Tables.Events};
  Workbook(*file, {}, [&](IProgress& progress) { ExportEventsXlsx(source, events, *file, progress); });
}

void TExportCommands::ExportPart(TPartChoice choice, TPartForm form) {
  if (!FFlow.FileShown()) return;
  TMissionPart part = PartOf(FFlow.Mission(), choice);
  const bool ofEvents = form == TPartForm::EventSheets || form == TPartForm::EventFiles;
  if (ofEvents ? part.events.empty() : part.IsEmpty()) {
    return FDialogs.ShowMessage("There is nothing to export.", "No event and no reading lies in this part.");
  }
  if (form == TPartForm::TableSheets) return PartToXlsx(part);
  if (form == TPartForm::TableFiles) return PartToCsv(part);
  if (form == TPartForm::EventSheets) return EventsToXlsx(part.events);
  if (form == TPartForm::EventFiles) return EventsToCsv(TEventFiles::Samples, part.events);
  BandToRecording();
}

void TExportCommands::PartToCsv(TMissionPart& part) {
  const auto chosen = FDialogs.AskForFolder("Choose the folder for the CSV files", FFlow.RememberedFolder());
  if (!chosen) return;
  const fs::path folder = PathFromUtf8(*chosen) / PathFromUtf8(ProposedName(kPartName, FFlow.Mission().Data));
  const TNamedTable tables[] = {{"Shocks", part.shocks}, {"Sensors", part.sensors}, {"Battery", part.battery}};
  if (FRunner.Run(folder, {}, [&](IProgress& progress) { ExportTablesCsv(tables, folder, progress); }))
    FRunner.Done(folder);
}

void TExportCommands::PartToXlsx(TMissionPart& part) {
  const auto file = Ask(TKind::Xlsx, "Export a part to an XLSX file", ProposedName(kPartName, FFlow.Mission().Data));
  if (!file) return;
  const TNamedTable tables[] = {{"Shocks", part.shocks}, {"Sensors", part.sensors}, {"Battery", part.battery}};
  Workbook(*file, {}, [&](IProgress& progress) { ExportTablesXlsx(FFlow.Mission().Data, tables, *file, progress); });
}

void TExportCommands::BandToRecording() {
  const fs::path shown = PathFromUtf8(FFlow.FileName());
  const auto chosen = FDialogs.AskWhereToSave({"Save the span as a recording", FFlow.RememberedFolder(),
                                               SafeFileName(Utf8FromPath(shown.stem()) + " part"),
                                               "Korvex ShockScope File|*.kshock", "kshock"});
  if (!chosen) return;
  const fs::path file = PathFromUtf8(chosen->file);
  const TShownMission& mission = FFlow.Mission();
  const std::string name = Utf8FromPath(shown.filename());
  const TPartSource source{mission.Data, mission.Events, mission.Sensors, mission.Axes, name, !mission.Damage.empty()};
  const auto write = [&](IProgress& progress) { WriteRecordingPart(file, source, mission.Band, progress); };
  if (FRunner.Run(file, {}, write)) FRunner.Done(file);
}

void TExportCommands::Workbook(const fs::path& file, std::string_view grid, const TExportRunner::TWork& work) {
  if (!FRunner.Run(file, {.grid = grid, .welcomePanel = true}, work)) return;
  FDialogs.ShowInformation("Excel sheet created");
  FRunner.Done(file);
}

void TExportCommands::barbtnAnalysisExportCSVClick() {
  if (!FFlow.FileShown()) return;
  TDataset table = FViews.ChartTable(AnalysisChart());
  const auto file = Ask(TKind::Csv, "Save what the chart shows to CSV file", AnalysisName());
  if (!file) return;
  if (FRunner.Run(*file, {}, [&](IProgress& progress) { ExportTableCsv(table, *file, progress); })) FRunner.Done(*file);
}

std::string TExportCommands::AnalysisName() {
  const bool isStatistics = FFlow.View() == TView::Statistics;
  return ProposedName(isStatistics ? kStatisticsName : kDamageBoundaryName, FFlow.Mission().Data);
}

std::string_view TExportCommands::EventsChart() const {
  return FFlow.View() == TView::Shock ? "Chart20" : "Chart1";
}

std::string_view TExportCommands::ShockChart() const {
  if (FViews.ShownResponse()) return "chartResponse";
  return FViews.ShownSpectrum() ? "chartSpecAnalysis" : "Chart2";
}

std::string TExportCommands::MissionName() {
  return ProposedName(kMissionName, FFlow.Mission().Data);
}

std::string TExportCommands::ShockName(std::string_view spectrumType) {
  const auto response = FViews.ShownResponse();
  if (response && response->isEnvelope) return MissionName() + " Response Envelope";
  const auto event = FFlow.Mission().SelectedEvent;
  return event ? ProposedEventName(FFlow.Mission().Data, *event, spectrumType) : MissionName();
}

void TExportCommands::CopyChart(std::string_view chart) {
  if (!FFlow.FileShown()) return;
  FViews.CopyChart(chart);
  FControls.ShowNotice("Picture copied", {});
}

void TExportCommands::SaveChart(std::string_view chart, std::string name, TPictureFormat format) {
  if (!FFlow.FileShown()) return;
  constexpr int kScales[] = {1, 2, 4};  // in the order of the filters of PNG
  TSaveDialog dialog{"Save the chart image", {}, std::move(name), "JPG|*.jpg", "jpg"};
  if (format == TPictureFormat::Png) {
    dialog.filter = "PNG, size of the screen|*.png|PNG, 2 × size|*.png|PNG, 4 × size|*.png";
    dialog.extension = "png";
  } else if (format == TPictureFormat::Svg) {
    dialog.filter = "SVG|*.svg";
    dialog.extension = "svg";
  }
  dialog.folder = FFlow.RememberedFolder();
  const auto chosen = FDialogs.AskWhereToSave(dialog);
  if (!chosen) return;
  FRunner.SaveAtOnce(PathFromUtf8(chosen->file), "The picture could not be written.", [&] {
    const int scale = kScales[std::clamp(chosen->filterIndex, 1, static_cast<int>(std::size(kScales))) - 1];
    return FViews.ChartPicture(chart, format, scale);
  });
}

void TExportCommands::SavePdf(std::string name, const std::function<void(const fs::path& file, IProgress&)>& write) {
  if (!FFlow.FileShown()) return;
  const auto chosen =
      FDialogs.AskWhereToSave({"Save as PDF", FFlow.RememberedFolder(), std::move(name), "PDF|*.pdf", "pdf"});
  if (!chosen) return;
  const fs::path file = PathFromUtf8(chosen->file);
  if (FRunner.Run(file, {}, [&](IProgress& progress) { write(file, progress); })) FRunner.Done(file);
}

void TExportCommands::Print(std::string_view printer, const std::function<void(IProgress&)>& print) {
  if (!FFlow.FileShown() || !FRunner.Run(PathFromUtf8(printer), {}, print)) return;
  FControls.ShowNotice(fmt::format("Printed: {}", Printable(printer)), {});
}
