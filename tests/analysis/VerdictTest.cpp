#include "analysis/uVerdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "analysis/uMissionSummary.h"
#include "base/uDateTime.h"
#include "tests/support/uTestRecording.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double kStart = 45123.25;
const float kNaN = std::nanf("");

TLimits LimitsOf(TQuantity quantity) {
  return quantity == TQuantity::Acceleration ? TLimits{-6, 6}
         : quantity == TQuantity::Humidity   ? TLimits{30, 60}
                                             : TLimits{-4, 40};
}

TVerdictLimits UserLimits() {
  TVerdictLimits limits;
  for (std::size_t i = 0; i < limits.size(); ++i) limits[i] = {LimitsOf(static_cast<TQuantity>(i))};
  return limits;
}

TJudgedLimits& Of(TQuantity quantity, TVerdictLimits& limits) {
  return limits[static_cast<std::size_t>(quantity)];
}

double At(double ms) {
  return kStart + ms / kMsPerDay;
}

// A mission without a header, so IoT counts from 1 g; events stand a second apart.
struct TMission {
  TEventList events;
  TSensorList sensors;
  TMissionDatasets tables;

  TMission() { events.StartTime = kStart; }
  void AddEvent(const std::vector<float>& x) {
    double time = 1000.0 * static_cast<double>(events.Count());
    events.NewEvent();
    for (const float value : x) events.AddValues(time++, value, 0, 0);
  }
  void AddSensor(const std::string& name, const std::vector<std::pair<double, float>>& readings) {
    TSensor& sensor = sensors.Add(name);
    for (const auto& [ms, value] : readings) sensor.AddValues(ms, value);
  }
  TVerdict Judge(const std::optional<TVerdictLimits>& limits = UserLimits(), const TVerdictPart& part = {}) {
    TNoProgress progress;
    LoadKorvexFileData({}, events, sensors, {}, progress, tables);
    return JudgeMission(events, sensors, tables, limits, part);
  }
};

// Begin and duration of an excursion in ms, and its extreme.
std::vector<double> Told(const std::optional<TExcursion>& excursion) {
  if (!excursion) return {};
  return {std::round((excursion->begin - kStart) * kMsPerDay), excursion->duration, excursion->extreme};
}

TEST(VerdictOfEvents, CountsPeakIntensityClippedAndAboveTheLimits) {
  TMission mission;
  mission.AddEvent({0, 6, 0});                 // at the limit, which is inside
  mission.AddEvent({0, 2, -9, 9, 2, 0});       // the peak, first on the negative side
  mission.AddEvent({0, 8, 8, 8, 8, 8, 8, 0});  // clipped, and the most intense
  mission.AddEvent({0, 9, 0});                 // as high as the peak, but later
  mission.AddEvent({0, 8, 8, 8, 8, 8, 8, 0});  // as intense, but later
  const TVerdict verdict = mission.Judge();
  EXPECT_EQ(verdict.events, 5U);
  ASSERT_TRUE(verdict.peak && verdict.worst && verdict.above);
  EXPECT_EQ(verdict.peak->event, 1U);
  EXPECT_EQ(verdict.peak->value, 9);
  EXPECT_EQ(verdict.peak->axis, "X-neg");
  EXPECT_EQ(verdict.peak->time, At(1000));
  EXPECT_FALSE(verdict.peak->clipped);
  EXPECT_EQ(verdict.worst->event, 2U);
  EXPECT_EQ(verdict.worst->value, 35);
  EXPECT_TRUE(verdict.worst->clipped);
  EXPECT_THAT(verdict.clipped, ElementsAre(2, 4));
  EXPECT_EQ(verdict.above->count, 4U);
  EXPECT_EQ(verdict.firstTime, At(0));
  EXPECT_EQ(verdict.lastTime, At(4007));
}

