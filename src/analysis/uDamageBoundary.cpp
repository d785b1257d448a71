#include "analysis/uDamageBoundary.h"

#include <cmath>
#include <limits>
#include <numbers>

bool IsUsable(const TFragility& limits) {
  return limits.velocityChange > 0 && std::isfinite(limits.velocityChange) && limits.acceleration > 0 &&
         std::isfinite(limits.acceleration);
}

double DamageBoundary(double velocity) {
  if (std::isnan(velocity)) return velocity;
  if (velocity <= 1) return std::numeric_limits<double>::infinity();
  // With u = V/A the curve is V = u/sin u, A = 1/sin u, and V rises from 1 at u = 0 to π/2 at u = π/2.
  double low = 0;
  double high = std::numbers::pi / 2;
  if (velocity >= high) return 1;
  for (double middle = high / 2; middle > low && middle < high; middle = (low + high) / 2) {
    (middle < velocity * std::sin(middle) ? low : high) = middle;
  }
  return velocity / high;
}

bool IsDamaging(const TDamagePoint& point, const TFragility& limits) {
  return IsUsable(limits) &&
         point.peak / limits.acceleration > DamageBoundary(point.velocityChange / limits.velocityChange);
}

bool IsBeyondBoth(const TDamagePoint& point, const TFragility& limits) {
  return IsUsable(limits) && point.velocityChange > limits.velocityChange && point.peak > limits.acceleration;
}
