#include "shell/uViewSwitch.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <span>
#include <utility>

namespace {

using TNames = std::span<const std::string_view>;

constexpr std::string_view kDockPanels[] = {"dxDockPanelNavigator", "dxDockPanelMissionDetails",
                                            "dxDockPanelSensorGridTemp", "dxDockPanelSensorGridBattery"};
constexpr std::string_view kSensorDockPanels[] = {"dxDockPanelSensorGridTemp", "dxDockPanelSensorGridBattery"};
constexpr std::string_view kFileGroups[] = {"btngrpNavigator", "btngrpView",   "btngrpLayout", "btngrpFiltering",
                                            "btngrpShock",     "btngrpFilter", "btngrpAlarm"};
// The exports of the whole mission, in every view.
constexpr std::string_view kExportGroups[] = {"btngrpEventsExport", "btngrpSensorsExport", "btngrpTables"};
constexpr std::string_view kBatteryExports[] = {"barbtnTablesExportCSVBattery", "barbtnTablesExportXLSXBattery"};
constexpr std::string_view kViewButtons[] = {"dxBarOverview", "dxBarLargeShockView", "dxBarReport"};
// What a view has in the ribbon for itself.
constexpr std::string_view kOverviewItems[] = {"dxBarOverviewPrint", "dxBarOverviewExport"};
constexpr std::string_view kShockItems[] = {"dxBarShockPrint", "dxBarShockExport"};
constexpr std::string_view kReportItems[] = {"dxBarReportPrintOnly", "dxBarReportExportOnly"};
constexpr std::string_view kEventsChartGroups[] = {"btngrpEventsChart", "btngrpEventsImage"};
constexpr std::string_view kShockChartGroups[] = {"btngrpShockSeries", "btngrpShockTools", "btngrpShockExport",
                                                  "btngrpShockImage"};
constexpr std::string_view kSensorsChartGroups[] = {"btngrpSensorsTools", "btngrpSensorsAxes", "btngrpSensorsImage"};
constexpr std::string_view kSensorButtons[] = {"dxBarShowSensorGrid", "dxBarShowBatteryGrid"};
constexpr std::string_view kOverviewGroups[] = {"btngrpNavigator", "btngrpLayout", "btngrpAlarm", "btngrpFiltering"};
constexpr std::string_view kShockViewGroups[] = {"btngrpNavigator", "btngrpLayout", "btngrpShock",
                                                 "btngrpFilter",    "btngrpAlarm",  "btngrpFiltering"};
constexpr std::string_view kGroupsWithoutReport[] = {"btngrpNavigator", "btngrpLayout", "btngrpFiltering"};
constexpr std::string_view kFilterPanel[] = {kFilterPanelName};
constexpr std::string_view kShockDockPanels[] = {"dxDockPanelNavigator", "dxDockPanelMissionDetails"};
constexpr std::string_view kShockGroups[] = {"btngrpShock", "btngrpFilter"};

void SetVisible(IMainScreen& screen, bool visible, std::initializer_list<TNames> lists) {
  for (const TNames names : lists) {
    for (const std::string_view control : names) screen.SetVisible(control, visible);
  }
}

void Show(IMainScreen& screen, std::initializer_list<TNames> lists) {
  SetVisible(screen, true, lists);
}

void Hide(IMainScreen& screen, std::initializer_list<TNames> lists) {
  SetVisible(screen, false, lists);
}

// Between its begin and end the ribbon changes without being drawn, whatever happens in between.
class TRibbonUpdate {
 public:
  explicit TRibbonUpdate(IMainScreen& screen) : FScreen(screen) { FScreen.BeginRibbonUpdate(); }
  ~TRibbonUpdate() { End(); }
  TRibbonUpdate(const TRibbonUpdate&) = delete;
  TRibbonUpdate& operator=(const TRibbonUpdate&) = delete;
  void End() {
    if (!std::exchange(FEnded, true)) FScreen.EndRibbonUpdate();
  }

 private:
  IMainScreen& FScreen;
  bool FEnded = false;
};

}  // namespace

void CloseDockPanels(IMainScreen& screen) {
  Hide(screen, {kDockPanels});
}

