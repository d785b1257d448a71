// The measured quantities that people set decimal formats and alarm limits for, and the test against a limit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

// Those with alarm limits come first.
enum class TQuantity {
  Acceleration,
  Temperature,
  Pressure,
  Humidity,
  Light,
  Battery,
  A1,
  A2,
  A3,
  A4,
  Time,
  ToT,
  IoT,
};
inline constexpr std::size_t kLimitedQuantityCount = 10;
inline constexpr std::size_t kQuantityCount = 13;

struct TLimits {
  double least;
  double largest;
  bool operator==(const TLimits&) const = default;
};

// The single next to a limit as it was typed; the largest single for one beyond that.
inline float LimitAsSingle(double limit) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(limit, -kLargest, kLargest));
}

// Values are singles, so limits are compared as singles: a battery at 2.6 V is not below a limit of 2.6.
inline bool IsBelow(const TLimits& limits, float value) {
  return value < LimitAsSingle(limits.least);
}
inline bool IsAbove(const TLimits& limits, float value) {
  return value > LimitAsSingle(limits.largest);
}
// A value equal to a limit is inside, so is NaN.
inline bool IsOutside(const TLimits& limits, float value) {
  return IsBelow(limits, value) || IsAbove(limits, value);
}
