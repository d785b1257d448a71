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
#include "shell/uChartedEvent.h"
#include "shell/uExportRunner.h"
#include "shell/uFileFlow.h"
#include "shell/uMissionPart.h"

// The tables as a workbook or as CSV files, the samples of each event as a sheet or as a CSV file, a recording.
enum class TPartForm { TableSheets, TableFiles, EventSheets, EventFiles, Recording };

class TExportCommands {
 public:
  TExportCommands(TFileFlow& flow, IControls& controls, IDialogs& dialogs, IMissionViews& views)
      : FFlow(flow), FControls(controls), FDialogs(dialogs), FViews(views), FRunner(flow, controls, dialogs) {}

  // One CSV file per event, in a folder of their own; ends in the shock view.
  void barbtnEventsCSVAllShocksClick();
  void barbtnEventsCSVVisibleShocksClick();
  // Kept on purpose: the first writes the peaks of all events, the second the calibration of the visible ones.
  void barbtnEventsCSVCalibrationClick();
  void barbtnEventsCSVCalibrationVisibleClick();

  // The event of the shock chart as the chart shows it: samples, high-passed curves, spectrum or response spectrum.
  void actExportShockToCSVExecute();
  void barbtnShockSaveChartAsXLSXClick();

  void barbtnTablesExportCSVBatteryClick();
  void barbtnTablesExportCSVClick();
  void barbtnTablesExportCSVSensorsClick();
  void barbtnTablesExportXLSXBatteryClick();
  void barbtnTablesExportXLSXClick();
  void barbtnTablesExportXLSXSensorsClick();

  // Computes the shock analysis first where it is not there yet.
  void barbtnTablesExportCSVAnalysisClick() { ExportAnalysis(TKind::Csv); }
  void barbtnTablesExportXLSXAnalysisClick() { ExportAnalysis(TKind::Xlsx); }
  // Of the damage boundary or the statistics: the chart in which the user was last.
  void barbtnAnalysisExportCSVClick();
  void barbtnAnalysisCopyChartToClipboardClick();
  void barbtnAnalysisSaveChartAsJPGClick() { SaveAnalysisChart(TPictureFormat::Bitmap); }
  void barbtnAnalysisSaveChartAsPNGClick() { SaveAnalysisChart(TPictureFormat::Png); }
  void barbtnAnalysisSaveChartAsSVGClick() { SaveAnalysisChart(TPictureFormat::Svg); }

  void barbtnSensorsExportToXLSXClick();
  void barbtnEventsXLSXAllShocksClick();
  void barbtnEventsXLSXVisibileShocksClick();

  // A part of the mission in one of these forms. The recording is always that of the band. Says so, and writes
  // nothing, where the part is empty.
  void ExportPart(TPartChoice choice, TPartForm form);

  void barbtnEventsCopyChartToClipboardClick();
  void barbtnSensorsCopyChartToClipboardClick();
  void barbtnShockCopyChartToClipboardClick();
  // Kept on purpose: the file is a bitmap, though dialog and name say JPG.
  void barbtnEventsSaveChartasJPGClick();
  void barbtnSensorsSaveAsJPGClick();
  void barbtnShockSaveChartAsImageClick();
  void barbtnEventsSaveChartAsPNGClick();
  void barbtnSensorsSaveAsPNGClick();
  void barbtnShockSaveChartAsPNGClick();
  void barbtnEventsSaveChartAsSVGClick();
  void barbtnSensorsSaveAsSVGClick();
  void barbtnShockSaveChartAsSVGClick();

  // Asks for a PDF in the remembered folder and has it written, with progress and Cancel.
  void SavePdf(std::string name, const std::function<void(const std::filesystem::path& file, IProgress&)>& write);
  // The same for a printer, by its name, or for the file that it writes.
  void Print(std::string_view printer, const std::function<void(IProgress&)>& print);

 private:
  enum class TKind { Csv, Xlsx };

  [[nodiscard]] TDataset& ShocksTable();
  [[nodiscard]] std::vector<std::uint32_t> AllEvents();
  // Nothing, after a message, when no event is selected or it has no spectrum.
  [[nodiscard]] std::optional<TChartedEvent> EventInChart();
  [[nodiscard]] std::optional<std::filesystem::path> Ask(TKind kind, std::string_view title, std::string name);
  void EventsToCsv(TEventFiles kind, const std::vector<std::uint32_t>& events);
  void EventsToXlsx(const std::vector<std::uint32_t>& events);
  void TableToCsv(std::string_view title, std::string_view name, TDataset& table, std::string_view grid);
  void TableToXlsx(std::string_view title, std::string_view name, TDataset& table, std::string_view grid);
  void PartToCsv(TMissionPart& part);
  void PartToXlsx(TMissionPart& part);
  void BandToRecording();
  void ExportAnalysis(TKind kind);
  void SaveAnalysisChart(TPictureFormat format);
  [[nodiscard]] std::string AnalysisChartName();
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
