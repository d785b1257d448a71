// What the samples of a series amount to over a span: count, extremes, mean, RMS. Pure; any thread.
#pragma once

#include <cstddef>
#include <limits>

// In the unit of the values. Without a value everything but the count is NaN.
struct TRangeStatistics {
  std::size_t count = 0;
  double min = std::numeric_limits<double>::quiet_NaN();
  double max = std::numeric_limits<double>::quiet_NaN();
  double mean = std::numeric_limits<double>::quiet_NaN();
  double rms = std::numeric_limits<double>::quiet_NaN();  // of the values as they are; their mean is not taken out

  [[nodiscard]] double PeakToPeak() const { return max - min; }
};

// Gathers values in one pass; those that are not finite are left out. Every value weighs the same, however far apart in
// time it stands. The sums carry their rounding errors along, so that very many values cost no digits.
class TStatisticsSum {
 public:
  // Its square has to fit into a double.
  void Add(double value);
  [[nodiscard]] TRangeStatistics Result() const;

 private:
  struct TSum {
    double sum = 0, lost = 0;
    void Add(double value);
    [[nodiscard]] double Value() const { return sum + lost; }
  };

  std::size_t FCount = 0;
  double FMin = 0, FMax = 0;
  TSum FValues, FSquares;
};
