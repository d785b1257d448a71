// The event filter: conditions joined by "and". Pure functions over the shock event table, whose row i is event i of
// the list.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uAnalysisTable.h"
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

// What a range limits: kMetrics, and at the end the velocity change, which only the shock analysis has.
struct TFilterQuantity {
  std::string_view field, name, unit;
};
inline constexpr std::size_t kVelocityChangePlace = kMetrics.size();
inline constexpr auto kFilterQuantities = [] {
  std::array<TFilterQuantity, kMetrics.size() + 1> all;
  for (std::size_t i = 0; i < kMetrics.size(); ++i)
    all[i] = {kMetrics[i].field, kMetrics[i].field, UnitInWords(kMetrics[i])};
  all[kVelocityChangePlace] = {kVelocityChangeField, "Velocity change", "m/s"};
  return all;
}();

struct TEventFilter {
  std::array<TRange, kFilterQuantities.size()> ranges;  // of these; compared as singles, which the tables hold
  std::array<bool, kPeakAxes.size()> axes{};            // any of these; none is no condition
  TRange time;                                          // of the event's start, a date-time each; to the millisecond
  bool aboveAlarm = false;                              // "Acceleration max" outside the limits in force

  [[nodiscard]] bool HasCondition() const { return *this != TEventFilter(); }
  [[nodiscard]] bool NeedsAnalysis() const { return ranges[kVelocityChangePlace].IsSet(); }
  bool operator==(const TEventFilter&) const = default;
};

// The events that the filter lets through, by row. A value that is null or NaN fails every condition on it. Without
// limits in force "above alarm" is no condition, without the table of the shock analysis a range of the velocity change
// is none.
std::vector<bool> EventsThrough(const TEventFilter& filter, const TDataset& table, const TEventList& events,
                                const std::optional<TLimits>& limits, const TDataset* analysis);

// How often the values of a field occur, in equal steps from min to max. Null and values that are not finite are left
// out.
struct THistogram {
  double min = 0, max = 0;
  std::vector<std::size_t> counts;  // empty when there is no value; one step when all are the same
};
THistogram HistogramOf(const TDataset& table, std::string_view field, std::size_t steps);
