#include "shell/uViewSwitch.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::string_view kSensorPanels[] = {"dxDockPanelSensorGridTemp", "dxDockPanelSensorGridBattery"};
constexpr std::string_view kMissionPanels[] = {"dxDockPanelNavigator", "dxDockPanelMissionDetails"};
constexpr std::string_view kDockPanels[] = {kMissionPanels[0], kMissionPanels[1], kSensorPanels[0], kSensorPanels[1]};

void SetVisible(IControls& controls, const auto& names, bool visible) {
  for (const std::string_view name : names) controls.SetVisible(name, visible);
}

class TRibbonUpdate {
 public:
  explicit TRibbonUpdate(IControls& controls) : FControls(controls) { FControls.BeginRibbonUpdate(); }
  ~TRibbonUpdate() { FControls.EndRibbonUpdate(); }
  TRibbonUpdate(const TRibbonUpdate&) = delete;
  TRibbonUpdate& operator=(const TRibbonUpdate&) = delete;

 private:
  IControls& FControls;
};

}  // namespace

void CloseDockPanels(IControls& controls) {
  SetVisible(controls, kDockPanels, false);
}

void CloseAllPanels(IControls& controls) {
  CloseDockPanels(controls);
  controls.SetVisible(kFilterPanelName, false);
}

void ShowDockPanels(IControls& controls, TView view) {
  SetVisible(controls, kMissionPanels, view == TView::Overview || view == TView::Shock);
  SetVisible(controls, kSensorPanels, view == TView::Overview);
}

std::vector<std::string_view> ClosedDockPanels(const IControls& controls) {
  std::vector<std::string_view> closed;
  std::ranges::copy_if(kDockPanels, std::back_inserter(closed),
                       [&](std::string_view panel) { return !controls.IsVisible(panel); });
  return closed;
}

bool AllDockPanelsAreClosed(const IControls& controls) {
  return std::ranges::none_of(kDockPanels, [&](std::string_view panel) { return controls.IsVisible(panel); });
}

std::vector<std::string_view> OpenPanels(const IControls& controls) {
  std::vector<std::string_view> open(std::begin(kDockPanels), std::end(kDockPanels));
  open.push_back(kFilterPanelName);
  std::erase_if(open, [&](std::string_view panel) { return !controls.IsVisible(panel); });
  return open;
}

void HideFileControls(IControls& controls) {
  controls.ShowRibbonGroups(std::nullopt);
  controls.SetVisible(kFilterPanelName, false);
}

void EnterWelcomeState(IControls& controls) {
  controls.BringToFront("WellcomePanel");
  CloseDockPanels(controls);
  HideFileControls(controls);
}

void SetViewOverview(IControls& controls, IMissionViews& views) {
  {
    const TRibbonUpdate ribbon(controls);
    controls.ShowRibbonGroups(TView::Overview);
    controls.BringToFront("MainOverviewPanel");
    controls.SetChecked("actSetViewOverview");
    ShowDockPanels(controls, TView::Overview);
  }
  views.RepaintChart("ChartAllSensors");
}

void SetViewReport(IControls& controls) {
  {
    const TRibbonUpdate ribbon(controls);
    controls.ShowRibbonGroups(TView::Report);
    ShowDockPanels(controls, TView::Report);
    controls.SetVisible(kFilterPanelName, false);
    controls.BringToFront("ReportPanel");
    controls.SetChecked("actSetViewReport");
    controls.BringToFront("dxLayoutReport");
    controls.ScrollToTop("scrlReport");
  }
  controls.SetVisible("pnlEventCards", true);
}

void SetViewShock(IControls& controls, IMissionViews& views, std::optional<std::size_t> selectedEvent) {
  {
    const TRibbonUpdate ribbon(controls);
    controls.ShowRibbonGroups(TView::Shock);
    controls.BringToFront("MainShockPanel");
    controls.SetChecked("actSetViewShock");
    controls.SelectRibbonTab("tabShock");
    ShowDockPanels(controls, TView::Shock);
    views.RepaintChart("ChartNavigator");
    views.RebuildFilteredEvents();
    views.PositionEventGrids(selectedEvent);
  }
  views.RepaintChart("Chart20");
}

void SetViewOfAllEvents(IControls& controls, TView view) {
  const bool isStatistics = view == TView::Statistics;
  const TRibbonUpdate ribbon(controls);
  controls.ShowRibbonGroups(view);
  ShowDockPanels(controls, view);
  controls.BringToFront(isStatistics ? "StatisticsPanel" : "DamageBoundaryPanel");
  controls.SetChecked(isStatistics ? "actSetViewStatistics" : "actSetViewDamageBoundary");
}
