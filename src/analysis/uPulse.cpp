#include "analysis/uPulse.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/uShockMetrics.h"

namespace {

// Neighbouring points at or above a level, around the peak; both ends included.
struct TRun {
  std::size_t first, last;

  [[nodiscard]] std::size_t Count() const { return last - first + 1; }
};

TRun RunAround(std::span<const double> magnitudes, std::size_t peak, double level) {
  TRun run{peak, peak};
  while (run.first > 0 && magnitudes[run.first - 1] >= level) --run.first;
  while (run.last + 1 < magnitudes.size() && magnitudes[run.last + 1] >= level) ++run.last;
  return run;
}

// In steps, with the parts of the flanks that are above the level.
double LengthOf(std::span<const double> magnitudes, const TRun& run, double level) {
  const auto part = [=](double inside, double outside) { return (inside - level) / (inside - outside); };
  auto length = static_cast<double>(run.Count() - 1);
  if (run.first > 0) length += part(magnitudes[run.first], magnitudes[run.first - 1]);
  if (run.last + 1 < magnitudes.size()) length += part(magnitudes[run.last], magnitudes[run.last + 1]);
  return length;
}

// The area in g·steps.
double Area(std::span<const double> axis, const TRun& run) {
  double area = 0;
  for (std::size_t i = run.first; i < run.last; ++i) area += (axis[i] + axis[i + 1]) / 2;
  return area;
}

// A fit to the grid may be interpolated, so the recorded samples tell whether they stand at the end of the range.
bool IsRunClipped(std::span<const TEventValue> samples, const TTimeGrid& grid, const TRun& run) {
  const auto first = std::ranges::lower_bound(grid.places, run.first) - grid.places.begin();
  const auto end = std::ranges::upper_bound(grid.places, run.last) - grid.places.begin();
  return IsClipped(samples.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)));
}

double LengthOf(const TGridValue& vector) {
  return std::sqrt(vector.x * vector.x + vector.y * vector.y + vector.z * vector.z);
}

}  // namespace

TDirection NearestDirection(const TGridValue& vector) {
  const std::array<double, 3> parts = {std::fabs(vector.x), std::fabs(vector.y), std::fabs(vector.z)};
  std::array<std::size_t, 3> order = {0, 1, 2};
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return parts[a] > parts[b]; });
  // The nearest face, edge and corner are those of the largest parts.
  const double sum1 = parts[order[0]];
  const double sum2 = (sum1 + parts[order[1]]) / std::numbers::sqrt2;
  const double sum3 = (sum1 + parts[order[1]] + parts[order[2]]) / std::numbers::sqrt3;
  if (!(sum1 > 0) || !std::isfinite(sum3)) return {};
  const std::size_t count = sum1 >= sum2 && sum1 >= sum3 ? 1 : sum2 >= sum3 ? 2 : 3;
  std::array<std::int8_t, 3> signs{};
  const std::array<double, 3> values = {vector.x, vector.y, vector.z};
  for (std::size_t i = 0; i < count; ++i) signs[order[i]] = values[order[i]] < 0 ? -1 : 1;
  return {signs[0], signs[1], signs[2]};
}

std::string DirectionText(const TDirection& direction) {
  std::string text;
  const std::pair<char, std::int8_t> axes[] = {{'X', direction.x}, {'Y', direction.y}, {'Z', direction.z}};
  for (const auto& [name, sign] : axes) {
    if (sign != 0) text += fmt::format("{}{}-{}", text.empty() ? "" : " ", name, sign > 0 ? "pos" : "neg");
  }
  return text.empty() ? "unclear" : text;
}

TPulse CalcPulse(std::span<const TEventValue> samples, const TShockSamples& shock) {
  TPulse pulse;
  const auto refused = [&pulse](TPulseProblem problem) {
    pulse.problem = problem;
    return pulse;
  };
  if (shock.Count() == 0) return refused(TPulseProblem::NoGrid);
  const std::vector<double> magnitudes = Magnitudes(shock);
  if (!std::isfinite(magnitudes.front())) return refused(TPulseProblem::NotFinite);
  const auto peak = static_cast<std::size_t>(std::ranges::max_element(magnitudes) - magnitudes.begin());
  pulse.peak = magnitudes[peak];
  if (!(pulse.peak > 0)) return refused(TPulseProblem::NoPeak);
  const TRun run = RunAround(magnitudes, peak, pulse.peak / 10);
  if (run.Count() < kMinPulseSamples) return refused(TPulseProblem::TooShort);
  if (IsRunClipped(samples, shock.grid, run)) return refused(TPulseProblem::Clipped);

  const TRun flanked = {run.first - (run.first > 0 ? 1 : 0), std::min(run.last + 1, shock.Count() - 1)};
  const double scale = kStandardGravity / shock.Rate();
  pulse.velocity = {scale * Area(shock.x, flanked), scale * Area(shock.y, flanked), scale * Area(shock.z, flanked)};
  pulse.velocityChange = LengthOf(pulse.velocity);
  pulse.durationTenth = LengthOf(magnitudes, run, pulse.peak / 10) * shock.grid.stepMs;
  pulse.durationThird =
      LengthOf(magnitudes, RunAround(magnitudes, peak, pulse.peak / 3), pulse.peak / 3) * shock.grid.stepMs;
  pulse.halfSine = 1000 * std::numbers::pi * pulse.velocityChange / (2 * pulse.peak * kStandardGravity);
  pulse.direction = NearestDirection(pulse.velocity);
  if (pulse.direction != NearestDirection({shock.x[peak], shock.y[peak], shock.z[peak]})) pulse.direction = {};
  pulse.problem = TPulseProblem::None;
  return pulse;
}

std::string WhyNoPulse(const TPulse& pulse, const TShockSamples& shock) {
  switch (pulse.problem) {
    case TPulseProblem::None:
      break;
    case TPulseProblem::NoGrid:
      return WhyNoGrid(shock.grid);
    case TPulseProblem::NotFinite:
      return "A sample is no finite number.";
    case TPulseProblem::NoPeak:
      return "All samples are 0.";
    case TPulseProblem::TooShort:
      return fmt::format("Fewer than {} samples lie in the pulse.", kMinPulseSamples);
    case TPulseProblem::Clipped:
      return "The pulse is clipped: the sensor was at the end of its range.";
  }
  return {};
}
