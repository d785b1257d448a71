// The drop height of a shock event: from the free fall before it, and a bracket from its velocity change. For a box
// that was thrown or that tumbled it is an equivalent height. Pure functions; any thread.
#pragma once

#include <string>

#include "analysis/uPulse.h"

enum class TFallProblem {
  None,
  NoSamples,  // the times allow no grid, or a sample is no number
  // The magnitude does not stay within 0.7 … 1.3 g over the last tenth of the record: the sensor lacks the constant
  // part, or the record ends too early.
  NotAtRest,
  NoFall,  // fewer than kMinFallSamples neighbouring samples before the peak are below kFallLevel
};

inline constexpr double kFallLevel = 0.3;  // g, of the magnitude; offsets of 0.12 g on each axis stay below it
inline constexpr std::size_t kMinFallSamples = 5;

// The longest run of samples before the peak whose magnitude stays below kFallLevel; its height is ½·g·T².
struct TFall {
  TFallProblem problem = TFallProblem::NoSamples;  // only None has the figures below
  bool isLeast = false;     // the fall reaches the start of the record, so it was at least this high
  double height = 0;        // mm
  double min = 0, max = 0;  // mm, the same one sample shorter and longer; max is infinite where isLeast
};

// `shock` without a baseline subtracted: TBaseline::None.
TFall CalcFall(const TShockSamples& shock);

// mm, from the velocity change in m/s: Δv²/(8g) for a rebound as fast as the impact, Δv²/(2g) for none.
struct TDropBracket {
  double min, max;
};
TDropBracket DropBracketOf(double velocityChange);

// Why it has no height, as a sentence for people; empty when there is no problem.
std::string WhyNoFall(const TFall& fall);
