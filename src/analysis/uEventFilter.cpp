#include "analysis/uEventFilter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

#include "base/uDateTime.h"

namespace {

constexpr double kNoBound = std::numeric_limits<double>::infinity();
constexpr float kOpen = std::numeric_limits<float>::infinity();

using TMask = std::vector<std::uint8_t>;  // bytes, so that a compiler makes many comparisons at once

// Takes away the rows whose value of a field does not pass, as NaN and so null never does.
template <class T, class TPasses>
void Keep(const TDataset& table, std::string_view field, std::span<const T> (TDataset::*values)(std::size_t) const,
          TMask& through, const TPasses& passes) {
  const auto column = table.FindField(field);
  if (!column) {
    std::ranges::fill(through, std::uint8_t{0});
    return;
  }
  const std::span<const T> all = (table.*values)(*column);
  for (std::size_t row = 0; row < through.size(); ++row) through[row] &= static_cast<std::uint8_t>(passes(all[row]));
}

// In kPeakAxes; past its end for an event without samples.
std::size_t PeakAxis(const TEvent& event) {
  const auto axis = static_cast<std::uint32_t>(event.MaxAxis[0] - 'X');  // far past Z for "None"
  return axis < 3 ? 2 * axis + (event.MaxAxis[2] == 'n' ? 1 : 0) : kPeakAxes.size();
}

void KeepAxes(const TEventFilter& filter, std::span<const TEvent> events, TMask& through) {
  std::array<std::uint8_t, kPeakAxes.size() + 1> wanted{};
  for (std::size_t axis = 0; axis < filter.axes.size(); ++axis) wanted[axis] = filter.axes[axis] ? 1 : 0;
  for (std::size_t row = 0; row < through.size(); ++row) through[row] &= wanted[PeakAxis(events[row])];
}

// Moments are shown rounded to this, so half a millisecond beside an end still counts.
double WholeMs(double dateTime) {
  return std::round(dateTime * kMsPerDay);
}

}  // namespace

std::vector<bool> EventsThrough(const TEventFilter& filter, const TDataset& table, const TEventList& events,
                                const std::optional<TLimits>& limits, const TDataset* analysis) {
  TMask through(table.RowCount(), 1);
  for (std::size_t i = 0; i < filter.ranges.size(); ++i) {
    const TRange& range = filter.ranges[i];
    const TDataset* source = i == kVelocityChangePlace ? analysis : &table;
    if (!range.IsSet() || source == nullptr) continue;
    const float from = range.from ? LimitAsSingle(*range.from) : -kOpen;
    const float to = range.to ? LimitAsSingle(*range.to) : kOpen;
    Keep(*source, kFilterQuantities[i].field, &TDataset::Singles, through,
         [from, to](float value) { return (value >= from) & (value <= to); });
  }
  if (filter.time.IsSet()) {
    const double from = filter.time.from ? WholeMs(*filter.time.from) - 0.5 : -kNoBound;
    const double to = filter.time.to ? WholeMs(*filter.time.to) + 0.5 : kNoBound;
    Keep(table, "Timestamp", &TDataset::DateTimes, through, [from, to](double time) {
      const double ms = time * kMsPerDay;
      return (ms >= from) & (ms < to);
    });
  }
  if (filter.aboveAlarm && limits) {
    Keep(table, kMetrics[0].field, &TDataset::Singles, through,
         [&limits](float value) { return IsOutside(*limits, value); });
  }
  if (std::ranges::find(filter.axes, true) != filter.axes.end()) KeepAxes(filter, events.Events(), through);
  return {through.begin(), through.end()};
}

THistogram HistogramOf(const TDataset& table, std::string_view field, std::size_t steps) {
  THistogram histogram{kNoBound, -kNoBound, {}};
  const auto column = table.FindField(field);
  if (!column) return {};
  const auto forEach = [&table, column](const auto& visit) {
    for (const float value : table.Singles(*column)) {
      if (std::isfinite(value)) visit(double{value});
    }
  };
  forEach([&histogram](double value) {
    histogram.min = std::min(histogram.min, value);
    histogram.max = std::max(histogram.max, value);
  });
  if (histogram.min > histogram.max) return {};
  histogram.counts.resize(histogram.min < histogram.max ? steps : 1);
  const double last = static_cast<double>(histogram.counts.size() - 1);
  const double scale = static_cast<double>(histogram.counts.size()) / (histogram.max - histogram.min);
  forEach([&histogram, scale, last](double value) {
    const double step = last > 0 ? std::min(std::floor((value - histogram.min) * scale), last) : 0;
    ++histogram.counts[static_cast<std::size_t>(step)];
  });
  return histogram;
}
