// The measured quantities that people set decimal formats and alarm limits for, and the test against a limit.
#pragma once

#include <cstddef>

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

inline bool IsBelow(const TLimits& limits, double value) {
  return value < limits.least;
}
inline bool IsAbove(const TLimits& limits, double value) {
  return value > limits.largest;
}
// A value equal to a limit is inside, so is NaN.
inline bool IsOutside(const TLimits& limits, double value) {
  return IsBelow(limits, value) || IsAbove(limits, value);
}
