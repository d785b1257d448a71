// The metrics of one shock event: time over threshold (ToT) and integral over threshold (IoT). A sample with an axis
// that is NaN has a magnitude that is NaN and fails every comparison: it neither begins a ToT interval nor ends one,
// but at the last sample, and it ends an IoT run.
#pragma once

#include <cmath>
#include <cstddef>

#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// Levels of the vector magnitude in g.
struct TThresholds {
  double totOn;   // a ToT interval begins at or above
  double totOff;  // and ends below
  double iot;     // what IoT integrates above
};

// The levels of the mission header. Kept on purpose: without one ToT uses 6 g and IoT 1 g.
TThresholds ThresholdsOf(const TMissionData& mission);

// sqrt(x² + y² + z²) in double, g.
inline double Magnitude(const TEventValue& value) {
  const double x = value.xvalue;
  const double y = value.yvalue;
  const double z = value.zvalue;
  return std::sqrt(x * x + y * y + z * z);
}

// Total time above the levels in ms; Max is the longest single interval. An interval that is open at the last sample
// ends there. An event without samples gives 0 and 0. Throws std::out_of_range for an index past the list.
double CalcTimeOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max);

// Trapezoidal integral of the magnitude above the level in g·ms, over pairs of neighbours that both lie above it; Max
// is the largest closed run of such pairs. An event with fewer than two samples gives 0 and 0.
double CalcIntegralOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max);
