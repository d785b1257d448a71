// Samples in the order of their times, for charts. Main thread only.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

// Borrows samples that are in order, as nearly all are; of others it keeps a copy, in stable order. What has no finite
// time is left out.
template <class TSample>
class TInTimeOrder {
 public:
  TInTimeOrder() = default;
  TInTimeOrder(TInTimeOrder&&) noexcept = default;
  TInTimeOrder& operator=(TInTimeOrder&&) noexcept = default;

  void Set(std::span<const TSample> samples) {
    Clear();
    FSamples = samples;
    const auto finite = [](const TSample& sample) { return std::isfinite(sample.time); };
    // Times that rise between two finite ones are finite.
    const auto rises = [](const TSample& before, const TSample& after) { return before.time <= after.time; };
    const bool inOrder = std::ranges::adjacent_find(samples, std::not_fn(rises)) == samples.end();
    if (inOrder && (samples.empty() || (finite(samples.front()) && finite(samples.back())))) return;
    std::ranges::copy_if(samples, std::back_inserter(FCopy), finite);
    std::ranges::stable_sort(FCopy, {}, &TSample::time);
    FSamples = FCopy;
  }
  void Clear() {
    FSamples = {};
    FCopy = {};
  }
  [[nodiscard]] std::span<const TSample> Samples() const { return FSamples; }

  // The sample nearest to a time; there is one.
  [[nodiscard]] std::size_t Nearest(double time) const {
    const auto after = std::ranges::lower_bound(FSamples, time, {}, &TSample::time);
    const auto index = static_cast<std::size_t>(after - FSamples.begin());
    if (index == 0) return 0;
    if (index == FSamples.size()) return index - 1;
    return time - FSamples[index - 1].time <= FSamples[index].time - time ? index - 1 : index;
  }

 private:
  std::span<const TSample> FSamples;
  std::vector<TSample> FCopy;
};

// Of `count` samples in the order of time the one with the least distance(i) px from a position; none where no
// distance is finite. across(i) px is the part of it along the axis of time; it grows on both sides of `start`, which
// is the sample nearest in time. Where very many share a pixel only the nearest of them are looked at.
template <class TAcross, class TDistance>
std::optional<std::size_t> NearestOnScreen(std::size_t count, std::size_t start, const TAcross& across,
                                           const TDistance& distance) {
  constexpr std::size_t kMostSteps = 20000;  // on each side
  std::optional<std::size_t> nearest;
  double least = std::numeric_limits<double>::infinity();
  // False where all beyond is farther away.
  const auto look = [&](std::size_t i) {
    if (across(i) >= least) return false;
    const double found = distance(i);
    if (found < least) {
      least = found;
      nearest = i;
    }
    return true;
  };
  for (std::size_t i = start; i < count && i - start < kMostSteps && look(i);) ++i;
  for (std::size_t i = start; i > 0 && start - i < kMostSteps && look(i - 1);) --i;
  return nearest;
}

// A view in the samples' own time, widened by what converting it there may have cost, so that what stands at its ends
// stays in it. `size` is that of the times that were added up.
inline std::pair<double, double> WithRounding(double from, double to, double size) {
  const double rounding = 4 * std::numeric_limits<double>::epsilon() * size;
  return {from - rounding, to + rounding};
}
