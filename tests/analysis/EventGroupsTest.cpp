#include <gtest/gtest.h>

#include <tuple>

#include "analysis/uMissionFigures.h"

namespace {

constexpr double kStart = 46000.75;  // 2025-12-09 18:00
constexpr double kHour = 3600000;    // ms

// Events of one sample an hour apart.
TEventList Events(const std::vector<std::array<float, 3>>& samples) {
  TEventList events;
  events.StartTime = kStart;
  double time = 0;
  for (const auto& [x, y, z] : samples) {
    events.NewEvent();
    events.AddValues(time, x, y, z);
    time += kHour;
  }
  return events;
}

std::vector<TEventMetrics> Metrics(std::initializer_list<double> iots) {
  std::vector<TEventMetrics> metrics;
  for (const double iot : iots) metrics.push_back({.iotTotal = iot});
  return metrics;
}

TEST(EventGroups, AreByAxisWhateverItsSignAndByDay) {
  const TEventList events = Events({{-5, 0, 0}, {6, 0, 0}, {0, 7, 0}, {6, 0, 0}, {0, 0, 0}, {0, 0, 8}, {0, -9, 0}});
  const auto metrics = Metrics({1, 2, 3, 9, 0, 4, 5});
  const TEventGroups groups = GroupEvents(events, metrics, TLimits{-6, 6.5});
  const auto told = [](const TEventGroup& group) {
    return std::tuple(group.name, group.events, group.above, group.peakEvent.value_or(99), group.maxIot);
  };
  ASSERT_EQ(groups.byAxis.size(), 4U);
  EXPECT_EQ(told(groups.byAxis[0]), std::tuple("X", 3U, 0U, 1U, 9.0)) << "the first of equal peaks";
  EXPECT_EQ(told(groups.byAxis[1]), std::tuple("Y", 2U, 2U, 6U, 5.0));
  EXPECT_EQ(told(groups.byAxis[2]), std::tuple("Z", 1U, 1U, 5U, 4.0));
  EXPECT_EQ(told(groups.byAxis[3]), std::tuple("none", 1U, 0U, 4U, 0.0));
  ASSERT_EQ(groups.byDay.size(), 2U);
  EXPECT_EQ(told(groups.byDay[0]), std::tuple("2025-12-09", 6U, 2U, 5U, 9.0));
  EXPECT_EQ(told(groups.byDay[1]), std::tuple("2025-12-10", 1U, 1U, 6U, 5.0)) << "begins at midnight";
  const auto formats = [](TQuantity) { return "0.##"; };
  EXPECT_EQ(GroupFigures(groups, events, formats).back().text, "1 event, peak up to 9 g in event 6, IoT up to 5 g·ms");
}

TEST(EventGroups, OnlyMarkedEventsCountAndAStartWithoutADateIsAGroup) {
  TEventList events = Events({{5, 0, 0}, {6, 0, 0}});
  events.StartTime = std::numeric_limits<double>::quiet_NaN();
  const TEventGroups groups = GroupEvents(events, Metrics({1, 2}), std::nullopt, {true, false});
  ASSERT_EQ(groups.byAxis.size(), 3U);
  EXPECT_EQ(groups.byAxis[0].events, 1U);
  EXPECT_EQ(groups.byAxis[0].peakEvent, 0U);
  EXPECT_EQ(groups.byAxis[1].peakEvent, std::nullopt);
  EXPECT_EQ(groups.byDay.size(), 1U);
  EXPECT_EQ(GroupFigures(GroupEvents({}, {}), {}, {}).size(), 0U);
}

}  // namespace
