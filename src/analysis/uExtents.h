// The least and the largest of any part of a long series, without walking over all of it. Any thread.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

// What finite values span; without one `least` lies above `largest`.
struct TExtent {
  float least = std::numeric_limits<float>::infinity();
  float largest = -std::numeric_limits<float>::infinity();

  [[nodiscard]] bool IsEmpty() const { return least > largest; }
  void Take(const TExtent& other) {
    least = std::min(least, other.least);
    largest = std::max(largest, other.largest);
  }
};

// Keeps the extent of each block of values. It keeps no values: whoever asks hands in the same valueAt(i) again. Of a
// series that was never appended it knows nothing and looks at every value that is asked about.
class TExtents {
 public:
  static constexpr std::size_t kBlock = 64;

  void Clear() { FBlocks.clear(); }
  // Takes the first `count` values of a series, in place of what there is.
  template <class TValueAt>
  void Set(std::size_t count, const TValueAt& valueAt);
  // Takes the next block of a series, kBlock values unless it is the last.
  template <class TValueAt>
  void Append(std::size_t count, const TValueAt& valueAt);
  [[nodiscard]] TExtent Whole() const;

  struct TPlaces {
    std::size_t least, largest;  // the first of each
  };
  // Of the finite values of [from, to).
  template <class TValueAt>
  [[nodiscard]] std::optional<TPlaces> Find(std::size_t from, std::size_t to, const TValueAt& valueAt) const;
  // The first and the last finite value of [from, to); `to` when there is none.
  template <class TValueAt>
  [[nodiscard]] std::size_t FirstFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;
  template <class TValueAt>
  [[nodiscard]] std::size_t LastFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;

 private:
  // The whole block [begin, begin + kBlock) holds no finite value.
  [[nodiscard]] bool IsEmptyBlock(std::size_t begin) const {
    return begin % kBlock == 0 && begin / kBlock < FBlocks.size() && FBlocks[begin / kBlock].IsEmpty();
  }

  std::vector<TExtent> FBlocks;
};

template <class TValueAt>
void TExtents::Set(std::size_t count, const TValueAt& valueAt) {
  FBlocks.clear();
  FBlocks.reserve(count / kBlock + 1);
  for (std::size_t begin = 0; begin < count; begin += kBlock) Append(std::min(kBlock, count - begin), valueAt);
}

template <class TValueAt>
void TExtents::Append(std::size_t count, const TValueAt& valueAt) {
  const std::size_t begin = FBlocks.size() * kBlock;
  const auto extent = [&](const auto& takes) {
    TExtent found;
    for (std::size_t i = begin; i < begin + count; ++i) {
      const float value = valueAt(i);
      found.least = takes(value) && value < found.least ? value : found.least;
      found.largest = takes(value) && value > found.largest ? value : found.largest;
    }
    return found;
  };
  // Comparing leaves NaN out by itself; infinities are rare.
  TExtent found = extent([](float) { return true; });
  const float infinity = std::numeric_limits<float>::infinity();
  if (found.least == -infinity || found.largest == infinity) found = extent([](float v) { return std::isfinite(v); });
  FBlocks.push_back(found);
}

inline TExtent TExtents::Whole() const {
  TExtent whole;
  for (const TExtent& block : FBlocks) whole.Take(block);
  return whole;
}

template <class TValueAt>
std::optional<TExtents::TPlaces> TExtents::Find(std::size_t from, std::size_t to, const TValueAt& valueAt) const {
  TPlaces places{to, to};
  TExtent found;
  const auto look = [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      const float value = valueAt(i);
      if (!std::isfinite(value)) continue;
      if (value < found.least) {
        found.least = value;
        places.least = i;
      }
      if (value > found.largest) {
        found.largest = value;
        places.largest = i;
      }
    }
  };
  const std::size_t first = (from + kBlock - 1) / kBlock;
  const std::size_t last = std::min(to / kBlock, FBlocks.size());
  if (first >= last) {
    look(from, to);
  } else {
    look(from, first * kBlock);
    std::size_t leastBlock = last;
    std::size_t largestBlock = last;
    TExtent blocks = found;
    for (std::size_t i = first; i < last; ++i) {
      if (FBlocks[i].least < blocks.least) leastBlock = i;
      if (FBlocks[i].largest > blocks.largest) largestBlock = i;
      blocks.Take(FBlocks[i]);
    }
    // In order, so that of equals the first is found.
    if (leastBlock > largestBlock) std::swap(leastBlock, largestBlock);
    if (leastBlock < last) look(leastBlock * kBlock, (leastBlock + 1) * kBlock);
    if (largestBlock < last && largestBlock != leastBlock) look(largestBlock * kBlock, (largestBlock + 1) * kBlock);
    look(last * kBlock, to);
  }
  if (places.least == to) return std::nullopt;
  return places;
}

template <class TValueAt>
std::size_t TExtents::FirstFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const {
  while (from < to && !std::isfinite(valueAt(from))) from += IsEmptyBlock(from) ? kBlock : 1;
  return std::min(from, to);
}

template <class TValueAt>
std::size_t TExtents::LastFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const {
  for (std::size_t i = to; i > from;) {
    if (std::isfinite(valueAt(i - 1))) return i - 1;
    const bool skips = i >= kBlock && IsEmptyBlock(i - kBlock);
    i = skips ? std::max(i - kBlock, from) : i - 1;
  }
  return to;
}
