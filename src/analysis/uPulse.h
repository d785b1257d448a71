// The main pulse of a shock event: velocity change, durations, equivalent half-sine, direction. Pure functions; any
// thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "analysis/uShockSamples.h"

// One of the 26 directions of the sensor's axes: each part is -1, 0 or 1. All 0 is none of them.
struct TDirection {
  std::int8_t x = 0, y = 0, z = 0;
  bool operator==(const TDirection&) const = default;

  [[nodiscard]] TDirection Opposite() const {
    return {static_cast<std::int8_t>(-x), static_cast<std::int8_t>(-y), static_cast<std::int8_t>(-z)};
  }
};

// Of 6 faces, 12 edges and 8 corners the one with the smallest angle to the vector. A vector of no length, or one that
// is not finite, has none.
TDirection NearestDirection(const TGridValue& vector);

// "X-pos", "X-pos Z-neg"; "unclear" for no direction.
std::string DirectionText(const TDirection& direction);

enum class TPulseProblem {
  None,
  NoGrid,     // the times allow none; the grid says why
  NotFinite,  // a sample is no number
  NoPeak,     // all samples are 0
  TooShort,   // fewer than kMinPulseSamples lie in the run: at 128 Hz a drop of 8 ms read 6.55 for a true 4.46 m/s
  Clipped,    // the sensor was at the end of its range
};

inline constexpr std::size_t kMinPulseSamples = 5;

// The run of neighbouring samples around the peak whose magnitude is at least a tenth of it.
struct TPulse {
  TPulseProblem problem = TPulseProblem::NoPeak;  // only None has the figures below
  double peak = 0;                                // g, the largest magnitude
  // m/s, by the trapezium rule from the sample before the run to the one behind it, so that both flanks count. What
  // the floor adds against gravity during the contact is in it.
  TGridValue velocity{};
  double velocityChange = 0;  // m/s, the length of the vector
  // ms for which the magnitude is above a tenth, and around the peak above a third of it; on straight lines between
  // samples, and to the end of the record where it does not fall below.
  double durationTenth = 0, durationThird = 0;
  double halfSine = 0;  // ms, of the half-sine of the same peak and velocity change: π·Δv/(2·peak)
  // Nearest to the velocity change; none where the peak's vector is nearest to another. The sensor reads the reaction,
  // so the side that was hit is the opposite one.
  TDirection direction;
};

// `samples` are those that `shock` was made of.
TPulse CalcPulse(std::span<const TEventValue> samples, const TShockSamples& shock);

// Why it has no figures, as a sentence for people; empty when there is no problem.
std::string WhyNoPulse(const TPulse& pulse, const TShockSamples& shock);
