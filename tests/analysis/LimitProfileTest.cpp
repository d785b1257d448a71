#include "analysis/uLimitProfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using enum TQuantity;
using enum TLimitSource;

constexpr double kHour = 3600000;

std::size_t At(TQuantity quantity) {
  return static_cast<std::size_t>(quantity);
}

// At most 3 events above 10 g and 2 h above 60 %RH; never above 40 °C. The other limits are defaults.
TLimitProfile Fragile() {
  TLimitProfile profile;
  profile.name = "Fragile";
  for (TJudgedLimits& limits : profile.limits) limits = {{-100, 100}, Default, Default};
  profile.limits[At(Acceleration)] = {{-6, 10}, Default, User};
  profile.limits[At(Humidity)] = {{30, 60}, Default, User};
  profile.limits[At(Temperature)] = {{-4, 40}, Default, User};
  profile.allowedEvents = 3;
  profile.allowedTimes[At(Humidity)].above = 2 * kHour;
  return profile;
}

TSensorVerdict Sensor(std::string_view name, const TJudgedLimits& limits) {
  TSensorVerdict sensor{0, FindQuantity(&TQuantityRow::sensorName, name), TReadingAt{}, TReadingAt{}, {}, {}};
  sensor.below = {limits.values.min, limits.minSource};
  sensor.above = {limits.values.max, limits.maxSource};
  return sensor;
}

void GoOut(TLimitVerdict& limit, double ms) {
  limit.excursions = 1;
  limit.timeOut = ms;
  limit.first = limit.longest = TExcursion{0, ms, 0};
}

// Humidity and two temperatures, all within their limits.
TVerdict Calm() {
  const TLimitProfile profile = Fragile();
  TVerdict verdict;
  verdict.events = 300;
  verdict.above = {0, profile.limits[At(Acceleration)]};
  verdict.sensors = {Sensor("RH", profile.limits[At(Humidity)]), Sensor("Temperature", profile.limits[At(Temperature)]),
                     Sensor("Temperature p", profile.limits[At(Temperature)])};
  return verdict;
}

TEST(Judgement, AsMuchAsIsAllowedPassesAndMoreFails) {
  TVerdict verdict = Calm();
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Passed);
  EXPECT_THAT(JudgeByProfile(verdict, Fragile()).findings, IsEmpty());
  for (const auto& [events, ms, outcome] : std::vector<std::tuple<std::size_t, double, TJudgementOutcome>>{
           {3, 2 * kHour, TJudgementOutcome::Passed},
           {3, 2 * kHour + 0.4, TJudgementOutcome::Passed},  // to the millisecond
           {3, 2 * kHour + 1, TJudgementOutcome::Failed},
           {4, 2 * kHour, TJudgementOutcome::Failed}}) {
    verdict.above->count = events;
    GoOut(verdict.sensors[0].above, ms);
    const TJudgement judgement = JudgeByProfile(verdict, Fragile());
    EXPECT_EQ(judgement.outcome, outcome) << events << " " << ms;
    ASSERT_EQ(judgement.findings.size(), 2U);
    EXPECT_EQ(judgement.findings[0].amount, events);
    EXPECT_EQ(judgement.findings[0].allowed, 3);
    EXPECT_EQ(judgement.findings[0].fails, events > 3);
    EXPECT_EQ(judgement.findings[1].sensor, 0U);
    EXPECT_EQ(judgement.findings[1].allowed, 2 * kHour);
    EXPECT_EQ(judgement.findings[1].fails, ms > 2 * kHour + 0.5);
  }
}

TEST(Judgement, ASingleReadingFailsOnlyWhereNoTimeIsAllowed) {
  TVerdict verdict = Calm();
  GoOut(verdict.sensors[0].above, 0);
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Passed);
  GoOut(verdict.sensors[1].above, 0);
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Failed);
}

TEST(Judgement, EachSensorOfAQuantityHasTheWholeAllowance) {
  TVerdict verdict = Calm();
  TLimitProfile profile = Fragile();
  profile.allowedTimes[At(Temperature)].above = kHour;
  GoOut(verdict.sensors[1].above, kHour);
  GoOut(verdict.sensors[2].above, kHour);
  EXPECT_EQ(JudgeByProfile(verdict, profile).outcome, TJudgementOutcome::Passed);
}

TEST(Judgement, NothingFailsByADefaultLimitOrTheTriggerLevel) {
  TVerdict verdict = Calm();
  GoOut(verdict.sensors[0].below, 9 * kHour);
  verdict.above = {300, {{-4, 4}, File, File}};
  TJudgement judgement = JudgeByProfile(verdict, Fragile());
  EXPECT_EQ(judgement.outcome, TJudgementOutcome::Passed);
  EXPECT_THAT(judgement.findings, IsEmpty());
  EXPECT_FALSE(judgement.eventsJudged);
  // Peaks have no sign: a negative lower limit that somebody chose says nothing of them, a positive one does.
  verdict.above = {300, {{-5, 6}, User, Default}};
  EXPECT_FALSE(JudgeByProfile(verdict, Fragile()).eventsJudged);
  verdict.above->limits.values.min = 5;
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Failed);
}

TEST(Judgement, WhatWasNotRecordedIsNamedAndCannotPass) {
  TVerdict verdict = Calm();
  verdict.sensors[0].min.reset();
  EXPECT_THAT(JudgeByProfile(verdict, Fragile()).notRecorded, ElementsAre(Humidity));
  TLimitProfile profile = Fragile();
  profile.limits[At(Acceleration)].maxSource = profile.limits[At(Temperature)].maxSource = Default;
  verdict.above->limits = profile.limits[At(Acceleration)];
  EXPECT_EQ(JudgeByProfile(verdict, profile).outcome, TJudgementOutcome::NotJudged) << "humidity alone";
  profile.limits[At(Humidity)].maxSource = Default;
  EXPECT_EQ(JudgeByProfile(verdict, profile).outcome, TJudgementOutcome::NotJudged);
  EXPECT_THAT(JudgeByProfile(verdict, profile).notRecorded, IsEmpty());
}

TEST(Judgement, APartWithoutEventAndReadingCannotPass) {
  TVerdict verdict = Calm();
  verdict.events = 0;
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Passed) << "readings without a shock";
  for (TSensorVerdict& sensor : verdict.sensors) sensor.min.reset();
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::NotJudged);
  verdict.events = 1;
  EXPECT_EQ(JudgeByProfile(verdict, Fragile()).outcome, TJudgementOutcome::Passed) << "an event below the limit";
}

}  // namespace