TEST(VerdictOfEvents, APartHoldsWhatFilterAndTimeLetThrough) {
  TMission mission;
  for (const float height : {20.F, 5.F, 10.F, 7.F}) mission.AddEvent({0, height, 0});
  const TVerdict filtered = mission.Judge(UserLimits(), {.time = {}, .events = {false, true, true, true}});
  EXPECT_EQ(filtered.events, 3U);
  EXPECT_EQ(filtered.peak->event, 2U);
  EXPECT_EQ(filtered.above->count, 2U);
  const TVerdict both = mission.Judge(UserLimits(), {.time = {At(0), At(2000)}, .events = {false, true, true, true}});
  EXPECT_EQ(both.events, 2U);
  EXPECT_EQ(both.above->count, 1U);
  EXPECT_EQ(both.lastTime, At(3002)) << "what was recorded is said of the whole";
  const TVerdict none = mission.Judge(UserLimits(), {.time = {At(5000), At(6000)}, .events = {}});
  EXPECT_EQ(none.events, 0U);
  EXPECT_FALSE(none.peak || none.worst);
  EXPECT_EQ(none.above->count, 0U);
}

TEST(VerdictOfSensors, SumsExcursionsBeyondEachLimit) {
  struct TCase {
    const char* what;
    std::vector<std::pair<double, float>> readings;
    std::size_t above, below;
    double timeAbove, timeBelow;
    std::vector<double> first, longest;  // above
  };
  // The recording ends at 1000 ms; limits are 30 and 60.
  const std::vector<TCase> cases = {
      {"a reading counts until the next",
       {{0, 50}, {10, 65}, {20, 70}, {30, 60}},
       1,
       0,
       20,
       0,
       {10, 20, 70},
       {10, 20, 70}},
      {"the last one a median interval",
       {{0, 50}, {10, 50}, {30, 50}, {40, 61}},
       1,
       0,
       10,
       0,
       {40, 10, 61},
       {40, 10, 61}},
      {"until the recording ends", {{980, 50}, {990, 50}, {1000, 61}}, 1, 0, 0, 0, {1000, 0, 61}, {1000, 0, 61}},
      {"a gap ends an excursion after five median intervals",
       {{0, 61}, {10, 62}, {20, 63}, {200, 64}, {210, 50}},
       2,
       0,
       80,
       0,
       {0, 70, 63},
       {0, 70, 63}},
      {"the longer one comes later",
       {{0, 61}, {10, 50}, {20, 62}, {30, 63}, {40, 50}},
       2,
       0,
       30,
       0,
       {0, 10, 61},
       {20, 20, 63}},
      {"five intervals are no gap", {{0, 61}, {10, 62}, {60, 63}, {70, 50}}, 1, 0, 70, 0, {0, 70, 63}, {0, 70, 63}},
      {"NaN is no reading",
       {{0, kNaN}, {5, 61}, {10, kNaN}, {15, 62}, {25, 50}},
       1,
       0,
       20,
       0,
       {5, 20, 62},
       {5, 20, 62}},
      {"one reading has no length", {{5, 61}}, 1, 0, 0, 0, {5, 0, 61}, {5, 0, 61}},
      {"from above to below",
       {{0, 61}, {10, 29}, {20, 20}, {30, 62}, {40, 50}},
       2,
       1,
       20,
       20,
       {0, 10, 61},
       {0, 10, 61}},
      {"a step back in time ends an excursion",
       {{100, 61}, {110, 62}, {50, 63}, {60, 64}, {70, 50}},
       2,
       0,
       30,
       0,
       {100, 10, 62},
       {50, 20, 64}},
      {"readings of one time", {{0, 61}, {0, 62}, {10, 50}}, 1, 0, 10, 0, {0, 10, 62}, {0, 10, 62}},
      {"at the limits", {{0, 30}, {10, 60}, {20, 30}}, 0, 0, 0, 0, {}, {}},
      {"no reading", {}, 0, 0, 0, 0, {}, {}},
      {"nothing but NaN", {{0, kNaN}, {10, kNaN}}, 0, 0, 0, 0, {}, {}},
  };
  for (const TCase& c : cases) {
    SCOPED_TRACE(c.what);
    TMission mission;
    mission.AddSensor("Marker", {{0, 1}, {1000, 1}});
    mission.AddSensor("RH", c.readings);
    const TVerdict verdict = mission.Judge();
    ASSERT_EQ(verdict.sensors.size(), 1U);
    const auto& [sensor, quantity, min, max, below, above] = verdict.sensors[0];
    EXPECT_EQ(sensor, 1U);
    EXPECT_EQ(above.excursions, c.above);
    EXPECT_EQ(below.excursions, c.below);
    EXPECT_EQ(above.timeOut, c.timeAbove);
    EXPECT_EQ(below.timeOut, c.timeBelow);
    EXPECT_EQ(Told(above.first), c.first);
    EXPECT_EQ(Told(above.longest), c.longest);
    EXPECT_EQ(verdict.worstSensor.has_value(), c.above + c.below > 0);
  }
}

