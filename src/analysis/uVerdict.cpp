#include "analysis/uVerdict.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/uDateTime.h"
#include "base/uTimeSpan.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Gathers the readings beyond one limit, whose verdict it borrows. Those that touch are one excursion.
class TExcursions {
 public:
  TExcursions(TLimitVerdict& verdict, double startTime) : FVerdict(verdict), FStartTime(startTime) {}

  // Times in ms since the mission's start.
  void Add(double begin, double end, float value) {
    if (!FOpen || begin != FEnd) {
      End();
      FOpen = true;
      FBegin = begin;
      FExtreme = value;
    }
    FEnd = end;
    // All values lie on one side of the limit.
    if (std::fabs(value - FVerdict.limit) > std::fabs(FExtreme - FVerdict.limit)) FExtreme = value;
  }
  void End() {
    if (!FOpen) return;
    FOpen = false;
    const TExcursion excursion{DateTimeOf(FStartTime, FBegin), FEnd - FBegin, FExtreme};
    ++FVerdict.excursions;
    FVerdict.timeOut += excursion.duration;
    if (!FVerdict.first) FVerdict.first = excursion;
    if (!FVerdict.longest || excursion.duration > FVerdict.longest->duration) FVerdict.longest = excursion;
  }

 private:
  TLimitVerdict& FVerdict;
  double FStartTime;
  bool FOpen = false;
  double FBegin = 0, FEnd = 0;
  float FExtreme = 0;
};

// Calls visit(begin, end, value) with every reading that is a number, in ms since the mission's start; `end` is not
// before `begin`.
template <class TVisit>
void VisitReadings(const TSensor& sensor, double medianInterval, double recordedEnd, const TVisit& visit) {
  const TSensorValue* pending = nullptr;
  for (const TSensorValue& value : sensor.Values()) {
    if (std::isnan(value.xvalue)) continue;
    if (pending != nullptr) {
      const double end = std::min(value.time, pending->time + kGapIntervals * medianInterval);
      visit(pending->time, std::max(end, pending->time), pending->xvalue);
    }
    pending = &value;
  }
  if (pending == nullptr) return;
  const double end = std::min(recordedEnd, pending->time + medianInterval);
  visit(pending->time, std::max(end, pending->time), pending->xvalue);
}

void TakeExtremes(float value, double time, TSensorVerdict& verdict) {
  if (!verdict.min || value < verdict.min->value) verdict.min = {value, time};
  if (!verdict.max || value > verdict.max->value) verdict.max = {value, time};
}

struct TSensorTask {
  const TSensor& sensor;
  double medianInterval;
  double startTime;    // date-time
  double recordedEnd;  // ms
  TTimeSpan part;      // ms since the mission's start
};

void JudgeSensor(const TSensorTask& task, const TJudgedLimits* limits, TSensorVerdict& verdict) {
  if (limits != nullptr) {
    const auto [low, high] = limits->values;
    verdict.below = {low, limits->minSource};
    verdict.above = {high, limits->maxSource};
  }
  TExcursions below(verdict.below, task.startTime);
  TExcursions above(verdict.above, task.startTime);
  VisitReadings(task.sensor, task.medianInterval, task.recordedEnd, [&](double time, double end, float value) {
    const double begin = std::max(time, task.part.start);
    end = std::min(end, task.part.end);
    const bool counts = end > begin || (end == begin && begin == time);
    if (!counts) return;
    TakeExtremes(value, DateTimeOf(task.startTime, time), verdict);
    if (limits == nullptr) return;
    if (IsBelow(limits->values, value)) below.Add(begin, end, value);
    if (IsAbove(limits->values, value)) above.Add(begin, end, value);
  });
  below.End();
  above.End();
}

// Longest time first; what is beyond chosen limits goes before what is beyond default ones only.
std::optional<TWorstSensor> FindWorst(const std::vector<TSensorVerdict>& sensors) {
  std::optional<TWorstSensor> worst;
  for (const bool byDefault : {false, true}) {
    const auto counts = byDefault ? &TLimitVerdict::IsOutOfDefault : &TLimitVerdict::IsOutOfChosen;
    for (std::size_t i = 0; i < sensors.size(); ++i) {
      double timeOut = -1;
      for (const TLimitVerdict* limit : {&sensors[i].below, &sensors[i].above}) {
        if ((limit->*counts)()) timeOut = std::max(timeOut, 0.0) + limit->timeOut;
      }
      if (timeOut > (worst ? worst->timeOut : -1)) worst = {i, byDefault, timeOut};
    }
    if (worst) break;
  }
  return worst;
}

