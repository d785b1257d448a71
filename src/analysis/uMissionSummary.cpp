#include "analysis/uMissionSummary.h"

#include <algorithm>
#include <cmath>

#include "analysis/uShockMetrics.h"
#include "base/uDateTime.h"
#include "model/uBlockTypes.h"

namespace {

TSensorSummary SummarizeSensor(const TSensor& sensor) {
  const auto* known = std::ranges::find(kKnownChannels, sensor.Name, &TKnownChannel::sensorName);
  TSensorSummary summary{sensor.Name, known == std::end(kKnownChannels) ? "" : known->unit, sensor.Count(), {}, {}};
  for (const TSensorValue& value : sensor.Values()) {
    if (std::isnan(value.xvalue)) continue;
    if (!summary.minimum || value.xvalue < *summary.minimum) summary.minimum = value.xvalue;
    if (!summary.maximum || value.xvalue > *summary.maximum) summary.maximum = value.xvalue;
  }
  return summary;
}

// Times need not be in order, so each counts.
template <class TValue>
void Widen(std::span<const TValue> values, std::optional<double>& first, std::optional<double>& last) {
  for (const TValue& value : values) {
    if (!first || value.time < *first) first = value.time;
    if (!last || value.time > *last) last = value.time;
  }
}

}  // namespace

TMissionSummary SummarizeMission(const TMissionData& mission, const TEventList& events, const TSensorList& sensors) {
  TMissionSummary summary;
  summary.events = events.Count();
  const TThresholds levels = ThresholdsOf(mission);
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEvent& event = events.GetItem(i);
    summary.samples += event.Count();
    if (!summary.peakEvent || event.Max > events.GetItem(*summary.peakEvent).Max) summary.peakEvent = i;
    double ignored = 0;
    summary.totTotal += CalcTimeOverThreshold(events, i, levels, ignored);
    const double intensity = CalcIntegralOverThreshold(events, i, levels, ignored);
    summary.iotTotal += intensity;
    if (intensity > summary.largestIot) {
      summary.largestIot = intensity;
      summary.mostIntense = i;
    }
    Widen(event.Values(), summary.firstTime, summary.lastTime);
  }
  for (const TSensor& sensor : sensors.Sensors()) {
    summary.sensors.push_back(SummarizeSensor(sensor));
    Widen(sensor.Values(), summary.firstTime, summary.lastTime);
  }
  if (summary.firstTime) summary.firstTime = DateTimeOf(events.StartTime, *summary.firstTime);
  if (summary.lastTime) summary.lastTime = DateTimeOf(events.StartTime, *summary.lastTime);
  return summary;
}
