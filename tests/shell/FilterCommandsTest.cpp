#include "shell/uOrderingCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uProgress.h"
#include "shell/uMissionLoad.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uThreeEvents.h"

namespace {

class FilterCommands : public testing::Test {
 protected:
  FilterCommands() {
    Read(ThreeEvents());
    TNoProgress progress;
    LoadKorvexFileData(FMission.Data, FMission.Events, FMission.Sensors, {}, progress, FMission.Tables);
    FillCompanion(FMission);
    SelectEvent(FMission, 1, FViews);
    FLog.Take();
  }
  // The calls after the acceleration (the events have 20 g, 9 g and 5 g) is limited to a range.
  std::string Change(const TRange& acceleration) {
    TEventFilter filter;
    filter.ranges[0] = acceleration;
    ChangeFilter(FMission, filter, FViews);
    return FLog.Take();
  }
  std::string Activate(bool on, bool possible = true) {
    EXPECT_EQ(ActivateFilter(FMission, on, FViews), possible);
    return FLog.Take();
  }

  TShownMission FMission;
  TCallLog FLog;
  TFakeViews FViews{FLog};
};

TEST_F(FilterCommands, TheChosenEventIsSelectedWhileVisibleElseTheFirstVisibleInOrder) {
  EXPECT_EQ(Change({6, {}}), "filtered events; filter on: 2 of 3; ");
  ShockGridTitleClick(FMission, "IoT total", FViews);  // 1, 0, 2
  FLog.Take();
  EXPECT_EQ(Change({{}, 8}), "filtered events; filter on: 1 of 3; selected 2; position 2; ");
  EXPECT_EQ(Change({{}, {}}), "filtered events; filter off: 3 of 3; selected 1; position 1; ") << "as the user chose";
  EXPECT_EQ(Change({{}, 20}), "filtered events; filter on: 3 of 3; ");
  EXPECT_EQ(Change({{}, 19}), "filtered events; filter on: 2 of 3; ");
  SelectEvent(FMission, 0, FViews);
  FLog.Take();
  EXPECT_EQ(Change({{}, 18}), "filtered events; filter on: 2 of 3; selected 1; position 1; ") << "IoT total falls";
}

TEST_F(FilterCommands, NoEventIsSelectedWhenNoneIsVisible) {
  EXPECT_EQ(Change({100, {}}), "filtered events; filter on: 0 of 3; selected none; position none; ");
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FLog.Take(), "");
  ShockGridTitleClick(FMission, "ToT max", FViews);
  EXPECT_EQ(FLog.Take(), "grid dbgShocks; grid dbgFilteredShocks; selected none; position none; ");
  EXPECT_EQ(Activate(false), "filtered events; filter off: 3 of 3; selected 2; position 2; ");
}

TEST_F(FilterCommands, SwitchingOffAndOnKeepsTheConditions) {
  EXPECT_EQ(Activate(true, false), "filtered events; filter off: 3 of 3; ") << "there is no condition yet";
  Change({6, {}});
  EXPECT_EQ(Activate(false), "filtered events; filter off: 3 of 3; ");
  EXPECT_EQ(FMission.Filter.ranges[0].from, 6);
  EXPECT_EQ(Activate(true), "filtered events; filter on: 2 of 3; ");
}

TEST_F(FilterCommands, NextEventSkipsHiddenEvents) {
  Change({{}, 9.5});
  ShockGridTitleClick(FMission, "Acceleration max", FViews);
  EXPECT_EQ(FMission.SelectedEvent, 1U) << "the first that is visible";
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FMission.SelectedEvent, 2U);
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FMission.SelectedEvent, 2U);
}

