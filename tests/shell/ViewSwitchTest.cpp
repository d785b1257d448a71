#include "shell/uViewSwitch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/uFakeWindow.h"

namespace {

TEST(ViewSwitch, EachViewChangesTheWindowInThisOrder) {
  TFakeWindow window;
  SetViewOverview(window.controls, window.views);
  EXPECT_EQ(window.log.Take(),
            "ribbon suspended; groups of overview; front MainOverviewPanel; check actSetViewOverview; show" +
                kDockPanelNames + "; ribbon resumed; repaint ChartAllSensors; ");
  SetViewShock(window.controls, window.views, 7);
  EXPECT_EQ(window.log.Take(),
            "ribbon suspended; groups of shock view; front MainShockPanel; check actSetViewShock; tab tabShock; "
            "show dxDockPanelNavigator dxDockPanelMissionDetails; "
            "hide dxDockPanelSensorGridTemp dxDockPanelSensorGridBattery; "
            "repaint ChartNavigator; filtered events; position 7; ribbon resumed; repaint Chart20; ");
  SetViewReport(window.controls);
  EXPECT_EQ(window.log.Take(), "ribbon suspended; groups of report; hide" + kDockPanelNames +
                                   " dxDockPanelFilter; front ReportPanel; check actSetViewReport; "
                                   "front dxLayoutReport; top scrlReport; ribbon resumed; show pnlEventCards; ");
}

TEST(ViewSwitch, TheFilterPanelIsOpenOrClosedButNoDockPanel) {
  TCallLog log;
  TFakeControls controls(log);
  controls.Closed = {"dxDockPanelNavigator"};
  EXPECT_THAT(ClosedDockPanels(controls), testing::ElementsAre("dxDockPanelNavigator"));
  EXPECT_THAT(OpenPanels(controls), testing::ElementsAre("dxDockPanelMissionDetails", "dxDockPanelSensorGridTemp",
                                                         "dxDockPanelSensorGridBattery", "dxDockPanelFilter"));
  EXPECT_FALSE(AllDockPanelsAreClosed(controls));
  for (const std::string_view panel : OpenPanels(controls)) {
    if (panel != kFilterPanelName) controls.Closed.emplace(panel);
  }
  EXPECT_TRUE(AllDockPanelsAreClosed(controls));
}

}  // namespace