void JudgeEvents(const TEventList& events, const TMissionDatasets& tables, const TVerdictPart& part,
                 TVerdict& verdict) {
  const std::vector<bool> counts = EventsIn(part, tables, events);
  for (std::size_t i = 0; i < events.Count(); ++i) {
    if (!counts.empty() && !counts[i]) continue;
    const TEvent& event = events.GetItem(i);
    const TEventMetrics& metrics = tables.Metrics[i];
    const double time = DateTimeOf(events.StartTime, event.GetStartTime());
    ++verdict.events;
    if (metrics.clipped) verdict.clipped.push_back(i);
    if (verdict.above && IsOutside(verdict.above->limits.values, event.Max)) ++verdict.above->count;
    if (!verdict.peak || event.Max > verdict.peak->value) {
      verdict.peak = {i, event.Max, event.MaxSingle, event.MaxAxis, time, metrics.clipped};
    }
    if (metrics.iotTotal > (verdict.worst ? verdict.worst->value : 0)) {
      verdict.worst = {i, metrics.iotTotal, time, metrics.clipped};
    }
  }
}

// ms since the mission's start; of a recording without a time the end is before the start.
TTimeSpan RecordedSpan(const TMissionDatasets& tables) {
  TTimeSpan span{kInfinity, -kInfinity};
  for (const TEventMetrics& metrics : tables.Metrics) span.Include({metrics.minTime, metrics.maxTime});
  for (const TSensorMetrics& metrics : tables.SensorMetrics) span.Include({metrics.minTime, metrics.maxTime});
  return span;
}

}  // namespace

std::vector<bool> EventsIn(const TVerdictPart& part, const TMissionDatasets& tables, const TEventList& events) {
  if (!part.time.IsSet()) return part.events;
  TEventFilter inTime;
  inTime.time = part.time;
  std::vector<bool> counts = EventsThrough(inTime, tables.Events, events, std::nullopt, nullptr);
  for (std::size_t i = 0; i < part.events.size() && i < counts.size(); ++i) counts[i] = counts[i] && part.events[i];
  return counts;
}

std::size_t TVerdict::SensorsOut(bool byDefaultLimits) const {
  return static_cast<std::size_t>(std::ranges::count_if(sensors, [byDefaultLimits](const TSensorVerdict& sensor) {
    const bool chosen = sensor.below.IsOutOfChosen() || sensor.above.IsOutOfChosen();
    return sensor.IsOut() && chosen != byDefaultLimits;
  }));
}

TVerdict JudgeMission(const TEventList& events, const TSensorList& sensors, const TMissionDatasets& tables,
                      const std::optional<TVerdictLimits>& limits, const TVerdictPart& part) {
  TVerdict verdict;
  const auto limitsOf = [&limits](TQuantity quantity) {
    return limits ? &(*limits)[static_cast<std::size_t>(quantity)] : nullptr;
  };
  if (limits) verdict.above = {0, *limitsOf(TQuantity::Acceleration)};
  JudgeEvents(events, tables, part, verdict);

  const TTimeSpan recorded = RecordedSpan(tables);
  if (recorded.start <= recorded.end) {
    verdict.firstTime = DateTimeOf(events.StartTime, recorded.start);
    verdict.lastTime = DateTimeOf(events.StartTime, recorded.end);
  }
  const auto ms = [&events](double time) { return (time - events.StartTime) * kMsPerDay; };
  const TTimeSpan inPart{part.time.from ? ms(*part.time.from) : -kInfinity,
                         part.time.to ? ms(*part.time.to) : kInfinity};
  for (std::size_t i = 0; i < sensors.Count(); ++i) {
    const TSensor& sensor = sensors.GetItem(i);
    const TQuantityRow* quantity = FindQuantity(&TQuantityRow::sensorName, sensor.Name);
    if (quantity == nullptr || !quantity->quantity ||
        static_cast<std::size_t>(*quantity->quantity) >= kLimitedQuantityCount) {
      continue;
    }
    TSensorVerdict& judged = verdict.sensors.emplace_back(TSensorVerdict{i, quantity, {}, {}, {}, {}});
    JudgeSensor({sensor, tables.SensorMetrics[i].medianInterval, events.StartTime, recorded.end, inPart},
                limitsOf(*quantity->quantity), judged);
  }
  verdict.worstSensor = FindWorst(verdict.sensors);
  return verdict;
}
