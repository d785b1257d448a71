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

#include "analysis/uExtents.h"

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

// Of `count` samples in the order of time, the one nearest to a position on the screen; none where no distance is
// finite. across(i) and up(i) are the distances along both axes, in px. across(i) grows on both sides of `start`, the
// sample nearest in time, and up(k) is at least atLeast(i) for each k of the block of i. Where very many samples share
// a pixel, only those nearest in time are looked at.
template <class TAcross, class TUp, class TAtLeast>
std::optional<std::size_t> NearestOnScreen(std::size_t count, std::size_t start, const TAcross& across, const TUp& up,
                                           const TAtLeast& atLeast) {
  constexpr std::size_t kMaxSteps = 8000;  // on each side
  std::optional<std::size_t> nearest;
  double min = std::numeric_limits<double>::infinity();
  const auto look = [&](std::size_t begin, std::size_t end) {
    if (atLeast(begin) >= min) return;
    for (std::size_t i = begin; i < end; ++i) {
      const double y = up(i);
      if (!(y < min)) continue;
      const double x = across(i);
      const double found = std::sqrt(x * x + y * y);  // pixels do not overflow, and thousands are asked for
      if (found >= min) continue;
      min = found;
      nearest = i;
    }
  };
  // By blocks, so that most samples cost a comparison.
  const std::size_t last = std::min(count, start + kMaxSteps);
  for (std::size_t begin = start; begin < last && across(begin) < min;) {
    const std::size_t end = std::min(last, (begin / TExtents::kBlock + 1) * TExtents::kBlock);
    look(begin, end);
    begin = end;
  }
  const std::size_t first = start - std::min(start, kMaxSteps);
  for (std::size_t end = start; end > first && across(end - 1) < min;) {
    const std::size_t begin = std::max(first, (end - 1) / TExtents::kBlock * TExtents::kBlock);
    look(begin, end);
    end = begin;
  }
  return nearest;
}
