#include "shell/uNavigatorCommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "base/uDateTime.h"
#include "tests/support/uLoggingScreen.h"

namespace {

class NavigatorCommands : public testing::Test {
 protected:
  NavigatorCommands() { FScreen.Data = TTimeSpan{0, 10}; }
  // What follows every change of the band.
  static std::string Applied(const std::string& band) {
    return fmt::format(
        "Chart1 shows {0}; ChartAllSensors shows {0}; Chart20 shows {0}; unsynced none; companions of {0}; "
        "repaint Chart1; ",
        band);
  }
  static std::string Interval(const std::string& band) {
    return fmt::format("band {0}; companions of {0}; repaint Chart1; repaint ChartAllSensors; ", band) + Applied(band);
  }
  static std::string Step(const std::string& band) {
    return fmt::format("band {0}; companions of {0}; repaint ChartNavigator; ", band) + Applied(band);
  }

  TShownMission FMission;
  TLoggingScreen FScreen;
};

TEST_F(NavigatorCommands, MoveTheBandThenItsCompanionsThenTheCharts) {
  actNavSetIntAllExecute(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), Interval("0-10"));
  actNavSetIntDayExecute(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), Interval("0-1"));
  actNavFwdExecute(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), Step("1-2"));
  actNavRwdExecute(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), Step("0-1"));
  FScreen.Data = TTimeSpan{0, 0.5};
  actNavSetIntDayExecute(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), Interval("0-0.5")) << "shorter than a day";
}

TEST_F(NavigatorCommands, WithoutAPointNothingHappens) {
  FScreen.Data.reset();
  FMission.Band = {1, 2};
  actNavSetIntAllExecute(FMission, FScreen);
  actNavSetIntYearExecute(FMission, FScreen);
  actNavFwdExecute(FMission, FScreen);
  actNavRwdExecute(FMission, FScreen);
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FScreen);
  EXPECT_EQ(FScreen.Said(), "");
  EXPECT_EQ(FMission.Band, (TTimeSpan{1, 2}));
}

TEST_F(NavigatorCommands, SyncAsksWhenTheSettingsWantIt) {
  const std::string question = "ask \"Do you really want to sync the navigator with the currently viewed timespan?\"; ";
  FScreen.Confirms = false;
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FScreen);
  EXPECT_EQ(FScreen.Said(), question);
  FScreen.Confirms = true;
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FScreen);
  EXPECT_EQ(FScreen.Said(), question + "band 2-3; " + Applied("2-3"));
  FMission.Settings.syncConfirmations = false;
  btnToolsSensorsChartSyncWNavClick(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), "band 2-3; " + Applied("2-3"));
}

TEST_F(NavigatorCommands, GoToAnEventOrAReading) {
  TEventList events;
  events.StartTime = 2;
  for (const double day : {1.0, std::nan("")}) {
    events.NewEvent();
    events.AddValues(day * kMsPerDay, 1, 0, 0);
    events.AddValues((day + 0.25) * kMsPerDay, 2, 0, 0);
  }
  std::swap(EventList, events);
  ZoomNavigatorToEvent(FMission, 0, FScreen);
  EXPECT_EQ(FScreen.Said(), "band 2.625-3.625; " + Applied("2.625-3.625"));
  ZoomNavigatorToEvent(FMission, 1, FScreen);
  ZoomNavigatorToEvent(FMission, 2, FScreen);
  EXPECT_EQ(FScreen.Said(), "") << "without a time, without an event";
  std::swap(EventList, events);

  TDataset readings;
  const std::size_t timestamp = readings.AddField("Timestamp", TFieldType::DateTime);
  readings.Append();
  readings.SetDateTime(timestamp, 9.75);
  ZoomNavigatorToReading(FMission, readings, 0, FScreen);
  EXPECT_EQ(FScreen.Said(), "band 9-10; " + Applied("9-10"));
  ZoomNavigatorToReading(FMission, readings, 1, FScreen);
  FScreen.Data.reset();
  ZoomNavigatorToReading(FMission, readings, 0, FScreen);
  EXPECT_EQ(FScreen.Said(), "");
}

}  // namespace
