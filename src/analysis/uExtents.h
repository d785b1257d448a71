// Minimum and maximum of any part of a long series, without a walk over all of it. Any thread.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

// Minimum and maximum of the finite values; without one, min is above max.
struct TExtent {
  float min = std::numeric_limits<float>::infinity();
  float max = -std::numeric_limits<float>::infinity();

  [[nodiscard]] bool IsEmpty() const { return min > max; }
  [[nodiscard]] bool IsFinite() const { return std::isfinite(min) && std::isfinite(max); }
  // NaN changes nothing; an infinity becomes an end.
  void Include(float value) {
    min = value < min ? value : min;
    max = value > max ? value : max;
  }
  void Include(const TExtent& other) {
    min = std::min(min, other.min);
    max = std::max(max, other.max);
  }
};

// Keeps the extent of each block of a series, but no values: callers pass the same valueAt(i) to each function. Where
// no block was appended, every value asked about is looked at.
class TExtents {
 public:
  static constexpr std::size_t kBlock = 64;

  void Clear() { FBlocks.clear(); }
  // Replaces all blocks by those of a series of `count` values.
  template <class TValueAt>
  void Set(std::size_t count, const TValueAt& valueAt);
  // Appends the next block: the extent of the finite ones of its kBlock values; the last block may have fewer.
  void Append(const TExtent& block) { FBlocks.push_back(block); }
  // Of all blocks.
  [[nodiscard]] TExtent Whole() const;
  // The extent of a sample's block; nothing where no block was appended.
  [[nodiscard]] const TExtent* BlockOf(std::size_t sample) const {
    return sample / kBlock < FBlocks.size() ? &FBlocks[sample / kBlock] : nullptr;
  }

  struct TPlaces {
    std::size_t min, max;  // the first of each
  };
  // Of the finite values of [from, to); nothing without one.
  template <class TValueAt>
  [[nodiscard]] std::optional<TPlaces> Find(std::size_t from, std::size_t to, const TValueAt& valueAt) const;
  // The first and the last finite value of [from, to); `to` without one.
  template <class TValueAt>
  [[nodiscard]] std::size_t FirstFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;
  template <class TValueAt>
  [[nodiscard]] std::size_t LastFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;

 private:
  struct TExtremes {
    TExtent extent;
    std::size_t minBlock, maxBlock;  // the first with each; `last` where all are empty
  };
  // Of the blocks [first, last).
  [[nodiscard]] TExtremes ExtremesOf(std::size_t first, std::size_t last) const;
  // The whole block [begin, begin + kBlock) holds no finite value.
  [[nodiscard]] bool IsEmptyBlock(std::size_t begin) const {
    return begin % kBlock == 0 && begin / kBlock < FBlocks.size() && FBlocks[begin / kBlock].IsEmpty();
  }

  std::vector<TExtent> FBlocks;
};

// The extent of the values of [from, to).
template <class TValueAt>
TExtent FiniteExtent(std::size_t from, std::size_t to, const TValueAt& valueAt) {
  TExtent extent;
  for (std::size_t i = from; i < to; ++i) extent.Include(valueAt(i));
  if (extent.IsFinite()) return extent;
  // Infinities are rare, so only a block that has one is walked twice.
  extent = {};
  for (std::size_t i = from; i < to; ++i) {
    if (std::isfinite(valueAt(i))) extent.Include(valueAt(i));
  }
  return extent;
}

template <class TValueAt>
void TExtents::Set(std::size_t count, const TValueAt& valueAt) {
  FBlocks.clear();
  FBlocks.reserve(count / kBlock + 1);
  for (std::size_t begin = 0; begin < count; begin += kBlock) {
    Append(FiniteExtent(begin, std::min(begin + kBlock, count), valueAt));
  }
}

inline TExtent TExtents::Whole() const {
  TExtent whole;
  for (const TExtent& block : FBlocks) whole.Include(block);
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
      if (value < found.min) {
        found.min = value;
        places.min = i;
      }
      if (value > found.max) {
        found.max = value;
        places.max = i;
      }
    }
  };
  const std::size_t first = (from + kBlock - 1) / kBlock;
  const std::size_t last = std::min(to / kBlock, FBlocks.size());
  if (first < last) {
    const auto [inside, minBlock, maxBlock] = ExtremesOf(first, last);
    const auto placeIn = [&](std::size_t block, float value) {
      std::size_t i = block * kBlock;
      while (i + 1 < (block + 1) * kBlock && valueAt(i) != value) ++i;
      return i;
    };
    // A part of a block is looked at only if its block has such a value. In order, so that the first of equal values is
    // found.
    const bool looks =
        from < first * kBlock && (FBlocks[first - 1].min <= inside.min || FBlocks[first - 1].max >= inside.max);
    if (looks) look(from, first * kBlock);
    if (inside.min < found.min) places.min = placeIn(minBlock, found.min = inside.min);
    if (inside.max > found.max) places.max = placeIn(maxBlock, found.max = inside.max);
    const bool isKnown = last < FBlocks.size();
    if (!isKnown || FBlocks[last].min < found.min || FBlocks[last].max > found.max) look(last * kBlock, to);
  } else {
    look(from, to);
  }
  if (places.min == to) return std::nullopt;
  return places;
}

inline TExtents::TExtremes TExtents::ExtremesOf(std::size_t first, std::size_t last) const {
  TExtremes extremes{{}, last, last};
  for (std::size_t i = first; i < last; ++i) {
    if (FBlocks[i].min < extremes.extent.min) extremes.minBlock = i;
    if (FBlocks[i].max > extremes.extent.max) extremes.maxBlock = i;
    extremes.extent.Include(FBlocks[i]);
  }
  return extremes;
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
