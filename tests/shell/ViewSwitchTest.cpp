#include "shell/uViewSwitch.h"

#include <gtest/gtest.h>

#include "tests/support/uLoggingScreen.h"

namespace {

TEST(ViewSwitch, OverviewShowsAllDockPanelsAndRepaintsTheSensors) {
  TLoggingScreen screen;
  SetViewOverview(screen);
  EXPECT_EQ(
      screen.Said(),
      "ribbon suspended\n"
      "hide dxBarShockPrint dxBarShockExport btngrpShock btngrpFilter dxBarReportPrintOnly dxBarReportExportOnly\n"
      "show dxBarOverviewPrint dxBarOverviewExport btngrpNavigator btngrpLayout btngrpAlarm btngrpFiltering\n"
      "front MainOverviewPanel\n"
      "check actSetViewOverview\n"
      "show dxBarShowSensorGrid dxBarShowBatteryGrid" +
          kDockPanelNames +
          "\n"
          "ribbon resumed\n"
          "repaint ChartAllSensors\n");
}

TEST(ViewSwitch, ReportClosesTheDockPanelsAndStartsAtItsTop) {
  TLoggingScreen screen;
  SetViewReport(screen);
  EXPECT_EQ(screen.Said(),
            "ribbon suspended\n"
            "hide dxBarOverviewPrint dxBarOverviewExport dxBarShockPrint dxBarShockExport btngrpShock btngrpFilter"
            " dxBarShowSensorGrid dxBarShowBatteryGrid\n"
            "show dxBarReportPrintOnly dxBarReportExportOnly\n"
            "hide" +
                kDockPanelNames +
                " btngrpNavigator btngrpLayout btngrpFiltering\n"
                "front ReportPanel\n"
                "check actSetViewReport\n"
                "front dxLayoutReport\n"
                "top scrlReport\n"
                "ribbon resumed\n"
                "show pnlEventCards\n");
}

TEST(ViewSwitch, ShockClosesTheSensorGridsAndFindsTheSelectedEventInBothGrids) {
  TLoggingScreen screen;
  SetViewShock(screen, 7);
  EXPECT_EQ(screen.Said(),
            "ribbon suspended\n"
            "hide dxBarOverviewPrint dxBarOverviewExport dxBarReportPrintOnly dxBarReportExportOnly\n"
            "show dxBarShockPrint dxBarShockExport\n"
            "front MainShockPanel\n"
            "check actSetViewShock\n"
            "tab tabShock\n"
            "show btngrpNavigator btngrpLayout btngrpShock btngrpFilter btngrpAlarm btngrpFiltering"
            " dxBarShowSensorGrid dxBarShowBatteryGrid dxDockPanelNavigator dxDockPanelMissionDetails\n"
            "hide dxDockPanelSensorGridTemp dxDockPanelSensorGridBattery\n"
            "repaint ChartNavigator\n"
            "filtered events\n"
            "position 7\n"
            "ribbon resumed\n"
            "repaint Chart20\n");
}

}  // namespace
