#include "analysis/uShockMetrics.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace {

std::atomic<std::size_t> Walked = 0;

class TTimeOverThreshold {
 public:
  TTimeOverThreshold(const TThresholds& levels, double startTime) : FLevels(levels), FStartTime(startTime) {}

  // True if the sample ends an interval; Interval is that one.
  bool Add(double time, double magnitude, bool last, TEventMetrics& metrics) {
    if (!FAbove) {
      // The sample that begins an interval is not tested for its end.
      FAbove = magnitude >= FLevels.totOn;
      Interval.start = time;
      return false;
    }
    if (!(magnitude < FLevels.totOff) && !last) return false;
    const double duration = (time - FStartTime) - (Interval.start - FStartTime);
    if (duration > metrics.totMax) metrics.totMax = duration;
    metrics.totTotal += duration;
    Interval.end = time;
    FAbove = false;
    return true;
  }

  TTimeSpan Interval{};

 private:
  const TThresholds& FLevels;
  double FStartTime;
  bool FAbove = false;
};

class TIntegralOverThreshold {
 public:
  explicit TIntegralOverThreshold(double level) : FLevel(level) {}

  void Add(double time, double magnitude, TEventMetrics& metrics) {
    const double before = std::exchange(FAbove, magnitude - FLevel);
    const double step = time - std::exchange(FTime, time);
    if (before > 0 && FAbove > 0) {
      const double area = (before + FAbove) * step / 2;
      if (!FInRun) FRun = 0;
      FRun += area;
      metrics.iotTotal += area;
      FInRun = true;
    } else {
      // Kept on purpose: a run that reaches the last pair never counts towards the maximum.
      if (FRun > metrics.iotMax) metrics.iotMax = FRun;
      FInRun = false;
    }
  }

 private:
  double FLevel;
  double FAbove = 0;  // g above the level, of the sample before; 0 makes no pair with the first sample
  double FTime = 0;
  double FRun = 0;
  bool FInRun = false;
};

// An axis at rest repeats values, too, so only extremes near the event's largest count. The ranges of the axes differ a
// little by rounding and calibration.
constexpr float kNearMaximum = 0.9F;

// Whether three neighbouring samples stand at the extreme of one side of an axis.
class TClippedSide {
 public:
  explicit TClippedSide(float floor) : FExtreme(floor) {}

  // `amount` is g towards this side.
  void Add(float amount) {
    if (amount > FExtreme) {
      FExtreme = amount;
      FRun = 1;
      FClipped = false;
    } else if (amount == FExtreme) {
      if (++FRun == 3) FClipped = true;
    } else {
      FRun = 0;
    }
  }
  [[nodiscard]] bool IsClipped() const { return FClipped; }

 private:
  float FExtreme;  // at first what an extreme has to reach
  int FRun = 0;    // neighbouring samples at the extreme
  bool FClipped = false;
};

class TClipping {
 public:
  explicit TClipping(float maxSingle) : FSides{MakeSides(maxSingle * kNearMaximum)} {}

  void Add(const TEventValue& sample) {
    AddAxis(sample.xvalue, FSides[0], FSides[1]);
    AddAxis(sample.yvalue, FSides[2], FSides[3]);
    AddAxis(sample.zvalue, FSides[4], FSides[5]);
  }
  [[nodiscard]] bool IsClipped() const { return std::ranges::any_of(FSides, &TClippedSide::IsClipped); }

 private:
  using TSides = std::array<TClippedSide, 6>;

  static TSides MakeSides(float floor) {
    const TClippedSide side(floor);
    return {side, side, side, side, side, side};
  }
  static void AddAxis(float value, TClippedSide& positive, TClippedSide& negative) {
    positive.Add(value);
    negative.Add(-value);
  }

  TSides FSides;
};

}  // namespace

TThresholds ThresholdsOf(const TMissionData& mission) {
  if (!mission.bValid) return {6.0, 6.0, 1.0};
  return {mission.adxl_level_on, mission.adxl_level_off, mission.adxl_level_on};
}

TEventMetrics CalcEventMetrics(const TEvent& event, const TThresholds& levels, std::vector<TTimeSpan>* intervals) {
  const auto samples = event.Values();
  Walked.fetch_add(samples.size(), std::memory_order_relaxed);
  TEventMetrics metrics;
  TTimeOverThreshold tot(levels, event.GetStartTime());
  TIntegralOverThreshold iot(levels.iot);
  TClipping clipping(event.MaxSingle);
  for (const TEventValue& sample : samples) {
    const double magnitude = Magnitude(sample);
    const bool ended = tot.Add(sample.time, magnitude, &sample == &samples.back(), metrics);
    if (ended && intervals != nullptr) intervals->push_back(tot.Interval);
    iot.Add(sample.time, magnitude, metrics);
    clipping.Add(sample);
    metrics.minTime = std::min(metrics.minTime, sample.time);
    metrics.maxTime = std::max(metrics.maxTime, sample.time);
  }
  metrics.clipped = event.MaxSingle > 0 && clipping.IsClipped();
  return metrics;
}

bool IsClipped(std::span<const TEventValue> samples) {
  float maxSingle = 0;
  for (const TEventValue& sample : samples) {
    for (const float value : {sample.xvalue, sample.yvalue, sample.zvalue}) {
      maxSingle = std::fabs(value) > maxSingle ? std::fabs(value) : maxSingle;
    }
  }
  TClipping clipping(maxSingle);
  for (const TEventValue& sample : samples) clipping.Add(sample);
  return maxSingle > 0 && clipping.IsClipped();
}

double CalcTimeOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max) {
  const TEventMetrics metrics = CalcEventMetrics(events.GetItem(index), levels);
  Max = metrics.totMax;
  return metrics.totTotal;
}

double CalcIntegralOverThreshold(const TEventList& events, std::size_t index, const TThresholds& levels, double& Max) {
  const TEventMetrics metrics = CalcEventMetrics(events.GetItem(index), levels);
  Max = metrics.iotMax;
  return metrics.iotTotal;
}

std::size_t WalkedSamples() {
  return Walked.load(std::memory_order_relaxed);
}
