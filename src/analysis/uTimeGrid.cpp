#include "analysis/uTimeGrid.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <string_view>
#include <utility>

#include "base/uText.h"

namespace {

constexpr double kMaxOff = 0.5;           // steps that a sample counts as standing on its point
constexpr double kToldOff = 0.01;         // steps; less is not worth a word
constexpr std::size_t kMissingPart = 10;  // a tenth of the points may be missing
// A grid with more points a sample is refused, whatever comes of it; no need to go on.
constexpr std::uint64_t kMaxPointsPerSample = 100;
constexpr int kMaxGridRounds = 100;  // two are usual; hostile times might go round in circles

using TPlaces = std::vector<std::uint32_t>;

bool HasRate(double stepMs) {
  constexpr double kMsPerSecond = 1000;
  return std::isnormal(stepMs) && std::isfinite(kMsPerSecond / stepMs);
}

TTimeGridProblem ProblemOf(std::span<const TEventValue> samples) {
  if (samples.size() < 2) return TTimeGridProblem::TooFewSamples;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    const double step = samples[i].time - samples[i - 1].time;
    if (!std::isfinite(step)) return TTimeGridProblem::NoRate;
    if (step <= 0) return TTimeGridProblem::TimesNotRising;
    if (!HasRate(step)) return TTimeGridProblem::NoRate;
  }
  const double span = samples.back().time - samples.front().time;
  return std::isfinite(span) ? TTimeGridProblem::None : TTimeGridProblem::NoRate;
}

struct TLine {
  double start;  // ms from the first sample
  double step;   // ms
};

// By least squares. What is fitted is the rest that the mean step leaves, so that times which are even give that step
// to the last bit.
TLine FitLine(std::span<const TEventValue> samples, const TPlaces& places) {
  const auto count = static_cast<double>(samples.size());
  const double first = samples.front().time;
  const double mean = (samples.back().time - first) / places.back();
  const double middle = std::accumulate(places.begin(), places.end(), 0.0) / count;
  double restSum = 0;
  double products = 0;
  double squares = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double rest = samples[i].time - first - places[i] * mean;
    const double place = places[i] - middle;
    restSum += rest;
    products += place * rest;
    squares += place * place;
  }
  const double slope = products / squares;
  return {restSum / count - slope * middle, mean + slope};
}

// Nothing when there are far too many points.
std::optional<TPlaces> PlacesAt(std::span<const TEventValue> samples, double step) {
  const std::uint64_t max =
      std::min<std::uint64_t>(kMaxPointsPerSample * samples.size(), std::numeric_limits<std::uint32_t>::max());
  TPlaces places = {0};
  places.reserve(samples.size());
  std::uint64_t place = 0;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    const double steps = std::round((samples[i].time - samples[i - 1].time) / step);
    if (!(steps <= static_cast<double>(max))) return std::nullopt;
    place += std::max<std::uint64_t>(1, static_cast<std::uint64_t>(steps));
    if (place > max) return std::nullopt;
    places.push_back(static_cast<std::uint32_t>(place));
  }
  return places;
}

TTimeGrid Refused(TTimeGridProblem problem) {
  TTimeGrid grid;
  grid.problem = problem;
  return grid;
}

}  // namespace

TTimeGrid FitTimeGrid(std::span<const TEventValue> samples) {
  const TTimeGridProblem problem = ProblemOf(samples);
  if (problem != TTimeGridProblem::None) return Refused(problem);
  TTimeGrid grid;
  grid.places.resize(samples.size());
  std::iota(grid.places.begin(), grid.places.end(), 0U);
  TLine line = FitLine(samples, grid.places);
  for (int round = 0; round < kMaxGridRounds; ++round) {
    if (!HasRate(line.step)) return Refused(TTimeGridProblem::NoRate);
    std::optional<TPlaces> places = PlacesAt(samples, line.step);
    if (!places) return Refused(TTimeGridProblem::TooManyMissing);
    if (*places == grid.places) break;
    grid.places = *std::move(places);
    line = FitLine(samples, grid.places);
  }
  if (grid.MissingCount() * kMissingPart > grid.PointCount()) return Refused(TTimeGridProblem::TooManyMissing);
  grid.startMs = line.start;
  grid.stepMs = line.step;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double off = samples[i].time - samples.front().time - line.start - grid.places[i] * line.step;
    grid.farthest = std::max(grid.farthest, std::fabs(off) / line.step);
  }
  grid.interpolated = grid.farthest > kMaxOff;
  return grid;
}

std::vector<TGridValue> ValuesOnGrid(std::span<const TEventValue> samples, const TTimeGrid& grid) {
  std::vector<TGridValue> values;
  values.reserve(grid.PointCount());
  const auto msOf = [&](std::size_t i) { return samples[i].time - samples.front().time; };
  std::size_t before = 0;  // the last sample that is not later than the point, or the first
  std::size_t own = 0;     // the first sample that stands on the point or past it
  for (std::size_t point = 0; point < grid.PointCount(); ++point) {
    while (grid.places[own] < point) ++own;
    if (!grid.interpolated && grid.places[own] == point) {
      values.push_back({samples[own].xvalue, samples[own].yvalue, samples[own].zvalue});
      continue;
    }
    const double ms = grid.startMs + static_cast<double>(point) * grid.stepMs;
    while (before + 2 < samples.size() && msOf(before + 1) <= ms) ++before;
    const TEventValue& a = samples[before];
    const TEventValue& b = samples[before + 1];
    const double part = std::clamp((ms - msOf(before)) / (msOf(before + 1) - msOf(before)), 0.0, 1.0);
    const auto between = [part](double left, double right) { return (1 - part) * left + part * right; };
    values.push_back({between(a.xvalue, b.xvalue), between(a.yvalue, b.yvalue), between(a.zvalue, b.zvalue)});
  }
  return values;
}

std::string WhatGridDid(const TTimeGrid& grid) {
  std::string text;
  if (grid.farthest > kToldOff) {
    text = fmt::format("times off the grid by up to {} sample", MaskFloat("0.##", grid.farthest));
  }
  const std::size_t missing = grid.MissingCount();
  const std::string_view samples = missing == 1 ? "sample" : "samples";
  if (grid.interpolated) {
    AppendListItem(text, fmt::format("interpolated, {} {} missing", missing, samples));
  } else if (missing > 0) {
    AppendListItem(text, fmt::format("{} missing {} filled in", missing, samples));
  }
  return text;
}

std::string WhyNoGrid(const TTimeGrid& grid) {
  constexpr std::string_view kReasons[] = {"", "There are fewer than two samples.",
                                           "The times of the samples give no sampling rate.",
                                           "The times of the samples repeat or go back.",
                                           "The times leave more than a tenth of an even grid without a sample."};
  return std::string(kReasons[static_cast<std::size_t>(grid.problem)]);
}