void CloseAllPanels(IMainScreen& screen) {
  Hide(screen, {kDockPanels, kFilterPanel});
}

void ShowDockPanels(IMainScreen& screen, TView view) {
  switch (view) {
    case TView::Overview:
      Show(screen, {kDockPanels});
      break;
    case TView::Shock:
      Show(screen, {kShockDockPanels});
      Hide(screen, {kSensorDockPanels});
      break;
    case TView::Report:
      CloseDockPanels(screen);
      break;
  }
}

std::vector<std::string_view> ClosedDockPanels(const IMainScreen& screen) {
  std::vector<std::string_view> closed;
  for (const std::string_view panel : kDockPanels) {
    if (!screen.IsVisible(panel)) closed.push_back(panel);
  }
  return closed;
}

bool AllDockPanelsAreClosed(const IMainScreen& screen) {
  return ClosedDockPanels(screen).size() == std::size(kDockPanels);
}

std::vector<std::string_view> OpenPanels(const IMainScreen& screen) {
  std::vector<std::string_view> open;
  for (const TNames names : {TNames(kDockPanels), TNames(kFilterPanel)}) {
    std::ranges::copy_if(names, std::back_inserter(open),
                         [&](std::string_view panel) { return screen.IsVisible(panel); });
  }
  return open;
}

void HideFileControls(IMainScreen& screen) {
  Hide(screen, {kFileGroups, kViewButtons, kOverviewItems, kShockItems, kReportItems, kSensorButtons,
                kEventsChartGroups, kShockChartGroups, kSensorsChartGroups, kExportGroups, kFilterPanel});
}

void EnterWelcomeState(IMainScreen& screen) {
  screen.BringToFront("WellcomePanel");
  CloseDockPanels(screen);
  HideFileControls(screen);
}

void ShowViewButtons(IMainScreen& screen, bool hasBattery) {
  screen.SetVisible("btngrpView", true);
  Show(screen, {kViewButtons, kExportGroups});
  for (const std::string_view button : kBatteryExports) screen.SetEnabled(button, hasBattery);
}

void SetViewOverview(IMainScreen& screen) {
  TRibbonUpdate ribbon(screen);
  Hide(screen, {kShockItems, kShockGroups, kShockChartGroups, kReportItems});
  Show(screen, {kOverviewItems, kEventsChartGroups, kSensorsChartGroups});
  Show(screen, {kOverviewGroups});
  screen.BringToFront("MainOverviewPanel");
  screen.SetChecked("actSetViewOverview");
  Show(screen, {kSensorButtons});
  ShowDockPanels(screen, TView::Overview);
  ribbon.End();
  screen.Repaint("ChartAllSensors");
}

void SetViewReport(IMainScreen& screen) {
  TRibbonUpdate ribbon(screen);
  Hide(screen, {kOverviewItems, kShockItems, kShockGroups, kEventsChartGroups, kShockChartGroups, kSensorsChartGroups,
                kSensorButtons});
  Show(screen, {kReportItems});
  ShowDockPanels(screen, TView::Report);
  Hide(screen, {kGroupsWithoutReport, kFilterPanel});
  screen.BringToFront("ReportPanel");
  screen.SetChecked("actSetViewReport");
  screen.BringToFront("dxLayoutReport");
  screen.ScrollToTop("scrlReport");
  ribbon.End();
  screen.SetVisible("pnlEventCards", true);
}

void SetViewShock(IMainScreen& screen, std::optional<std::size_t> selectedEvent) {
  TRibbonUpdate ribbon(screen);
  Hide(screen, {kOverviewItems, kSensorsChartGroups, kReportItems});
  Show(screen, {kShockItems, kEventsChartGroups, kShockChartGroups});
  screen.BringToFront("MainShockPanel");
  screen.SetChecked("actSetViewShock");
  screen.SelectRibbonTab("tabShock");
  Show(screen, {kShockViewGroups});
  Show(screen, {kSensorButtons});
  ShowDockPanels(screen, TView::Shock);
  screen.Repaint("ChartNavigator");
  screen.RebuildFilteredEvents();
  screen.PositionEventGrids(selectedEvent);
  ribbon.End();
  screen.Repaint("Chart20");
}