TEST(VerdictOfSensors, ASpanCutsWhatLiesOutside) {
  TMission mission;
  mission.AddSensor("RH", {{0, 61}, {10, 70}, {20, 62}, {30, 50}, {40, 65}, {50, 20}});
  const struct {
    double from, to, above, below;
    std::size_t excursions;
    float min, max;
  } cases[] = {{5, 45, 25 + 5, 0, 2, 50, 70},
               {15, 25, 10, 0, 1, 62, 70},
               {31, 39, 0, 0, 0, 50, 50},
               {39.9, 40.1, 0.1, 0, 1, 50, 65},
               {45, 60, 5, 0, 1, 20, 65}};
  for (const auto& c : cases) {
    const TVerdict verdict = mission.Judge(UserLimits(), {.time = {At(c.from), At(c.to)}, .events = {}});
    const TSensorVerdict& sensor = verdict.sensors[0];
    EXPECT_NEAR(sensor.above.timeOut, c.above, 0.01) << c.from;
    EXPECT_NEAR(sensor.below.timeOut, c.below, 0.01) << c.from;
    EXPECT_EQ(sensor.above.excursions, c.excursions) << c.from;
    EXPECT_EQ(sensor.min->value, c.min) << c.from;
    EXPECT_EQ(sensor.max->value, c.max) << c.from;
  }
  EXPECT_FALSE(mission.Judge(UserLimits(), {.time = {At(100), At(200)}, .events = {}}).sensors[0].min);
}

TEST(VerdictOfSensors, AReadingThatEndsWhereThePartBeginsIsNotInItAndOneAtItsEndIs) {
  constexpr double kStep = kMsPerDay / 1024;  // a date-time holds it to the last bit
  TMission mission;
  mission.AddSensor("RH", {{0, 61}, {kStep, 50}, {2 * kStep, 20}, {3 * kStep, 50}});
  const TSensorVerdict sensor =
      mission.Judge(UserLimits(), {.time = {At(kStep), At(2 * kStep)}, .events = {}}).sensors[0];
  EXPECT_FALSE(sensor.above.IsOut());
  EXPECT_EQ(sensor.max->value, 50);
  EXPECT_EQ(sensor.below.excursions, 1U);
  EXPECT_EQ(sensor.below.timeOut, 0);
}

