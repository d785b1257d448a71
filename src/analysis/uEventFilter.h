// The event filter: conditions joined by "and". Pure functions over the shock event table, whose row i is event i of
// the list.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uDataset.h"
#include "model/uEvents.h"
#include "model/uQuantities.h"

// From … to …, both ends included; an end that is nothing is open.
struct TRange {
  std::optional<double> from, to;
  [[nodiscard]] bool IsSet() const { return from || to; }
  bool operator==(const TRange&) const = default;
};

// The peak axes as events name them.
inline constexpr std::array<std::string_view, 6> kPeakAxes = {"X-pos", "X-neg", "Y-pos", "Y-neg", "Z-pos", "Z-neg"};

struct TEventFilter {
  std::array<TRange, kMetrics.size()> ranges;  // of kMetrics; compared as singles, which the table holds
  std::array<bool, kPeakAxes.size()> axes{};   // any of these; none is no condition
  TRange time;                                 // of the event's start, a date-time each; to the millisecond
  bool aboveAlarm = false;                     // "Acceleration max" outside the limits in force

  [[nodiscard]] bool HasCondition() const { return *this != TEventFilter(); }
  bool operator==(const TEventFilter&) const = default;
};

// The events that the filter lets through, by row. A value that is null or NaN fails every condition on it. Without
// limits in force "above alarm" is no condition.
std::vector<bool> EventsThrough(const TEventFilter& filter, const TDataset& table, const TEventList& events,
                                const std::optional<TLimits>& limits);

// How often the values of a field occur, in equal steps from min to max. Null and values that are not finite are left
// out.
struct THistogram {
  double min = 0, max = 0;
  std::vector<std::size_t> counts;  // empty when there is no value; one step when all are the same
};
THistogram HistogramOf(const TDataset& table, std::string_view field, std::size_t steps);
