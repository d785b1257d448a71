#include "analysis/uShockMetrics.h"

#include <gtest/gtest.h>

#include "analysis/uDewPoint.h"

namespace {

struct TMetrics {
  double totTotal, totMax, iotTotal, iotMax;
};

// The magnitudes stand on x, a millisecond apart, 100 ms into the mission.
TMetrics MetricsOf(const std::vector<float>& magnitudes, const TThresholds& levels) {
  TEventList events;
  events.NewEvent();
  double time = 100;
  for (const float magnitude : magnitudes) events.AddValues(time++, magnitude, 0, 0);
  TMetrics metrics{};
  metrics.totTotal = CalcTimeOverThreshold(events, 0, levels, metrics.totMax);
  metrics.iotTotal = CalcIntegralOverThreshold(events, 0, levels, metrics.iotMax);
  return metrics;
}

constexpr TThresholds kLevels = {4, 3, 4};

TEST(TimeOverThreshold, SumsIntervalsFromSwitchOnToBelowSwitchOff) {
  const TMetrics m = MetricsOf({1, 5, 3, 2, 4, 9, 9, 9, 1, 5}, kLevels);
  EXPECT_EQ(m.totTotal, (3 - 1) + (8 - 4));
  EXPECT_EQ(m.totMax, 4);
}

TEST(TimeOverThreshold, AnIntervalOpenAtTheLastSampleEndsThereAndOneThatBeginsThereIsNothing) {
  EXPECT_EQ(MetricsOf({1, 5, 5, 5}, kLevels).totTotal, 2);
  EXPECT_EQ(MetricsOf({1, 1, 1, 5}, kLevels).totTotal, 0);
  EXPECT_EQ(MetricsOf({5}, kLevels).totTotal, 0);
}

TEST(TimeOverThreshold, TheSampleThatEndsAnIntervalBeginsNoOther) {
  // With the off level above the on level every second sample ends what the one before began.
  EXPECT_EQ(MetricsOf({5, 5, 5, 5, 1}, {4, 6, 4}).totTotal, 2);
}

TEST(IntegralOverThreshold, TakesPairsThatBothLieAbove) {
  const TMetrics m = MetricsOf({1, 5, 6, 8, 2, 5, 5, 4, 1}, kLevels);
  EXPECT_EQ(m.iotTotal, 1.5 + 3 + 1);
  EXPECT_EQ(m.iotMax, 4.5);
}

TEST(IntegralOverThreshold, RunReachingTheLastPairIsLeftOutOfTheMaximum) {
  const TMetrics m = MetricsOf({1, 5, 5, 1, 9, 9, 9}, kLevels);
  EXPECT_EQ(m.iotTotal, 1 + 10);
  EXPECT_EQ(m.iotMax, 1);
  EXPECT_EQ(MetricsOf({5, 5}, kLevels).iotMax, 0);
}

TEST(IntegralOverThreshold, ASampleAtTheLevelOrAloneGivesNothing) {
  EXPECT_EQ(MetricsOf({4, 9, 4}, kLevels).iotTotal, 0);
  EXPECT_EQ(MetricsOf({9}, kLevels).iotTotal, 0);
}

TEST(Thresholds, WithoutAHeaderTimeAndIntegralHaveDifferentLevels) {
  const TMetrics m = MetricsOf({5, 5, 5}, ThresholdsOf({}));
  EXPECT_EQ(m.totTotal, 0);  // 6 g
  EXPECT_EQ(m.iotTotal, 8);  // 1 g
  TMissionData mission;
  mission.bValid = true;
  mission.adxl_level_on = 5;
  mission.adxl_level_off = 2;
  const TMetrics own = MetricsOf({5, 6, 6, 3, 1}, ThresholdsOf(mission));
  EXPECT_EQ(own.totTotal, 4);
  EXPECT_EQ(own.iotTotal, 1);
}

TEST(DewPoint, FollowsTheLoggersFormula) {
  // Worked out with 40 decimal digits from v = RH·(61.1·7.5·T/(T+237.7))/100 and (237.7·ln v − 430.22)/(19.08 − ln v).
  EXPECT_FLOAT_EQ(DewPoint(20, 50), 15.672896F);
  EXPECT_EQ(RoundedDewPoint(20, 50), 15.67F);
  EXPECT_EQ(RoundedDewPoint(1, 1), -59.47F);
  for (const auto& [temperature, humidity] : {std::pair(0.0F, 50.0F), {-5.0F, 50.0F}, {20.0F, 0.0F}}) {
    EXPECT_TRUE(std::isnan(DewPoint(temperature, humidity)));
  }
}

}  // namespace