TEST(VerdictOfSensors, TheLongestOutLeadsAndDefaultLimitsNeverDo) {
  TMission mission;
  mission.AddSensor("Pressure", {{0, 0}, {10, 0}, {100, 0}});                            // never out
  mission.AddSensor("RH", {{0, 70}, {10, 50}, {20, 20}, {30, 50}, {40, 50}, {50, 50}});  // above 10 ms, below 10 ms
  mission.AddSensor("Temperature", {{0, 50}, {10, 50}, {20, 20}, {30, 20}});             // above 20 ms
  mission.AddSensor("Temperature p", {{0, 50}, {30, 20}, {60, 20}});                     // above 30 ms
  TVerdictLimits limits = UserLimits();
  const auto worst = [&] {
    const TVerdict verdict = mission.Judge(limits);
    EXPECT_EQ(verdict.SensorsOut(true) + verdict.SensorsOut(false), 3U);
    const TWorstSensor& w = verdict.worstSensor.value();
    return std::tuple(verdict.sensors[w.index].quantity->sensorName, verdict.SensorsOut(w.byDefaultLimits),
                      w.byDefaultLimits, w.timeOut);
  };
  EXPECT_EQ(worst(), std::tuple("Temperature p", 3U, false, 30));
  Of(TQuantity::Temperature, limits).maxSource = TLimitSource::Default;
  EXPECT_EQ(worst(), std::tuple("RH", 1U, false, 20)) << "of equally long ones the first of the list";
  Of(TQuantity::Humidity, limits).minSource = TLimitSource::Default;
  EXPECT_EQ(worst(), std::tuple("RH", 1U, false, 10));
  Of(TQuantity::Humidity, limits).maxSource = TLimitSource::Default;
  EXPECT_EQ(worst(), std::tuple("Temperature p", 3U, true, 30));
}

TEST(Verdict, WithoutLimitsItGivesExtremesOnly) {
  TMission mission;
  mission.AddEvent({0, 20, 0});
  mission.AddSensor("RH", {{0, 50}, {10, 99}, {20, 1}, {30, kNaN}, {40, 99}, {50, 1}});
  const TVerdict verdict = mission.Judge(std::nullopt);
  EXPECT_FALSE(verdict.above || verdict.worstSensor);
  EXPECT_EQ(verdict.peak->value, 20);
  EXPECT_EQ(verdict.sensors[0].min->value, 1);
  EXPECT_EQ(verdict.sensors[0].min->time, At(20));
  EXPECT_EQ(verdict.sensors[0].max->value, 99);
  EXPECT_EQ(verdict.sensors[0].max->time, At(10));
}

TEST(Verdict, OfAnEmptyRecordingIsEmpty) {
  const TVerdict verdict = TMission().Judge();
  EXPECT_EQ(verdict.events, 0U);
  EXPECT_FALSE(verdict.peak || verdict.worst || verdict.firstTime || verdict.worstSensor);
  EXPECT_THAT(verdict.sensors, IsEmpty());
}

// A recording with gaps, marks and NaN, judged anew from what was written: every millisecond of the time is asked
// whether the reading that holds then is out.
class VerdictByTheMillisecond : public testing::TestWithParam<unsigned> {
 protected:
  static constexpr std::size_t kSensors = 3;
  static constexpr int kEndMs = 4000;
  struct TOut {
    double time = 0, longest = 0;
    std::size_t excursions = 0;
    bool operator==(const TOut&) const = default;
  };
  // Even times, so that odd ends of a part fall on no reading.
  struct TReading {
    int ms;
    float value;
  };

