// The window's exports: ask where to, write with the loading panel in front, put the screen back, say what was written.
// They work on the shown mission and change nothing of it; without one they do nothing. A cancelled dialog and a
// cancelled export say nothing, a failure is one message with the file and the reason. Main thread only.
//
// The visible events are those that the filter lets through while it is on, else all, in the order of the grids.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/uExportNames.h"
#include "shell/uFileFlow.h"

class TExportCommands {
 public:
  TExportCommands(TFileFlow& flow, IMainScreen& screen) : FFlow(flow), FScreen(screen) {}

  // A CSV file for each event, in a folder of their own; the window ends in the shock view.
  void barbtnEventsCSVAllShocksClick();
  void barbtnEventsCSVVisibleShocksClick();
  // Kept on purpose: the first of these two writes the peaks of all events, the second the calibration of the visible.
  void barbtnEventsCSVCalibrationClick();
  void barbtnEventsCSVCalibrationVisibleClick();

  // The event of the shock chart as the chart shows it: samples, high-passed curves or spectrum.
  void actExportShockToCSVExecute();
  void barbtnShockSaveChartAsXLSXClick();

  void barbtnTablesExportCSVBatteryClick();
  void barbtnTablesExportCSVClick();
  void barbtnTablesExportCSVSensorsClick();
  void barbtnTablesExportXLSXBatteryClick();
  void barbtnTablesExportXLSXClick();
  void barbtnTablesExportXLSXSensorsClick();

  void barbtnSensorsExportToXLSXClick();
  void barbtnEventsXLSXAllShocksClick();
  void barbtnEventsXLSXVisibileShocksClick();

 private:
  enum class TKind { Csv, Xlsx };
  struct TShownEvent;
  using TWork = std::function<void(IProgress&)>;
  // What an export does to the window around it. Dock panels are out of sight meanwhile.
  struct TSurroundings {
    std::string_view grid = {};    // is hidden meanwhile
    bool welcomePanel = false;     // stands behind the loading panel
    bool endsInShockView = false;  // once it is complete; the shock view decides about its dock panels then
  };

  [[nodiscard]] TDataset& ShocksTable();
  [[nodiscard]] std::vector<std::uint32_t> AllEvents();
  // Nothing, and the user is told, when there is no event to export, or no spectrum of it.
  [[nodiscard]] std::optional<TShownEvent> EventInChart();
  [[nodiscard]] std::optional<std::filesystem::path> Ask(TKind kind, std::string_view title, std::string name);
  void EventsToCsv(TEventFiles kind, const std::vector<std::uint32_t>& events);
  void EventsToXlsx(const std::vector<std::uint32_t>& events);
  // The grid is hidden meanwhile.
  void TableToCsv(std::string_view title, std::string_view name, TDataset& table, std::string_view grid);
  void TableToXlsx(std::string_view title, std::string_view name, TDataset& table, std::string_view grid);
  void Done(const std::filesystem::path& file);
  // A workbook, which says so at its end.
  void Workbook(const std::filesystem::path& file, std::string_view grid, const TWork& work);
  // Has `work` write `place`, and puts the window back, however that ends. True when the export is complete and the
  // window stays open.
  bool Run(const std::filesystem::path& place, const TSurroundings& around, const TWork& work);
  void PutBack(const TSurroundings& around, const std::vector<std::string_view>& panels, bool complete);

  TFileFlow& FFlow;
  IMainScreen& FScreen;
};
