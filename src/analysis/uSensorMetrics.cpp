#include "analysis/uSensorMetrics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

TSensorMetrics CalcSensorMetrics(const TSensor& sensor) {
  TSensorMetrics metrics;
  std::vector<double> intervals;
  intervals.reserve(sensor.Count());
  std::optional<double> before;
  for (const TSensorValue& value : sensor.Values()) {
    metrics.minTime = std::min(metrics.minTime, value.time);
    metrics.maxTime = std::max(metrics.maxTime, value.time);
    if (std::isnan(value.xvalue)) continue;
    if (before && value.time > *before) intervals.push_back(value.time - *before);
    before = value.time;
  }
  if (intervals.empty()) return metrics;
  const auto middle = intervals.begin() + static_cast<std::ptrdiff_t>((intervals.size() - 1) / 2);
  std::ranges::nth_element(intervals, middle);
  metrics.medianInterval = *middle;
  return metrics;
}
