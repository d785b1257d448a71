// The metrics of one shock event: time over threshold (ToT) and integral over threshold (IoT). A sample with an axis
// that is NaN has a magnitude that is NaN and fails every comparison: it neither begins a ToT interval nor ends one,
// but at the last sample, and it ends an IoT run. Any thread.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "base/uTimeSpan.h"
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

// x² + y² + z² in double, g².
inline double SquaredMagnitude(const TEventValue& value) {
  const double x = value.xvalue;
  const double y = value.yvalue;
  const double z = value.zvalue;
  return x * x + y * y + z * z;
}
// Its root, g.
inline double Magnitude(const TEventValue& value) {
  return std::sqrt(SquaredMagnitude(value));
}

// All 0 for an event without samples, and IoT for one with a single sample.
struct TEventMetrics {
  double totTotal = 0;  // ms above the levels; an interval that is open at the last sample ends there
  double totMax = 0;    // ms, the longest interval
  double iotTotal = 0;  // g·ms, trapezoidal, over pairs of neighbours that both lie above the level
  double iotMax = 0;    // g·ms, the largest closed run of such pairs
  // ms since the mission's start, over the samples, whose times need not be in order; without samples minTime is above
  // maxTime.
  double minTime = std::numeric_limits<double>::infinity();
  double maxTime = -std::numeric_limits<double>::infinity();
  // Three neighbouring samples stand at one extreme of an axis, and that extreme reaches nine tenths of MaxSingle: the
  // sensor was at the end of its range, and the true peak is higher.
  bool clipped = false;
};

// Walks the samples once. Appends to `intervals`, where it is given, the recorded times in ms of the samples that begin
// and end each ToT interval, which need not be in order.
TEventMetrics CalcEventMetrics(const TEvent& event, const TThresholds& levels,
                               std::vector<TTimeSpan>* intervals = nullptr);

// The `clipped` of a part of an event: against the largest single-axis value of these samples.
bool IsClipped(std::span<const TEventValue> samples);

// One metric alone; Max is the largest of one interval or run. They throw std::out_of_range for an index past the list.
double CalcTimeOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max);
double CalcIntegralOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max);

// How many samples the functions above have walked in this program, for tests that count.
std::size_t WalkedSamples();
