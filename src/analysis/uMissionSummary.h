// The figures that sum up a mission in a few lines. Pure functions.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uShockMetrics.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"

struct TSensorSummary {
  std::string name;
  std::string_view unit;  // empty where it depends on what is connected
  std::size_t count = 0;
  std::optional<float> minimum, maximum;  // over the readings that are numbers
};

struct TMissionSummary {
  std::size_t events = 0;
  std::size_t samples = 0;                 // of all events
  std::optional<std::size_t> peakEvent;    // the first event with the maximum of Max
  double totTotal = 0;                     // ms, sum over the events
  double iotTotal = 0;                     // g·ms, sum over the events
  double maxIot = 0;                       // g·ms, of one event
  std::optional<std::size_t> mostIntense;  // the first event with the maximum IoT total, if any is above 0
  // The earliest and latest time of a sample or reading, date-times; nothing when there is none.
  std::optional<double> firstTime, lastTime;
  std::vector<TSensorSummary> sensors;  // in the order of the list
};

// `metrics` are those of the events, in the order of the list.
TMissionSummary SummarizeMission(const TEventList& events, std::span<const TEventMetrics> metrics,
                                 const TSensorList& sensors);

// Events that peak on one axis, or begin on one day.
struct TEventGroup {
  std::string name;
  std::size_t events = 0;
  std::size_t above = 0;                      // "Acceleration max" outside the limits; 0 without limits
  std::optional<std::size_t> peakEvent = {};  // the first event with the maximum of Max; nothing without events
  double maxIot = 0;                          // g·ms, the maximum IoT total of one event
};

struct TEventGroups {
  std::vector<TEventGroup> byAxis;  // "X", "Y", "Z", and "none" where an event peaks on no axis
  std::vector<TEventGroup> byDay;   // the days with events, in their order, by the date in the short date format
};

// Of the events that `counts` marks, by row; empty: all.
TEventGroups GroupEvents(const TEventList& events, std::span<const TEventMetrics> metrics,
                         const std::optional<TLimits>& limits = std::nullopt, const std::vector<bool>& counts = {});
