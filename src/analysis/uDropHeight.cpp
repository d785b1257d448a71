#include "analysis/uDropHeight.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kMinRestSamples = 8;
constexpr std::size_t kRestPart = 10;  // the last tenth of the record
constexpr double kMinRest = 0.7;       // g
constexpr double kMaxRest = 1.3;

bool EndsAtRest(std::span<const double> magnitudes) {
  const std::size_t count = std::max(kMinRestSamples, magnitudes.size() / kRestPart);
  if (count > magnitudes.size()) return false;
  return std::ranges::all_of(magnitudes.last(count),
                             [](double magnitude) { return magnitude >= kMinRest && magnitude <= kMaxRest; });
}

struct TFallRun {
  std::size_t first = 0, count = 0;
};

// The longest before the peak, the last one of several.
TFallRun LongestBelow(std::span<const double> magnitudes, double level) {
  const auto peak = static_cast<std::size_t>(std::ranges::max_element(magnitudes) - magnitudes.begin());
  TFallRun longest;
  TFallRun run;
  for (std::size_t i = 0; i < peak; ++i) {
    if (!(magnitudes[i] < level)) {
      run = {i + 1, 0};
      continue;
    }
    ++run.count;
    if (run.count >= longest.count) longest = run;
  }
  return longest;
}

double HeightOf(double seconds) {
  return 1000 * kStandardGravity * seconds * seconds / 2;
}

}  // namespace

TFall CalcFall(const TShockSamples& shock) {
  TFall fall;
  if (shock.Count() == 0) return fall;
  const std::vector<double> magnitudes = Magnitudes(shock);
  if (!std::isfinite(magnitudes.front())) return fall;
  fall.problem = TFallProblem::NotAtRest;
  if (!EndsAtRest(magnitudes)) return fall;
  fall.problem = TFallProblem::NoFall;
  const TFallRun run = LongestBelow(magnitudes, kFallLevel);
  if (run.count < kMinFallSamples) return fall;
  fall.problem = TFallProblem::None;
  fall.isLeast = run.first == 0;
  const auto steps = static_cast<double>(run.count);
  const double step = 1 / shock.Rate();
  fall.min = HeightOf((steps - 1) * step);
  fall.height = fall.isLeast ? fall.min : HeightOf(steps * step);
  fall.max = fall.isLeast ? std::numeric_limits<double>::infinity() : HeightOf((steps + 1) * step);
  return fall;
}

TDropBracket DropBracketOf(double velocityChange) {
  const double square = 1000 * velocityChange * velocityChange / kStandardGravity;
  return {square / 8, square / 2};
}

std::string WhyNoFall(const TFall& fall) {
  if (fall.problem == TFallProblem::NotAtRest) {
    return "It cannot tell rest from fall: there is not about 1 g after the event.";
  }
  if (fall.problem == TFallProblem::NoFall) return "There is no free fall before the shock.";
  return {};  // without samples the pulse says why
}
