#include "analysis/uShockMetrics.h"

#include <cmath>

TThresholds ThresholdsOf(const TMissionData& mission) {
  if (!mission.bValid) return {6.0, 6.0, 1.0};
  return {mission.adxl_level_on, mission.adxl_level_off, mission.adxl_level_on};
}

double CalcTimeOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max) {
  const TEvent& event = events.GetItem(index);
  const auto samples = event.Values();
  const double startTime = event.GetStartTime();
  double total = 0;
  double intervalStart = 0;
  bool above = false;
  Max = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double magnitude = Magnitude(samples[i]);
    const double time = samples[i].time - startTime;
    if (!above) {
      // The sample that begins an interval is not tested for its end.
      if (magnitude >= levels.totOn) {
        intervalStart = time;
        above = true;
      }
    } else if (magnitude < levels.totOff || i + 1 == samples.size()) {
      const double duration = time - intervalStart;
      if (duration > Max) Max = duration;
      total += duration;
      above = false;
    }
  }
  return total;
}

double CalcIntegralOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max) {
  const auto samples = events.GetItem(index).Values();
  double total = 0;
  double run = 0;
  bool inRun = false;
  Max = 0;
  if (samples.size() < 2) return 0;
  double next = Magnitude(samples[0]) - levels.iot;
  for (std::size_t i = 0; i + 1 < samples.size(); ++i) {
    const double here = next;
    next = Magnitude(samples[i + 1]) - levels.iot;
    if (here > 0 && next > 0) {
      const double area = (here + next) * (samples[i + 1].time - samples[i].time) / 2;
      if (!inRun) run = 0;
      run += area;
      total += area;
      inRun = true;
    } else {
      // Kept on purpose: a run that reaches the last pair never counts towards the maximum.
      if (run > Max) Max = run;
      inRun = false;
    }
  }
  return total;
}
