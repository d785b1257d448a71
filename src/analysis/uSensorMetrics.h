// When a sensor was read: computed once, while the tables are filled. Any thread.
#pragma once

#include <limits>

#include "model/uOtherSensors.h"

// Readings that are farther apart than so many median intervals have a gap between them.
inline constexpr double kGapIntervals = 5;

struct TSensorMetrics {
  // ms between neighbouring readings that are numbers, the median of the intervals above 0, the lower of two; 0 when
  // there is no such interval.
  double medianInterval = 0;
  // ms since the mission's start, over all readings, whose times need not be in order; without one minTime is above
  // maxTime.
  double minTime = std::numeric_limits<double>::infinity();
  double maxTime = -std::numeric_limits<double>::infinity();
};

TSensorMetrics CalcSensorMetrics(const TSensor& sensor);
