#include "analysis/uRangeStatistics.h"

#include <algorithm>
#include <cmath>

// Neumaier's sum: what falls off the end of either operand is kept.
void TStatisticsSum::TSum::Add(double value) {
  const double total = sum + value;
  lost += std::fabs(sum) >= std::fabs(value) ? (sum - total) + value : (value - total) + sum;
  sum = total;
}

void TStatisticsSum::Add(double value) {
  if (!std::isfinite(value)) return;
  FMin = FCount == 0 ? value : std::min(FMin, value);
  FMax = FCount == 0 ? value : std::max(FMax, value);
  ++FCount;
  FValues.Add(value);
  FSquares.Add(value * value);
}

TRangeStatistics TStatisticsSum::Result() const {
  if (FCount == 0) return {};
  const auto count = static_cast<double>(FCount);
  return {FCount, FMin, FMax, FValues.Value() / count, std::sqrt(FSquares.Value() / count)};
}
