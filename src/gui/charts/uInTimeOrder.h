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
#include <vector>

// Borrows samples that are in order, as nearly all are; sorts a copy of others, stable. Samples without a finite time
// are left out.
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
    // Rising times between two finite ones are finite.
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

// Of `count` samples in the order of time, the one with the smallest distance(i) from a position, in px; none where no
// distance is finite. across(i) is the distance along the time axis; it grows on both sides of `start`, the sample
// nearest in time. Where very many samples share a pixel, only those nearest in time are looked at.
template <class TAcross, class TDistance>
std::optional<std::size_t> NearestOnScreen(std::size_t count, std::size_t start, const TAcross& across,
                                           const TDistance& distance) {
  constexpr std::size_t kMaxSteps = 8000;  // on each side
  std::optional<std::size_t> nearest;
  double min = std::numeric_limits<double>::infinity();
  // False if all samples beyond are farther away.
  const auto look = [&](std::size_t i) {
    if (across(i) >= min) return false;
    const double found = distance(i);
    if (found < min) {
      min = found;
      nearest = i;
    }
    return true;
  };
  for (std::size_t i = start; i < count && i - start < kMaxSteps && look(i);) ++i;
  for (std::size_t i = start; i > 0 && start - i < kMaxSteps && look(i - 1);) --i;
  return nearest;
}