TEST_F(FilterCommands, ChangedAlarmLimitsApplyAtOnceWhenTheFilterUsesThem) {
  FMission.Display.limits[0] = TLimits{-9, 9};
  AlarmLimitsChanged(FMission, FViews);
  EXPECT_EQ(FLog.Take(), "");
  TEventFilter filter;
  filter.aboveAlarm = true;
  ChangeFilter(FMission, filter, FViews);
  EXPECT_EQ(FLog.Take(), "filtered events; filter on: 1 of 3; selected 0; position 0; ");
  FMission.Display.limits[0] = TLimits{-8, 8};
  AlarmLimitsChanged(FMission, FViews);
  EXPECT_EQ(FLog.Take(), "filtered events; filter on: 2 of 3; selected 1; position 1; ");
  FMission.Display.limits[0] = TLimits{-1, 1};
  AlarmLimitsChanged(FMission, FViews);
  EXPECT_EQ(FLog.Take(), "filtered events; filter on: 3 of 3; ");
}

class VelocityChangeFilter : public FilterCommands {
 protected:
  VelocityChangeFilter() {
    Read(Triangles());
    TNoProgress progress;
    LoadKorvexFileData(FMission.Data, FMission.Events, FMission.Sensors, {}, progress, FMission.Tables);
    FillCompanion(FMission);
    FFilter.ranges[kVelocityChangePlace].from = 1;
  }
  std::string ChangeToIt() {
    ChangeFilter(FMission, FFilter, FViews);
    return FLog.Take();
  }
  std::string Finish() {
    TakeAnalysis(FMission, AnalyseMission(FMission.Events, 2), FViews);
    return FLog.Take();
  }

  TEventFilter FFilter;
};

TEST_F(VelocityChangeFilter, WaitsForTheAnalysisAndThenApplies) {
  EXPECT_EQ(ChangeToIt(), "await analysis; ");
  EXPECT_EQ(FMission.CLDS.RecordCount(), 4U) << "until then nothing is hidden";
  EXPECT_EQ(Finish(), "analysis of 4; filtered events; filter on: 2 of 4; ");
  EXPECT_EQ(FMission.Analysis->Table.RecordCount(), 2U);
  EXPECT_EQ(Activate(false), "filtered events; filter off: 4 of 4; ");
  EXPECT_EQ(Activate(true), "filtered events; filter on: 2 of 4; ") << "it is there now";
}

TEST_F(VelocityChangeFilter, IsTakenAwayWhenTheAnalysisIsCancelled) {
  FFilter.ranges[0].to = 50;
  EXPECT_EQ(ChangeToIt(), "await analysis; ");
  GiveUpAnalysis(FMission, FViews);
  EXPECT_EQ(FLog.Take(), "filtered events; filter on: 3 of 4; selected 0; position 0; ") << "the other condition stays";
  EXPECT_FALSE(FMission.Filter.NeedsAnalysis());
  EXPECT_EQ(Finish(), "analysis of 3; ") << "somebody else asked";
}

TEST_F(VelocityChangeFilter, AnOrderOfTheAnalysisIsItsOwn) {
  AnalysisGridTitleClick(FMission, "Delta-v (m/s)", FViews);
  EXPECT_EQ(FLog.Take(), "") << "not analysed yet";
  Finish();
  AnalysisGridTitleClick(FMission, "Delta-v (m/s)", FViews);
  EXPECT_EQ(FLog.Take(), "grid dbgAnalysis; selected 1; position 1; ");
  StepEventInAnalysis(FMission, 2, FViews);
  EXPECT_EQ(FMission.SelectedEvent, 0U) << "1, 2, 0, and 3 without a pulse";
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FMission.SelectedEvent, 1U) << "the other tables keep theirs";
}

TEST_F(VelocityChangeFilter, ARunGivesItsResultOnce) {
  TAnalysisRun run(FMission.Events, 2);
  std::optional<TMissionAnalysis> analysis;
  while (!analysis) analysis = run.Take();
  EXPECT_EQ(analysis->Pulses.size(), 4U);
  EXPECT_NEAR(analysis->Pulses[2].velocityChange, 0.135 * 9.80665, 1e-6);
  EXPECT_FALSE(analysis->Table.Text(3, *analysis->Table.FindField(kReasonField)).empty());
  EXPECT_FALSE(run.Take());
}

}  // namespace
