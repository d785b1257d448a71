#include "shell/uShownVerdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/uFilterWords.h"
#include "shell/uShownMission.h"
#include "shell/uVerdictCells.h"
#include "tests/support/uThreeEvents.h"

namespace {

// The defaults, but for a full date.
TDisplaySettings Settings() {
  TDisplaySettings settings = DefaultSettings().display;
  settings.dateFormat = 1;
  return settings;
}

TSensorVerdict Sensor(std::string_view name) {
  return {0, FindQuantity(&TQuantityRow::sensorName, name), TReadingAt{8.125F, 0}, TReadingAt{72.5F, 0}, {}, {}};
}

constexpr double kDay = 86400000;
constexpr double kMoment = 46085.5596;  // 2026-03-04 13:25:49

TLimitVerdict Out(double limit, double timeOut, TLimitSource source = TLimitSource::User) {
  const TExcursion excursion{kMoment, timeOut, 0};
  return {limit, source, timeOut, 1, excursion, excursion};
}

TVerdict Example() {
  TVerdict verdict;
  verdict.events = 300;
  verdict.peak = {171, 19.76F, 16, "Y-pos", kMoment, true};
  verdict.clipped = {171};
  verdict.above = {12, {{-6, 6}}};
  verdict.sensors = {Sensor("RH")};
  verdict.sensors[0].above = Out(60, (3 + 4.0 / 24) * kDay);
  verdict.worstSensor = {0, false, 0};
  return verdict;
}

TEST(VerdictSentence, SaysWhatHappenedInOneSentence) {
  TVerdict verdict = Example();
  EXPECT_EQ(
      VerdictSentence(verdict, Settings()),
      "12 of 300 events above 6 g; the highest peak, event 171, reached 19.76 g (16 g on Y-pos, clipped: the true peak "
      "is higher) on 2026-03-04 13:25; humidity above 60 %RH for 3 d 4 h");
  verdict.clipped = {3, 171};
  verdict.above->count = 0;
  verdict.above->limits.values = {2, 25.25};
  verdict.sensors = {Sensor("A1"), Sensor("Temperature RH")};
  verdict.sensors[0].above = Out(0.5, 0);
  verdict.sensors[1].below = Out(-4, kDay, TLimitSource::Default);
  verdict.damaged = true;
  TDisplaySettings settings = Settings();
  settings.analogNames[0] = "Strain Left";
  EXPECT_EQ(
      VerdictSentence(verdict, settings),
      "none of 300 events outside 2 … 25.25 g; the highest peak, event 171, reached 19.76 g (16 g on Y-pos, clipped: "
      "the true peak is higher) on 2026-03-04 13:25; 2 of 300 events clipped: their true peaks are higher; "
      "Strain Left above 0.5 on 2026-03-04 13:25, 1 more sensor out of default limits; the recording was not read "
      "whole, and only what could be read is judged");
  verdict.above.reset();
  EXPECT_TRUE(VerdictSentence(verdict, settings).ends_with("; the recording was not read whole"))
      << "nothing is judged";
}

TEST(VerdictSentence, DefaultLimitsNeitherLeadNorCountAsChosen) {
  TVerdict verdict = Example();
  verdict.above->limits = {{-6, 6}, TLimitSource::Default, TLimitSource::Default};
  verdict.sensors = {Sensor("RH"), Sensor("Temperature"), Sensor("L"), Sensor("Battery")};
  for (const std::size_t chosen : {0, 1}) verdict.sensors[chosen].above = Out(60, kDay);
  for (const std::size_t byDefault : {2, 3}) verdict.sensors[byDefault].above = Out(2, kDay, TLimitSource::Default);
  TDisplaySettings settings = Settings();
  const std::string events =
      "the highest peak, event 171, reached 19.76 g (16 g on Y-pos, clipped: the true peak is higher) on 2026-03-04 "
      "13:25; "
      "12 of 300 events above 6 g (default limit); ";
  const std::string chosen = events + "humidity above 60 %RH for 1 d, 1 more sensor out of limits";
  EXPECT_EQ(VerdictSentence(verdict, settings), chosen + ", 2 more sensors out of default limits");
  settings.profile.emplace();
  EXPECT_EQ(VerdictSentence(verdict, settings), chosen) << "a profile does not judge by default limits";
}

TEST(VerdictSentence, WithoutLimitsSaysSoAndGivesExtremes) {
  TVerdict verdict = Example();
  verdict.above.reset();
  verdict.peak->clipped = false;
  verdict.clipped.clear();
  verdict.sensors = {Sensor("RH"), Sensor("A2"), Sensor("Battery")};
  verdict.sensors[1].min.reset();
  EXPECT_EQ(VerdictSentence(verdict, Settings()),
            "no limits are set; 300 events; the highest peak, event 171, reached 19.76 g (16 g on Y-pos) on 2026-03-04 "
            "13:25; "
            "humidity 8.125 … 72.5 %RH, battery 8.125 … 72.5 V");
  EXPECT_EQ(VerdictSentence({}, Settings()), "no limits are set; no events");
}

TEST(VerdictTexts, NameTheTriggerLevelAndDefaultLimits) {
  TVerdict verdict = Example();
  verdict.above = {300, {{-4, 4}, TLimitSource::File, TLimitSource::File}};
  EXPECT_EQ(EventsAboveText(verdict, Settings()), "all events exceed the trigger level of 4 g; set limits to judge");
  verdict.above->count = 299;
  EXPECT_EQ(EventsAboveText(verdict, Settings()),
            "299 of 300 events exceed the trigger level of 4 g; set limits to judge");
  verdict.events = verdict.above->count = 1;
  verdict.above->limits = {{-6, 6}, TLimitSource::Default, TLimitSource::Default};
  EXPECT_EQ(EventsAboveText(verdict, Settings()), "1 of 1 event above 6 g (default limit)");

  TSensorVerdict sensor = Sensor("Temperature");
  sensor.below = Out(-4, kDay, TLimitSource::Default);
  sensor.above = Out(35.5, kDay / 2);
  EXPECT_EQ(OutOfLimitsText(sensor, true, Settings()),
            "temperature below -4 °C (default limit) or above 35.5 °C for 1 d 12 h");
  EXPECT_EQ(OutOfLimitsText(sensor, false, Settings()), "temperature above 35.5 °C for 12 h");
  EXPECT_EQ(OutOfLimitsText(Sensor("Temperature"), true, Settings()), "");
}

TEST(JudgementSentence, SaysWhatFailsBeforeWhatIsAllowed) {
  TVerdict verdict = Example();
  verdict.sensors = {Sensor("RH"), Sensor("Temperature"), Sensor("A2")};
  verdict.sensors[0].above = Out(60, 2 * kDay + 1000);
  verdict.sensors[1].below = Out(2.5, 0);
  TLimitProfile profile;
  profile.name = "Fragile";
  TJudgement judgement{TJudgementOutcome::Failed,
                       {{{}, false, 12, 12, false}, {0, false, 2 * kDay + 1000, 2 * kDay, true}, {1, true, 0, 0, true}},
                       true,
                       {}};
  // 2 d and a second would read as the 2 d that are allowed.
  EXPECT_EQ(
      JudgementSentence(judgement, verdict, profile, Settings()),
      "failed the limits \"Fragile\": humidity above 60 %RH for 2 d 1 s (at most 2 d allowed); temperature below "
      "2.5 °C on 2026-03-04 13:25 (none allowed); still allowed: 12 of 300 events above 6 g (at most 12 allowed)");
  EXPECT_THAT(JudgementSentence(judgement, verdict, profile, Settings(), true),
              testing::StartsWith("failed the limits \"Fragile\" in the filtered part: humidity"));
  EXPECT_EQ(JudgementSentence({}, verdict, profile, Settings()),
            "not judged by the limits \"Fragile\": no limit was chosen");
}

TEST(JudgementSentence, APassSaysByWhat) {
  TVerdict verdict = Example();
  verdict.above->count = 0;
  TLimitProfile profile;
  profile.name = "Fragile";
  verdict.sensors = {Sensor("RH"), Sensor("Temperature"), Sensor("L")};
  verdict.sensors[0].below.limit = 20;
  verdict.sensors[0].above = Out(60, kDay);
  verdict.sensors[1].below.source = TLimitSource::Default;
  verdict.sensors[1].above.limit = 40;
  verdict.sensors[2].min.reset();
  verdict.damaged = true;
  EXPECT_EQ(
      JudgementSentence({TJudgementOutcome::Passed, {{0, false, kDay, 2 * kDay, false}}, true, {TQuantity::Light}},
                        verdict, profile, Settings()),
      "passed the limits \"Fragile\" in what could be read: humidity above 60 %RH for 1 d (at most 2 d allowed); none "
      "of 300 events above 6 g; humidity never below 20 %RH; temperature never above 40 °C; no reading of light");
  verdict.damaged = false;
  for (const auto* name : {"A1", "A2", "A3", "A4"}) verdict.sensors.push_back(Sensor(name));
  EXPECT_THAT(JudgementSentence({TJudgementOutcome::Passed, {}, true, {}}, verdict, profile, Settings()),
              testing::EndsWith("; 2 more quantities never beyond their limits"));

  verdict.sensors.clear();
  TJudgement judgement{TJudgementOutcome::Passed, {}, false, {TQuantity::Light, TQuantity::A2}};
  TDisplaySettings settings = Settings();
  settings.analogNames[1] = "Strain Left";
  EXPECT_EQ(JudgementSentence(judgement, verdict, profile, settings),
            "passed the limits \"Fragile\": events are not judged; no reading of light, Strain Left");
  judgement = {TJudgementOutcome::NotJudged, {}, true, {TQuantity::Light}, true};
  EXPECT_EQ(JudgementSentence(judgement, verdict, profile, settings, true),
            "not judged by the limits \"Fragile\" in the filtered part: there is no event and no reading");
}

TEST(LimitsInForce, SayWhereEachComesFrom) {
  TDisplaySettings chosen = Settings();
  TMissionData mission;
  mission.bValid = true;
  mission.adxl_level_on = 4;
  EXPECT_FALSE(LimitsInForce(DisplayInForce(chosen, mission)));
  chosen.alarmActive = true;
  chosen.limits[static_cast<std::size_t>(TQuantity::Humidity)].max = 55;
  const auto source = [&](TQuantity quantity) {
    const TJudgedLimits limits = (*LimitsInForce(DisplayInForce(chosen, mission)))[static_cast<std::size_t>(quantity)];
    return std::pair(limits.minSource, limits.maxSource);
  };
  EXPECT_EQ(source(TQuantity::Acceleration), std::pair(TLimitSource::File, TLimitSource::File));
  EXPECT_EQ(source(TQuantity::Humidity), std::pair(TLimitSource::Default, TLimitSource::User));
  EXPECT_EQ(source(TQuantity::Battery), std::pair(TLimitSource::Default, TLimitSource::Default));
  chosen.accelerationFromFile = false;
  EXPECT_EQ(source(TQuantity::Acceleration), std::pair(TLimitSource::Default, TLimitSource::Default));
  chosen.limits[0].max = 5;
  EXPECT_EQ(source(TQuantity::Acceleration), std::pair(TLimitSource::Default, TLimitSource::User));
}

TEST(VerdictOf, TheShownMissionTakesItsDamageAndItsAlarm) {
  Read(ThreeEvents());
  TShownMission mission;
  TNoProgress progress;
  LoadKorvexFileData(mission.Data, mission.Events, mission.Sensors, {}, progress, mission.Tables);
  TDisplaySettings chosen = Settings();
  chosen.alarmActive = true;
  mission.Display = DisplayInForce(chosen, mission.Data);
  mission.Damage = "cut short";
  EXPECT_EQ(VerdictSentence(VerdictOf(mission), mission.Display),
            "all events exceed the trigger level of 2 g; set limits to judge; the highest peak, event 0, reached 20 g "
            "(20 g on "
            "X-pos) on 2023-07-16 06:00; 2 of 3 events clipped: their true peaks are higher; no sensor out of limits; "
            "the recording was not read whole, and only what could be read is judged");
}

class VerdictCells : public testing::Test {
 protected:
  VerdictCells() {
    FMission.Display = Settings();
    FVerdict.firstTime = kMoment;
    FVerdict.lastTime = kMoment + 10;
  }
  TVerdictCell Cell(TVerdictQuestion question) {
    return ::VerdictCells(FVerdict, FMission)[static_cast<std::size_t>(question)];
  }
  TShownMission FMission;
  TVerdict FVerdict = Example();
};

TEST_F(VerdictCells, GiveNumberNoteAndWhereTheyLead) {
  const TVerdictCell above = Cell(TVerdictQuestion::AboveAlarm);
  EXPECT_EQ(above.value + "|" + above.note, "12|of 300 events above 6 g");
  EXPECT_TRUE(above.isOut);
  EXPECT_EQ(above.answer, TVerdictAnswer::FilterAboveAlarm);
  const TVerdictCell out = Cell(TVerdictQuestion::OutOfLimits);
  EXPECT_EQ(out.value + "|" + out.note, "3 d 4 h|humidity above 60 %RH");
  EXPECT_TRUE(out.isOut);
  const TVerdictCell recorded = Cell(TVerdictQuestion::Recorded);
  EXPECT_EQ(recorded.value, "10 d");
  EXPECT_NE(recorded.note.find("complete"), std::string::npos);
  const auto span = WorstExcursion(FVerdict, FMission.Display);
  ASSERT_TRUE(span);
  EXPECT_LT(span->start, kMoment);
  EXPECT_GT(span->end, kMoment + 3 + 4.0 / 24);
}

TEST_F(VerdictCells, LimitsThatNobodyChoseRaiseNoAlarm) {
  FVerdict.above->limits.maxSource = TLimitSource::File;
  FVerdict.above->count = 300;
  FVerdict.sensors[0].above.source = TLimitSource::Default;
  FVerdict.worstSensor->byDefaultLimits = true;
  const TVerdictCell above = Cell(TVerdictQuestion::AboveAlarm);
  EXPECT_EQ(above.value, "");
  EXPECT_EQ(above.note, "all events exceed the trigger level of 6 g; set limits to judge");
  EXPECT_EQ(above.answer, TVerdictAnswer::EditLimits);
  EXPECT_FALSE(above.isOut);
  const TVerdictCell out = Cell(TVerdictQuestion::OutOfLimits);
  EXPECT_EQ(out.value + "|" + out.note, "default limits|3 d 4 h: humidity above 60 %RH (default limit)");
  EXPECT_FALSE(out.isOut);

  FVerdict.above.reset();
  for (const auto question : {TVerdictQuestion::AboveAlarm, TVerdictQuestion::OutOfLimits}) {
    EXPECT_EQ(Cell(question).value, "no limits");
    EXPECT_EQ(Cell(question).answer, TVerdictAnswer::EditLimits);
  }
}

TEST_F(VerdictCells, AnEmptyRecordingLeadsNowhere) {
  FVerdict = {};
  for (const TVerdictCell& cell : ::VerdictCells(FVerdict, FMission)) {
    EXPECT_TRUE(cell.answer == TVerdictAnswer::Nothing || cell.answer == TVerdictAnswer::EditLimits) << cell.value;
  }
  EXPECT_FALSE(WorstExcursion(FVerdict, FMission.Display));
}

TEST(FilterWords, ListEveryCondition) {
  TEventFilter filter;
  EXPECT_EQ(FilterWords(filter, Settings()), "");
  filter.ranges[0] = {6, std::nullopt};
  filter.ranges[1] = {std::nullopt, 2.5};
  filter.axes[0] = filter.axes[3] = true;
  filter.time = {kMoment, std::nullopt};
  filter.aboveAlarm = true;
  EXPECT_EQ(FilterWords(filter, Settings()),
            "Acceleration max from 6 g · ToT total to 2.5 ms · peak on X-pos or Y-neg · start from 2026-03-04 13:25:49 "
            "· above alarm");
}

}  // namespace
