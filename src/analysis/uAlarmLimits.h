// Alarm limits, and the test against one.
#pragma once

#include <algorithm>
#include <limits>

struct TLimits {
  double min;
  double max;
  bool operator==(const TLimits&) const = default;
};

// The single next to a limit as it was typed; the largest single for one beyond that.
inline float LimitAsSingle(double limit) {
  constexpr double kMax = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(limit, -kMax, kMax));
}

// Values are singles, so limits are compared as singles: a battery at 2.6 V is not below a limit of 2.6.
inline bool IsBelow(const TLimits& limits, float value) {
  return value < LimitAsSingle(limits.min);
}
inline bool IsAbove(const TLimits& limits, float value) {
  return value > LimitAsSingle(limits.max);
}
// A value equal to a limit is inside, so is NaN.
inline bool IsOutside(const TLimits& limits, float value) {
  return IsBelow(limits, value) || IsAbove(limits, value);
}
