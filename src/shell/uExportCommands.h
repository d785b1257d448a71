// The window's exports and chart pictures. Each asks for a file or folder, writes, and says once what it wrote. They
// read the shown mission and do nothing without one. A cancelled dialog says nothing, a cancelled export that it was
// cancelled, a failure names the file and the reason. Main thread only.
//
// The visible events are those that pass the filter while it is on, else all, in the order of the grids. The events
// chart is the one of the view in front; the shock chart is the spectrum or the response spectrum while that is shown,
// else the curves.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/uExportNames.h"
#include "shell/uExportRunner.h"
#include "shell/uFileFlow.h"
#include "shell/uMissionPart.h"

struct TChartedEvent;

// The tables as a workbook or as CSV files, the samples of each event as a sheet or as a CSV file, a recording.
enum class TPartForm { TableSheets, TableFiles, EventSheets, EventFiles, Recording };

class TExportCommands {
 public:
  TExportCommands(TFileFlow& flow, IControls& controls, IDialogs& dialogs, IMissionViews& views)
      : FFlow(flow), FControls(controls), FDialogs(dialogs), FViews(views), FRunner(flow, controls, dialogs) {}

  // One CSV file per event, in a folder of their own; ends in the shock view.
  void barbtnEventsCSVAllShocksClick() { EventsToCsv(TEventFiles::Samples, AllEvents()); }
  void barbtnEventsCSVVisibleShocksClick() { EventsToCsv(TEventFiles::Samples, VisibleEvents(ShocksTable())); }
  // Kept on purpose: the first writes the peaks of all events, the second the calibration of the visible ones.
  void barbtnEventsCSVCalibrationClick() { EventsToCsv(TEventFiles::Peaks, AllEvents()); }
  void barbtnEventsCSVCalibrationVisibleClick() { EventsToCsv(TEventFiles::Calibration, VisibleEvents(ShocksTable())); }
  void barbtnEventsXLSXAllShocksClick() { EventsToXlsx(AllEvents()); }
  void barbtnEventsXLSXVisibileShocksClick() { EventsToXlsx(VisibleEvents(ShocksTable())); }

  // The event of the shock chart as the chart shows it: samples, high-passed curves, spectrum or response spectrum.
  void actExportShockToCSVExecute();
  void barbtnShockSaveChartAsXLSXClick();

  void barbtnTablesExportCSVBatteryClick() { ExportTable(TKind::Csv, kBattery, Tables().Battery); }
  void barbtnTablesExportCSVClick() { ExportTable(TKind::Csv, kFilteredShocks, ShocksTable()); }
  void barbtnTablesExportCSVSensorsClick() { ExportTable(TKind::Csv, kSensors, Tables().Sensors); }
  void barbtnTablesExportXLSXBatteryClick() { ExportTable(TKind::Xlsx, kBattery, Tables().Battery); }
  void barbtnTablesExportXLSXClick() { ExportTable(TKind::Xlsx, kShocks, ShocksTable()); }
  void barbtnTablesExportXLSXSensorsClick() { ExportTable(TKind::Xlsx, kSensors, Tables().Sensors); }
  // Computes the shock analysis first where it is not there yet.
  void barbtnTablesExportCSVAnalysisClick() { ExportAnalysis(TKind::Csv); }
  void barbtnTablesExportXLSXAnalysisClick() { ExportAnalysis(TKind::Xlsx); }
  void barbtnSensorsExportToXLSXClick();

  // Of the damage boundary or the statistics: the chart in which the user was last.
  void barbtnAnalysisExportCSVClick();

  // A part of the mission in one of these forms. The recording is always that of the band. Says so, and writes
  // nothing, where the part is empty.
  void ExportPart(TPartChoice choice, TPartForm form);