  VerdictByTheMillisecond() {
    std::vector<TTestRecord> records;
    for (int ms = 0; ms < kEndMs - 500; ms += Step()) {
      TTestRecord record{static_cast<double>(ms), {kNone, kNone, kNone}};
      for (std::size_t i = 0; i < kSensors; ++i) record.readings.push_back(Reading(i, ms));
      records.push_back(record);
    }
    // The end of the recording, without a reading of the three.
    records.push_back({kEndMs, {kNone, kNone, kNone, kNone, kNone, kNone, 1}});
    for (TTestRecord& record : records) record.readings.resize(7, kNone);
    records.back().readings.back() = 1;
    Read(TTestRecording()
             .Creator()
             .StartTime(kStart)
             .Channels({"ACC x", "ACC y", "ACC z", "T", "RH", "A1", "Marker"})
             .Data(records));
    TNoProgress progress;
    LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, FTables);
  }

  int Random(int from, int to) { return std::uniform_int_distribution(from, to)(FRandom); }
  int Step() { return 2 * (Random(0, 30) == 0 ? Random(40, 90) : Random(3, 5)); }
  float Reading(std::size_t sensor, int ms) {
    const int what = Random(0, 20);
    if (what == 0) return kNone;
    if (what == 1) return kOtherNaN;
    if (Random(0, 4) == 0) FLevels[sensor] = static_cast<float>(Random(-20, 90));
    FReadings[sensor].push_back({ms, FLevels[sensor]});
    return FLevels[sensor];
  }

  static int Median(const std::vector<TReading>& readings) {
    std::vector<int> intervals;
    for (std::size_t i = 1; i < readings.size(); ++i) intervals.push_back(readings[i].ms - readings[i - 1].ms);
    std::ranges::sort(intervals);
    return intervals.empty() ? 0 : intervals[(intervals.size() - 1) / 2];
  }
  template <class TIsOut>
  static TOut WalkTime(const std::vector<TReading>& readings, int from, int to, const TIsOut& isOut) {
    TOut out;
    double run = 0;
    const int median = Median(readings);
    for (int ms = from; ms < to; ++ms) {
      const auto next = std::ranges::upper_bound(readings, ms, {}, &TReading::ms);
      const int holds = median * (next == readings.end() ? 1 : 5);
      const bool counts = next != readings.begin() && ms < (next - 1)->ms + holds && isOut((next - 1)->value);
      if (counts && run == 0) ++out.excursions;
      run = counts ? run + 1 : 0;
      out.time += counts ? 1 : 0;
      out.longest = std::max(out.longest, run);
    }
    return out;
  }
  static TOut Rounded(const TLimitVerdict& limit) {
    return {std::round(limit.timeOut), limit.longest ? std::round(limit.longest->duration) : 0, limit.excursions};
  }

  std::mt19937 FRandom{GetParam()};
  std::array<float, kSensors> FLevels{20, 50, 20};
  std::array<std::vector<TReading>, kSensors> FReadings;
  TMissionDatasets FTables;
};

TEST_P(VerdictByTheMillisecond, AgreesForTheWholeAndForAPart) {
  for (const auto& [from, to] : {std::pair(0, kEndMs), std::pair(701, 2903)}) {
    const bool whole = from == 0;
    const TVerdict verdict = JudgeMission(EventList, SensorList, FTables, UserLimits(),
                                          {.time = whole ? TRange() : TRange{At(from), At(to)}, .events = {}});
    ASSERT_EQ(verdict.sensors.size(), kSensors);
    for (std::size_t i = 0; i < kSensors; ++i) {
      const TLimits limits = LimitsOf(*verdict.sensors[i].quantity->quantity);
      const TOut below = WalkTime(FReadings[i], from, to, [&limits](float value) { return IsBelow(limits, value); });
      const TOut above = WalkTime(FReadings[i], from, to, [&limits](float value) { return IsAbove(limits, value); });
      EXPECT_GT(below.excursions + above.excursions, 0U);
      EXPECT_EQ(Rounded(verdict.sensors[i].below), below) << verdict.sensors[i].quantity->sensorName << from;
      EXPECT_EQ(Rounded(verdict.sensors[i].above), above) << verdict.sensors[i].quantity->sensorName << from;
    }
  }
}

TEST_P(VerdictByTheMillisecond, AndWithTheSummary) {
  const TVerdict verdict = JudgeMission(EventList, SensorList, FTables, UserLimits());
  const TMissionSummary summary = SummarizeMission(EventList, FTables.Metrics, SensorList);
  EXPECT_EQ(verdict.firstTime, summary.firstTime);
  EXPECT_EQ(verdict.lastTime, summary.lastTime);
  for (const TSensorVerdict& sensor : verdict.sensors) {
    EXPECT_EQ(sensor.min->value, summary.sensors[sensor.sensor].minimum);
    EXPECT_EQ(sensor.max->value, summary.sensors[sensor.sensor].maximum);
  }
}

INSTANTIATE_TEST_SUITE_P(Recordings, VerdictByTheMillisecond, testing::Range(1U, 13U));

}  // namespace
