#include "analysis/uShockMetrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using testing::ElementsAre;
using testing::Pair;

namespace {

// The magnitudes stand on x, a millisecond apart, 100 ms into the mission.
TEventList EventOf(const std::vector<float>& magnitudes) {
  TEventList events;
  events.NewEvent();
  double time = 100;
  for (const float magnitude : magnitudes) events.AddValues(time++, magnitude, 0, 0);
  return events;
}

TEventMetrics MetricsOf(const std::vector<float>& magnitudes, const TThresholds& levels) {
  return CalcEventMetrics(EventOf(magnitudes).GetItem(0), levels);
}

constexpr TThresholds kLevels = {4, 3, 4};

TEST(TimeOverThreshold, SumsIntervalsFromSwitchOnToBelowSwitchOff) {
  const TEventMetrics m = MetricsOf({1, 5, 3, 2, 4, 9, 9, 9, 1, 5}, kLevels);
  EXPECT_EQ(m.totTotal, (3 - 1) + (8 - 4));
  EXPECT_EQ(m.totMax, 4);
}

TEST(TimeOverThreshold, GivesTheRecordedTimesOfItsIntervals) {
  const TEventList events = EventOf({1, 5, 3, 2, 4, 9, 9, 1, 1, 5, 5});
  std::vector<TTimeSpan> intervals;
  CalcEventMetrics(events.GetItem(0), kLevels, &intervals);
  EXPECT_THAT(intervals, ElementsAre(TTimeSpan{101, 103}, TTimeSpan{104, 107}, TTimeSpan{109, 110}));
}

TEST(TimeOverThreshold, AnIntervalOpenAtTheLastSampleEndsThereButNoneBeginsThere) {
  EXPECT_EQ(MetricsOf({1, 5, 5, 5}, kLevels).totTotal, 2);
  EXPECT_EQ(MetricsOf({1, 1, 1, 5}, kLevels).totTotal, 0);
  EXPECT_EQ(MetricsOf({5}, kLevels).totTotal, 0);
}

TEST(TimeOverThreshold, TheSampleThatEndsAnIntervalBeginsNoOther) {
  // With the off level above the on level every second sample ends what the one before began.
  EXPECT_EQ(MetricsOf({5, 5, 5, 5, 1}, {4, 6, 4}).totTotal, 2);
}

TEST(IntegralOverThreshold, TakesPairsThatBothLieAbove) {
  const TEventMetrics m = MetricsOf({1, 5, 6, 8, 2, 5, 5, 4, 1}, kLevels);
  EXPECT_EQ(m.iotTotal, 1.5 + 3 + 1);
  EXPECT_EQ(m.iotMax, 4.5);
}

TEST(IntegralOverThreshold, RunReachingTheLastPairIsLeftOutOfTheMaximum) {
  const TEventMetrics m = MetricsOf({1, 5, 5, 1, 9, 9, 9}, kLevels);
  EXPECT_EQ(m.iotTotal, 1 + 10);
  EXPECT_EQ(m.iotMax, 1);
  EXPECT_EQ(MetricsOf({5, 5}, kLevels).iotMax, 0);
}

TEST(IntegralOverThreshold, ASampleAtTheLevelOrAloneGivesNothing) {
  EXPECT_EQ(MetricsOf({4, 9, 4}, kLevels).iotTotal, 0);
  EXPECT_EQ(MetricsOf({9}, kLevels).iotTotal, 0);
}

TEST(Clipping, NeedsThreeNeighboursAtTheExtremeOfASideNearTheEventsLargest) {
  const float nan = std::nanf("");
  const struct {
    std::vector<float> x, y;
    bool clipped;
  } cases[] = {{{0, 9, 9, 9, 0}, {}, true},
               {{0, 9, 9, 0, 9}, {}, false},
               {{0, -9, -9, -9}, {}, true},
               {{5, 5, 5, 9}, {}, false},
               {{9, 1, 9, 9, 9}, {}, true},
               {{9, 9, -9, 9}, {}, false},
               {{9, 9, nan, 9}, {}, false},
               {{0, 0, 0}, {}, false},
               {{nan, nan, nan}, {}, false},
               // The other axis at rest, and at the end of a range that is a little smaller.
               {{0, 9, 0}, {0.1F, 0.1F, 0.1F}, false},
               {{0, 10, 0}, {-9.5F, -9.5F, -9.5F}, true},
               {{9.9F, -10, 9.9F, 9.9F, 9.9F}, {}, true}};
  for (const auto& c : cases) {
    TEventList events;
    events.NewEvent();
    for (std::size_t i = 0; i < c.x.size(); ++i) {
      events.AddValues(static_cast<double>(i), c.x[i], c.y.empty() ? 0 : c.y[i], 0);
    }
    EXPECT_EQ(CalcEventMetrics(events.GetItem(0), kLevels).clipped, c.clipped) << testing::PrintToString(c.x);
  }
}

TEST(Thresholds, WithoutAHeaderTimeAndIntegralHaveDifferentLevels) {
  const TEventMetrics m = MetricsOf({5, 5, 5}, ThresholdsOf({}));
  EXPECT_EQ(m.totTotal, 0);  // 6 g
  EXPECT_EQ(m.iotTotal, 8);  // 1 g
  TMissionData mission;
  mission.bValid = true;
  mission.adxl_level_on = 5;
  mission.adxl_level_off = 2;
  const TEventMetrics own = MetricsOf({5, 6, 6, 3, 1}, ThresholdsOf(mission));
  EXPECT_EQ(own.totTotal, 4);
  EXPECT_EQ(own.iotTotal, 1);
}

TEST(EventMetrics, GiveOneMetricAloneToo) {
  const TEventList events = EventOf({1, 5, 3, 2, 9, 9, 1});
  double max = -1;
  EXPECT_EQ(CalcTimeOverThreshold(events, 0, kLevels, max), 4);
  EXPECT_EQ(max, 2);
  EXPECT_EQ(CalcIntegralOverThreshold(events, 0, kLevels, max), 5);
  EXPECT_EQ(max, 5);
  EXPECT_THROW(CalcTimeOverThreshold(events, 1, kLevels, max), std::out_of_range);
}

}  // namespace
