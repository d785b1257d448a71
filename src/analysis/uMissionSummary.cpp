#include "analysis/uMissionSummary.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "base/uDateTime.h"
#include "model/uQuantities.h"

namespace {

TSensorSummary SummarizeSensor(const TSensor& sensor) {
  const auto* known = FindQuantity(&TQuantityRow::sensorName, sensor.Name);
  TSensorSummary summary{sensor.Name, known == nullptr ? "" : known->unit, sensor.Count(), {}, {}};
  for (const TSensorValue& value : sensor.Values()) {
    if (std::isnan(value.xvalue)) continue;
    if (!summary.minimum || value.xvalue < *summary.minimum) summary.minimum = value.xvalue;
    if (!summary.maximum || value.xvalue > *summary.maximum) summary.maximum = value.xvalue;
  }
  return summary;
}

// Times need not be in order, so each counts.
void Widen(double from, double to, TMissionSummary& summary) {
  if (!summary.firstTime || from < *summary.firstTime) summary.firstTime = from;
  if (!summary.lastTime || to > *summary.lastTime) summary.lastTime = to;
}

}  // namespace

TMissionSummary SummarizeMission(const TEventList& events, std::span<const TEventMetrics> metrics,
                                 const TSensorList& sensors) {
  TMissionSummary summary;
  summary.events = events.Count();
  for (std::size_t i = 0; i < events.Count(); ++i) {
    const TEvent& event = events.GetItem(i);
    summary.samples += event.Count();
    if (!summary.peakEvent || event.Max > events.GetItem(*summary.peakEvent).Max) summary.peakEvent = i;
    summary.totTotal += metrics[i].totTotal;
    summary.iotTotal += metrics[i].iotTotal;
    if (metrics[i].iotTotal > summary.maxIot) {
      summary.maxIot = metrics[i].iotTotal;
      summary.mostIntense = i;
    }
    if (event.Count() > 0) Widen(metrics[i].minTime, metrics[i].maxTime, summary);
  }
  for (const TSensor& sensor : sensors.Sensors()) {
    summary.sensors.push_back(SummarizeSensor(sensor));
    for (const TSensorValue& value : sensor.Values()) Widen(value.time, value.time, summary);
  }
  if (summary.firstTime) summary.firstTime = DateTimeOf(events.StartTime, *summary.firstTime);
  if (summary.lastTime) summary.lastTime = DateTimeOf(events.StartTime, *summary.lastTime);
  return summary;
}

TEventGroups GroupEvents(const TEventList& events, std::span<const TEventMetrics> metrics,
                         const std::optional<TLimits>& limits, const std::vector<bool>& counts) {
  constexpr std::string_view kAxes = "XYZ";
  TEventGroups groups;
  for (const char axis : kAxes) groups.byAxis.push_back({.name = std::string(1, axis)});
  groups.byAxis.push_back({.name = "none"});
  std::map<double, TEventGroup> days;
  const auto add = [&](std::size_t index, TEventGroup& group) {
    const TEvent& event = events.GetItem(index);
    ++group.events;
    if (limits && IsOutside(*limits, event.Max)) ++group.above;
    if (!group.peakEvent || event.Max > events.GetItem(*group.peakEvent).Max) group.peakEvent = index;
    group.maxIot = std::max(group.maxIot, metrics[index].iotTotal);
  };
  for (std::size_t i = 0; i < events.Count(); ++i) {
    if (!counts.empty() && !counts[i]) continue;
    const TEvent& event = events.GetItem(i);
    add(i, groups.byAxis[std::min(kAxes.find(event.MaxAxis.front()), kAxes.size())]);
    const double day = std::floor(DateTimeOf(events.StartTime, event.GetStartTime()));
    // NaN is no key.
    add(i, days[std::isnan(day) ? -std::numeric_limits<double>::infinity() : day]);
  }
  if (groups.byAxis.back().events == 0) groups.byAxis.pop_back();
  for (auto& [day, group] : days) {
    group.name = FormatDateTime(ShortDateFormat(), day);
    groups.byDay.push_back(std::move(group));
  }
  return groups;
}