  void barbtnEventsCopyChartToClipboardClick() { CopyChart(EventsChart()); }
  void barbtnSensorsCopyChartToClipboardClick() { CopyChart(kSensorsChart); }
  void barbtnShockCopyChartToClipboardClick() { CopyChart(ShockChart()); }
  void barbtnAnalysisCopyChartToClipboardClick() { CopyChart(AnalysisChart()); }
  // Kept on purpose: the file is a bitmap, though dialog and name say JPG.
  void barbtnEventsSaveChartasJPGClick() { SaveChart(EventsChart(), MissionName(), TPictureFormat::Bitmap); }
  void barbtnSensorsSaveAsJPGClick() { SaveChart(kSensorsChart, MissionName(), TPictureFormat::Bitmap); }
  void barbtnShockSaveChartAsImageClick() { SaveChart(ShockChart(), ShockName(), TPictureFormat::Bitmap); }
  void barbtnAnalysisSaveChartAsJPGClick() { SaveChart(AnalysisChart(), AnalysisName(), TPictureFormat::Bitmap); }
  void barbtnEventsSaveChartAsPNGClick() { SaveChart(EventsChart(), MissionName(), TPictureFormat::Png); }
  void barbtnSensorsSaveAsPNGClick() { SaveChart(kSensorsChart, MissionName(), TPictureFormat::Png); }
  void barbtnShockSaveChartAsPNGClick() { SaveChart(ShockChart(), ShockName(), TPictureFormat::Png); }
  void barbtnAnalysisSaveChartAsPNGClick() { SaveChart(AnalysisChart(), AnalysisName(), TPictureFormat::Png); }
  void barbtnEventsSaveChartAsSVGClick() { SaveChart(EventsChart(), MissionName(), TPictureFormat::Svg); }
  void barbtnSensorsSaveAsSVGClick() { SaveChart(kSensorsChart, MissionName(), TPictureFormat::Svg); }
  void barbtnShockSaveChartAsSVGClick() { SaveChart(ShockChart(), ShockName(), TPictureFormat::Svg); }
  void barbtnAnalysisSaveChartAsSVGClick() { SaveChart(AnalysisChart(), AnalysisName(), TPictureFormat::Svg); }

  // Asks for a PDF in the remembered folder and has it written, with progress and Cancel.
  void SavePdf(std::string name, const std::function<void(const std::filesystem::path& file, IProgress&)>& write);
  // The same for a printer, by its name, or for the file that it writes.
  void Print(std::string_view printer, const std::function<void(IProgress&)>& print);

 private:
  enum class TKind { Csv, Xlsx };
  // An export of a table: its word in the dialog's title, the prefix of the proposed name, and the grid.
  struct TTableExport {
    std::string_view word, prefix, grid;
  };
  static constexpr TTableExport kFilteredShocks{"Filtered Shocks", kShocksName, "dbgFilteredShocks"};
  static constexpr TTableExport kShocks{"Shocks", kShocksWorkbookName, "dbgFilteredShocks"};
  static constexpr TTableExport kSensors{"Sensors", kSensorsName, "DBGrid2"};
  static constexpr TTableExport kBattery{"Battery", kBatteryName, "DBGrid8"};
  static constexpr TTableExport kAnalysis{"Analysis", kAnalysisName, "dbgAnalysis"};
  static constexpr std::string_view kSensorsChart = "ChartAllSensors";

  [[nodiscard]] TMissionDatasets& Tables() { return FFlow.Mission().Tables; }
  [[nodiscard]] TDataset& ShocksTable();
  [[nodiscard]] std::vector<std::uint32_t> AllEvents();
  // Nothing, after a message, when no event is selected or it has no spectrum.
  [[nodiscard]] std::optional<TChartedEvent> EventInChart();
  [[nodiscard]] std::optional<std::filesystem::path> Ask(TKind kind, std::string_view title, std::string name);
  void EventsToCsv(TEventFiles kind, const std::vector<std::uint32_t>& events);
  void EventsToXlsx(const std::vector<std::uint32_t>& events);
  [[nodiscard]] std::optional<std::filesystem::path> AskForTable(TKind kind, const TTableExport& what);
  void WriteTable(TKind kind, const TTableExport& what, const std::filesystem::path& file,
                  const std::function<TDataset&(IProgress&)>& table);
  void ExportTable(TKind kind, const TTableExport& what, TDataset& table);
  void PartToCsv(TMissionPart& part);
  void PartToXlsx(TMissionPart& part);
  void BandToRecording();
  void ExportAnalysis(TKind kind);
  [[nodiscard]] std::string AnalysisChart() { return FViews.AnalysisChart(FFlow.View()); }
  [[nodiscard]] std::string AnalysisName();
  [[nodiscard]] std::string_view EventsChart() const;
  [[nodiscard]] std::string_view ShockChart() const;
  [[nodiscard]] std::string MissionName();
  // Of a picture or a file of the shock chart.
  [[nodiscard]] std::string ShockName(std::string_view spectrumType = {});
  void CopyChart(std::string_view chart);
  void SaveChart(std::string_view chart, std::string name, TPictureFormat format);
  void Workbook(const std::filesystem::path& file, std::string_view grid, const TExportRunner::TWork& work);

  TFileFlow& FFlow;
  IControls& FControls;
  IDialogs& FDialogs;
  IMissionViews& FViews;
  TExportRunner FRunner;
};
