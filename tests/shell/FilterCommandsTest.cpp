#include "shell/uFilterCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uProgress.h"
#include "shell/uOrderingCommands.h"
#include "tests/support/uLoggingScreen.h"
#include "tests/support/uThreeEvents.h"

namespace {

class FilterCommands : public testing::Test {
 protected:
  FilterCommands() {
    Read(ThreeEvents());
    TNoProgress progress;
    LoadKorvexFileData(FMission.Data, FMission.Events, FMission.Sensors, {}, progress, FMission.Tables);
    FillCompanion(FMission);
    SelectEvent(FMission, 1, FScreen);
    FScreen.Said();
  }
  // What the window is told when the acceleration, 20 g, 9 g and 5 g, has to be in a range.
  std::string Change(const TRange& acceleration) {
    TEventFilter filter;
    filter.ranges[0] = acceleration;
    ChangeFilter(FMission, filter, FScreen);
    return FScreen.Said();
  }
  std::string Activate(bool on, bool possible = true) {
    EXPECT_EQ(ActivateFilter(FMission, on, FScreen), possible);
    return FScreen.Said();
  }

  TShownMission FMission;
  TLoggingScreen FScreen;
};

TEST_F(FilterCommands, TheChosenEventIsSelectedWhileItIsVisibleElseTheFirstInOrder) {
  EXPECT_EQ(Change({6, {}}), "filtered events; filter on: 2 of 3; ");
  ShockGridTitleClick(FMission, "IoT total", FScreen);  // 1, 0, 2
  FScreen.Said();
  EXPECT_EQ(Change({{}, 8}), "filtered events; filter on: 1 of 3; selected 2; position 2; ");
  EXPECT_EQ(Change({{}, {}}), "filtered events; filter off: 3 of 3; selected 1; position 1; ") << "as the user chose";
  EXPECT_EQ(Change({{}, 20}), "filtered events; filter on: 3 of 3; ");
  EXPECT_EQ(Change({{}, 19}), "filtered events; filter on: 2 of 3; ");
  SelectEvent(FMission, 0, FScreen);
  FScreen.Said();
  EXPECT_EQ(Change({{}, 18}), "filtered events; filter on: 2 of 3; selected 1; position 1; ") << "IoT total falls";
}

TEST_F(FilterCommands, WhereNothingIsVisibleNothingIsSelected) {
  EXPECT_EQ(Change({100, {}}), "filtered events; filter on: 0 of 3; selected none; position none; ");
  StepEvent(FMission, 1, FScreen);
  EXPECT_EQ(FScreen.Said(), "");
  ShockGridTitleClick(FMission, "ToT max", FScreen);
  EXPECT_EQ(FScreen.Said(), "grid dbgShocks; grid dbgFilteredShocks; selected none; position none; ");
  EXPECT_EQ(Activate(false), "filtered events; filter off: 3 of 3; selected 2; position 2; ");
}

TEST_F(FilterCommands, SwitchingOffAndOnKeepsTheConditions) {
  EXPECT_EQ(Activate(true, false), "filtered events; filter off: 3 of 3; ") << "there is no condition yet";
  Change({6, {}});
  EXPECT_EQ(Activate(false), "filtered events; filter off: 3 of 3; ");
  EXPECT_EQ(FMission.Filter.ranges[0].from, 6);
  EXPECT_EQ(Activate(true), "filtered events; filter on: 2 of 3; ");
}

TEST_F(FilterCommands, NextAndPreviousEventWalkTheVisibleOnes) {
  Change({{}, 9.5});
  ShockGridTitleClick(FMission, "Acceleration max", FScreen);
  EXPECT_EQ(FMission.SelectedEvent, 1U) << "the first that is visible";
  StepEvent(FMission, 1, FScreen);
  EXPECT_EQ(FMission.SelectedEvent, 2U);
  StepEvent(FMission, 1, FScreen);
  EXPECT_EQ(FMission.SelectedEvent, 2U);
}

TEST_F(FilterCommands, OtherLimitsInForceCountAtOnceWhereTheFilterAsksForThem) {
  FMission.Display.limits[0] = TLimits{-9, 9};
  AlarmLimitsChanged(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), "");
  TEventFilter filter;
  filter.aboveAlarm = true;
  ChangeFilter(FMission, filter, FScreen);
  EXPECT_EQ(FScreen.Said(), "filtered events; filter on: 1 of 3; selected 0; position 0; ");
  FMission.Display.limits[0] = TLimits{-8, 8};
  AlarmLimitsChanged(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), "filtered events; filter on: 2 of 3; selected 1; position 1; ");
  FMission.Display.limits[0] = TLimits{-1, 1};
  AlarmLimitsChanged(FMission, FScreen);
  EXPECT_EQ(FScreen.Said(), "filtered events; filter on: 3 of 3; ");
}

}  // namespace
