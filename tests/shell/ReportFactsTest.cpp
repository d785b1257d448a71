#include "shell/uReportFacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/uMissionLoad.h"
#include "shell/uOrderingCommands.h"
#include "tests/support/uThreeEvents.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// Events of 20, 9 and 5 g at minutes 0, 1 and 2, all on x; IoT max ranks them 1, 2, 0.
class ReportFacts : public testing::Test {
 protected:
  ReportFacts() {
    Read(ThreeEvents());
    TNoProgress progress;
    FillMission(FMission, progress);
  }
  [[nodiscard]] double Minute(double minutes) const { return FMission.Events.StartTime + minutes / 1440; }
  TReportFacts Facts() { return FactsOf(FMission, FConfig); }

  TShownMission FMission;
  TReportConfig FConfig;
};

TEST_F(ReportFacts, WithoutFilterAndLimitsEverythingCounts) {
  const TReportFacts facts = Facts();
  EXPECT_EQ(facts.filtered, "");
  EXPECT_THAT(facts.events, ElementsAre(0, 1, 2));
  EXPECT_THAT(facts.important, ElementsAre(1, 2, 0));
  EXPECT_THAT(facts.cards, ElementsAre(1, 2, 0)) << "the worst";
  EXPECT_FALSE(facts.limits || facts.judgement || facts.verdict.above);
  const TEventGroup& onX = facts.groups.byAxis.at(0);
  EXPECT_EQ(std::tuple(onX.name, onX.events, onX.peakEvent, onX.maxIot), std::tuple("X", 3U, 0U, 14.0));
  EXPECT_EQ(facts.groups.byAxis.at(2).events, 0U);
  ASSERT_EQ(facts.groups.byDay.size(), 1U);
  EXPECT_EQ(facts.groups.byDay[0].name, "2023-07-16");
}

TEST_F(ReportFacts, TimeAndFilterLimitAllFigures) {
  FConfig.time = {Minute(0.5), Minute(1.5)};
  TReportFacts facts = Facts();
  EXPECT_THAT(facts.events, ElementsAre(1));
  EXPECT_EQ(facts.verdict.peak->event, 1U);
  EXPECT_EQ(facts.verdict.sensors.at(0).max->value, 22.0F);
  EXPECT_EQ(facts.verdict.sensors.at(0).min->value, 20.0F) << "the reading of minute 0 counts until minute 1";
  EXPECT_EQ(facts.filtered, "time from 23-07-16 06:00:30 to 23-07-16 06:01:30");

  FMission.Filter.ranges[0].to = 9.0;
  FMission.FilterActive = true;
  FilterCompanion(FMission);
  FConfig.time = {Minute(1.5), {}};
  FConfig.cardEvents = TCardEvents::All;
  facts = Facts();
  EXPECT_THAT(facts.events, ElementsAre(2));
  EXPECT_THAT(facts.groups.byAxis.at(0).events, 1U);
  EXPECT_EQ(facts.filtered, "Acceleration max to 9 g · time from 23-07-16 06:01:30");
  FConfig.time = {};
  EXPECT_THAT(Facts().cards, ElementsAre(0, 1, 2)) << "all, whatever the filter says";
  FConfig.cardEvents = TCardEvents::Filtered;
  EXPECT_THAT(Facts().cards, ElementsAre(1, 2));
  FConfig.cardEvents = TCardEvents::Worst;
  FConfig.worstCount = 1;
  EXPECT_THAT(Facts().cards, ElementsAre(1));
}

TEST_F(ReportFacts, OnlyLimitsThatTheProfileChoosesAreShown) {
  FConfig.cardEvents = TCardEvents::AboveAlarm;
  EXPECT_THAT(Facts().cards, IsEmpty()) << "no limits";
  FMission.Display = DefaultSettings().display;
  FMission.Display.alarmActive = true;
  for (const bool fromFile : {true, false}) {
    FMission.Display.accelerationFromFile = FMission.Display.fileNamesLimits = fromFile;
    EXPECT_THAT(Facts().cards, IsEmpty()) << "nobody chose the limits";
    EXPECT_THAT(CardsTitle(Facts(), FConfig, FMission), HasSubstr(fromFile ? "trigger level" : "default limits"));
  }
  TLimitProfile profile;
  for (TJudgedLimits& limits : profile.limits) limits = {{-6, 8}, TLimitSource::Default, TLimitSource::Default};
  profile.limits[0].maxSource = TLimitSource::User;
  profile.allowedEvents = 1;
  UseProfile(profile, FMission.Display);
  const TReportFacts facts = Facts();
  EXPECT_THAT(facts.cards, ElementsAre(0, 1));
  EXPECT_EQ(facts.groups.byAxis.at(0).above, 2U);
  EXPECT_EQ(facts.judgement->outcome, TJudgementOutcome::Failed);
  EXPECT_EQ(facts.display.limits[0], (TLimits{-std::numeric_limits<double>::infinity(), 8}));
  EXPECT_EQ(facts.display.limits[1].max, std::numeric_limits<double>::infinity());
  EXPECT_EQ(CardsTitle(facts, FConfig, FMission), "2 events above the alarm limit");
  FConfig.time = {Minute(60), {}};
  EXPECT_EQ(Facts().judgement->outcome, TJudgementOutcome::NotJudged) << "nothing is left to judge";
}

}  // namespace
