// The samples of a shock event as shock analysis takes them: on an even grid, with the level before the shock taken
// away. They come from what was recorded, never from the high-passed curves. Pure functions; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uTimeGrid.h"
#include "model/uEvents.h"

// 1 g in m/s².
inline constexpr double kStandardGravity = 9.80665;

// What is taken for zero.
enum class TBaseline {
  Before,  // the mean of each axis before the shock
  None,    // the samples as they are; gravity stays in them
};

inline constexpr std::array<std::pair<std::string_view, TBaseline>, 2> kBaselines = {{
    {"before", TBaseline::Before},
    {"none", TBaseline::None},
}};

// Fewer samples make no mean.
inline constexpr std::size_t kMinBaselineSamples = 8;

struct TShockSamples {
  TTimeGrid grid;                 // of the whole event; says why there are no samples and what was done about times
  std::vector<double> x, y, z;    // g, one for each point of the grid; none without a grid
  TGridValue baseline{};          // g, what was subtracted
  std::size_t baselineCount = 0;  // the samples whose mean it is; 0: nothing was subtracted

  [[nodiscard]] std::size_t Count() const { return x.size(); }
  // Samples in a second.
  [[nodiscard]] double Rate() const { return 1000 / grid.stepMs; }
};

// TBaseline::Before takes the samples before the first one whose magnitude reaches `levelOn` (g). It subtracts nothing
// where these are fewer than kMinBaselineSamples, or where no sample reaches the level. An axis with a sample that is
// not finite becomes NaN as a whole.
TShockSamples PrepareShock(std::span<const TEventValue> samples, TBaseline baseline, double levelOn);

// The same samples with nothing subtracted, as TBaseline::None gives them.
TShockSamples WithBaseline(TShockSamples shock);

// √(x² + y² + z²) of each point, g.
std::vector<double> Magnitudes(const TShockSamples& shock);

// Why nothing can be calculated from an event without an axis.
inline constexpr std::string_view kNoAxis = "Each axis has a sample that is no finite number.";

// True when one of the last twentieth of the samples exceeds a tenth of the peak: the record ends before the shock
// does, so slow responses and the velocity change come out too small.
bool IsCutShort(const TShockSamples& shock);

// "mean of 40 samples before the shock subtracted", or why nothing is.
std::string WhatBaselineDid(const TShockSamples& shock, TBaseline baseline);
