#include "analysis/uShockSamples.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/uShockMetrics.h"

namespace {

void SubtractLevelBefore(std::span<const TEventValue> samples, double levelOn, TShockSamples& shock) {
  const auto first = std::ranges::find_if(samples, [=](const auto& sample) { return Magnitude(sample) >= levelOn; });
  const auto count = static_cast<std::size_t>(first - samples.begin());
  if (first == samples.end() || count < kMinBaselineSamples) return;
  TGridValue sum{};
  for (const TEventValue& sample : samples.first(count)) {
    sum.x += sample.xvalue;
    sum.y += sample.yvalue;
    sum.z += sample.zvalue;
  }
  const auto divisor = static_cast<double>(count);
  shock.baseline = {sum.x / divisor, sum.y / divisor, sum.z / divisor};
  shock.baselineCount = count;
}

}  // namespace

TShockSamples PrepareShock(std::span<const TEventValue> samples, TBaseline baseline, double levelOn) {
  TShockSamples shock;
  shock.grid = FitTimeGrid(samples);
  if (shock.grid.problem != TTimeGridProblem::None) return shock;
  if (baseline == TBaseline::Before) SubtractLevelBefore(samples, levelOn, shock);
  const std::vector<TGridValue> points = ValuesOnGrid(samples, shock.grid);
  const auto take = [&](float TEventValue::*sample, double TGridValue::*point, std::vector<double>& axis) {
    // An interpolated grid may step over a sample.
    const bool finite = std::ranges::all_of(samples, [=](const auto& value) { return std::isfinite(value.*sample); });
    axis.assign(points.size(), std::numeric_limits<double>::quiet_NaN());
    if (!finite) return;
    const double level = shock.baseline.*point;
    std::ranges::transform(points, axis.begin(), [=](const TGridValue& value) { return value.*point - level; });
  };
  take(&TEventValue::xvalue, &TGridValue::x, shock.x);
  take(&TEventValue::yvalue, &TGridValue::y, shock.y);
  take(&TEventValue::zvalue, &TGridValue::z, shock.z);
  return shock;
}

TShockSamples WithBaseline(TShockSamples shock) {
  for (double& value : shock.x) value += shock.baseline.x;
  for (double& value : shock.y) value += shock.baseline.y;
  for (double& value : shock.z) value += shock.baseline.z;
  shock.baseline = {};
  shock.baselineCount = 0;
  return shock;
}

std::vector<double> Magnitudes(const TShockSamples& shock) {
  std::vector<double> magnitudes;
  magnitudes.reserve(shock.Count());
  for (std::size_t i = 0; i < shock.Count(); ++i) {
    magnitudes.push_back(std::sqrt(shock.x[i] * shock.x[i] + shock.y[i] * shock.y[i] + shock.z[i] * shock.z[i]));
  }
  return magnitudes;
}

bool IsCutShort(const TShockSamples& shock) {
  if (shock.Count() == 0) return false;
  const std::vector<double> magnitudes = Magnitudes(shock);
  const auto last = std::span(magnitudes).last((magnitudes.size() + 19) / 20);
  return std::ranges::max(last) > std::ranges::max(magnitudes) / 10;
}

std::string WhatBaselineDid(const TShockSamples& shock, TBaseline baseline) {
  if (baseline == TBaseline::None) return "no baseline subtracted";
  if (shock.baselineCount > 0) {
    return fmt::format("mean of {} samples before the shock subtracted", shock.baselineCount);
  }
  return fmt::format("no baseline subtracted, fewer than {} samples before the shock", kMinBaselineSamples);
}
