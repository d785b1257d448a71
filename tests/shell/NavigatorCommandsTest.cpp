#include "shell/uNavigatorCommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "base/uDateTime.h"
#include "tests/support/uFakeWindow.h"

namespace {

class NavigatorCommands : public testing::Test {
 protected:
  NavigatorCommands() { FWindow.views.Data = TTimeSpan{0, 10}; }
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
  TFakeWindow FWindow;
};

TEST_F(NavigatorCommands, MoveTheBandThenTheShadesThenTheCharts) {
  actNavSetIntAllExecute(FMission, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), Interval("0-10"));
  actNavSetIntDayExecute(FMission, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), Interval("0-1"));
  actNavFwdExecute(FMission, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), Step("1-2"));
  actNavRwdExecute(FMission, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), Step("0-1"));
  FWindow.views.Data = TTimeSpan{0, 0.5};
  actNavSetIntDayExecute(FMission, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), Interval("0-0.5")) << "shorter than a day";
}

TEST_F(NavigatorCommands, WithoutAPointNothingHappens) {
  FWindow.views.Data.reset();
  FMission.Band = {1, 2};
  actNavSetIntAllExecute(FMission, FWindow.views);
  actNavSetIntYearExecute(FMission, FWindow.views);
  actNavFwdExecute(FMission, FWindow.views);
  actNavRwdExecute(FMission, FWindow.views);
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FWindow.views, FWindow.dialogs);
  EXPECT_EQ(FWindow.log.Take(), "");
  EXPECT_EQ(FMission.Band, (TTimeSpan{1, 2}));
}

TEST_F(NavigatorCommands, SyncAsksFirstUnlessTheSettingsForbidIt) {
  const std::string question = "ask \"Do you really want to sync the navigator with the currently viewed timespan?\"; ";
  FWindow.dialogs.Confirms = false;
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FWindow.views, FWindow.dialogs);
  EXPECT_EQ(FWindow.log.Take(), question);
  FWindow.dialogs.Confirms = true;
  btnToolsShockSyncWNavClick(FMission, TView::Overview, FWindow.views, FWindow.dialogs);
  EXPECT_EQ(FWindow.log.Take(), question + "band 2-3; " + Applied("2-3"));
  FMission.Settings.syncConfirmations = false;
  btnToolsSensorsChartSyncWNavClick(FMission, FWindow.views, FWindow.dialogs);
  EXPECT_EQ(FWindow.log.Take(), "band 2-3; " + Applied("2-3"));
}

TEST_F(NavigatorCommands, TheBandGoesToAnEventOrAReading) {
  TEventList events;
  events.StartTime = 2;
  for (const double day : {1.0, std::nan("")}) {
    events.NewEvent();
    events.AddValues(day * kMsPerDay, 1, 0, 0);
    events.AddValues((day + 0.25) * kMsPerDay, 2, 0, 0);
  }
  std::swap(EventList, events);
  ZoomNavigatorToEvent(FMission, 0, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), "band 2.625-3.625; " + Applied("2.625-3.625"));
  ZoomNavigatorToEvent(FMission, 1, FWindow.views);
  ZoomNavigatorToEvent(FMission, 2, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), "") << "without a time, without an event";
  std::swap(EventList, events);

  TDataset readings;
  const std::size_t timestamp = readings.AddField("Timestamp", TFieldType::DateTime);
  readings.Append();
  readings.SetDateTime(timestamp, 9.75);
  ZoomNavigatorToReading(FMission, readings, 0, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), "band 9-10; " + Applied("9-10"));
  ZoomNavigatorToReading(FMission, readings, 1, FWindow.views);
  FWindow.views.Data.reset();
  ZoomNavigatorToReading(FMission, readings, 0, FWindow.views);
  EXPECT_EQ(FWindow.log.Take(), "");
}

}  // namespace
