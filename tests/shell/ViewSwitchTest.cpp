#include "shell/uViewSwitch.h"

#include <gtest/gtest.h>

#include "tests/support/uLoggingScreen.h"

namespace {

TEST(ViewSwitch, ReportClosesTheDockPanelsAndStartsAtItsTop) {
  TLoggingScreen screen;
  SetViewReport(screen);
  EXPECT_EQ(
      screen.Said(),
      "ribbon suspended; hide dxBarOverviewPrint dxBarOverviewExport dxBarShockPrint dxBarShockExport btngrpShock "
      "btngrpFilter btngrpEventsChart btngrpEventsImage btngrpShockSeries btngrpShockTools btngrpShockExport "
      "btngrpShockImage btngrpSensorsTools "
      "btngrpSensorsAxes btngrpSensorsImage "
      "dxBarShowSensorGrid dxBarShowBatteryGrid; show dxBarReportPrintOnly dxBarReportExportOnly; hide" +
          kDockPanelNames +
          " btngrpNavigator btngrpLayout btngrpFiltering dxDockPanelFilter; front ReportPanel; check actSetViewReport; "
          "front "
          "dxLayoutReport; top scrlReport; ribbon resumed; show pnlEventCards; ");
}

TEST(ViewSwitch, ShockClosesTheSensorGridsAndFindsTheSelectedEventInBothGrids) {
  TLoggingScreen screen;
  SetViewShock(screen, 7);
  EXPECT_EQ(screen.Said(),
            "ribbon suspended; hide dxBarOverviewPrint dxBarOverviewExport btngrpSensorsTools btngrpSensorsAxes "
            "btngrpSensorsImage "
            "dxBarReportPrintOnly dxBarReportExportOnly; show dxBarShockPrint dxBarShockExport btngrpEventsChart "
            "btngrpEventsImage "
            "btngrpShockSeries btngrpShockTools btngrpShockExport btngrpShockImage; front MainShockPanel; check "
            "actSetViewShock; tab "
            "tabShock; show "
            "btngrpNavigator btngrpLayout btngrpShock btngrpFilter btngrpAlarm btngrpFiltering dxBarShowSensorGrid "
            "dxBarShowBatteryGrid dxDockPanelNavigator dxDockPanelMissionDetails; hide dxDockPanelSensorGridTemp "
            "dxDockPanelSensorGridBattery; repaint ChartNavigator; filtered events; position 7; ribbon resumed; "
            "repaint Chart20; ");
}

}  // namespace
