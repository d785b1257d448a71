// Statistics over the events of a mission: when they happened, from where, and how often a value is exceeded.
// Pure functions; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/uPulse.h"

struct TDayCount {
  double day;  // a date-time without a time of day
  std::size_t count;
};

// Of date-times. Days without an event are left out; so are date-times that are not finite or beyond ±1e9 days.
std::vector<TDayCount> CountByDay(std::span<const double> dateTimes);
// By the hour of the day, 0 … 23; what CountByDay leaves out is left out here.
std::array<std::size_t, 24> CountByHour(std::span<const double> dateTimes);

struct TDirectionCount {
  TDirection direction;  // none for the unclear ones
  std::size_t count;
};

// The most frequent direction first, equal ones in the order of x, y, z from -1 to 1; directions without an event are
// left out.
std::vector<TDirectionCount> CountByDirection(std::span<const TDirection> directions);

// So many events that have a value, or one near to it.
struct TCountedValue {
  float value;
  std::uint32_t count;
};
// Rising, at most kMaxDistribution of them.
using TDistribution = std::vector<TCountedValue>;
inline constexpr std::size_t kMaxDistribution = 600;

// Values that are not finite are left out. Of more than kMaxDistribution values the 200 largest stand for themselves,
// so that no peak is lost, and the middle one of each group of neighbours stands for the group.
TDistribution DistributionOf(std::span<const double> values);

// How often values are exceeded. Values that are NaN are left out.
class TExceedance {
 public:
  explicit TExceedance(std::span<const double> values);
  static TExceedance Of(const TDistribution& distribution);

  // Rising. The i-th of n, from 1, is not exceeded by the part (i − 0.5)/n of the values; of those that stand for
  // several, i is the middle of these.
  [[nodiscard]] std::span<const double> Values() const { return FValues; }
  // The part of values above the i-th, from 0: 1 − (i + 0.5)/n.
  [[nodiscard]] double ExceededPart(std::size_t i) const;
  // That of the last value at or below this one; 1 below the first.
  [[nodiscard]] double PartAbove(double value) const;
  // The value that a part, 0 … 1, does not exceed: 0.95 for P95. On a straight line between two values, and the first
  // or last one outside of them; NaN without values.
  [[nodiscard]] double Percentile(double part) const;

 private:
  std::vector<double> FValues;
  std::vector<double> FRanks;  // how many values are below each, which counts by half
  double FCount = 0;
};

struct TRoundHistogram {
  double first = 0;                          // where the first step begins, a multiple of the step
  double step = 0;                           // 1, 2 or 5 times a power of ten
  std::vector<std::size_t> counts;           // empty without values
  std::vector<std::size_t> referenceCounts;  // in the same steps
};

// Values that are not finite are left out. As many steps as the values and those of the reference need, at most
// `maxSteps`, which is at least 2. A value at the border of two steps counts in the upper one.
TRoundHistogram HistogramInRoundSteps(std::span<const double> values, std::size_t maxSteps,
                                      const TDistribution& reference = {});
