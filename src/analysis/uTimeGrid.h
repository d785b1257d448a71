// The even grid that the times of samples were rounded from: point n is at t0 + n·Δ. For calculations that need even
// steps. Pure functions; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "model/uEvents.h"

// In the order of the reasons of WhyNoGrid.
enum class TTimeGridProblem {
  None,
  TooFewSamples,   // fewer than two have no step
  NoRate,          // a time is not finite, or a step has no finite rate
  TimesNotRising,  // a time repeats or goes back
  TooManyMissing,  // more than a tenth of the grid's points have no sample
};

struct TTimeGrid {
  TTimeGridProblem problem = TTimeGridProblem::None;
  double startMs = 0;                 // t0, from the time of the first sample
  double stepMs = 0;                  // Δ
  double farthest = 0;                // d, the distance of a sample from its point in steps
  bool interpolated = false;          // d is more than half a step, so no sample is taken as it stands
  std::vector<std::uint32_t> places;  // the n of each sample; the first is 0, none is taken twice

  [[nodiscard]] std::size_t PointCount() const { return places.empty() ? 0 : std::size_t{places.back()} + 1; }
  // Points that no sample stands on.
  [[nodiscard]] std::size_t MissingCount() const { return PointCount() - places.size(); }
};

// Fits the grid by least squares. From one sample to the next n grows by the step in Δ, rounded, at least by 1; Δ and n
// are found in turn until n stays the same. With a problem the rest of the result is empty.
TTimeGrid FitTimeGrid(std::span<const TEventValue> samples);

struct TGridValue {
  double x, y, z;  // g
};

// One value for each point of a grid without a problem; `samples` are those that it was fitted to. Linear in the
// samples. Up to half a step off a sample counts as standing on its point; points without one, and all points of an
// interpolated grid, take the straight line between the neighbours in time, or the nearest sample before the first and
// past the last.
std::vector<TGridValue> ValuesOnGrid(std::span<const TEventValue> samples, const TTimeGrid& grid);

// What was done about uneven times, for people: "times off the grid by up to 0.11 sample"; empty where nothing was.
std::string WhatGridDid(const TTimeGrid& grid);
// Why there is no grid, as a sentence for people; empty when there is no problem.
std::string WhyNoGrid(const TTimeGrid& grid);
