// Minimum and maximum of any part of a long series, without a walk over all of it. Any thread.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
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

  // The first minimum and the first maximum of the finite values of [from, to); `to` without one.
  template <class TValueAt>
  [[nodiscard]] std::size_t FirstMin(std::size_t from, std::size_t to, const TValueAt& valueAt) const {
    return First(from, to, valueAt, &TExtent::min, std::less<float>());
  }
  template <class TValueAt>
  [[nodiscard]] std::size_t FirstMax(std::size_t from, std::size_t to, const TValueAt& valueAt) const {
    return First(from, to, valueAt, &TExtent::max, std::greater<float>());
  }
  // The first and the last finite value of [from, to); `to` without one.
  template <class TValueAt>
  [[nodiscard]] std::size_t FirstFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;
  template <class TValueAt>
  [[nodiscard]] std::size_t LastFinite(std::size_t from, std::size_t to, const TValueAt& valueAt) const;

 private:
  template <class TValueAt, class TIsBeyond>
  [[nodiscard]] std::size_t First(std::size_t from, std::size_t to, const TValueAt& valueAt, float TExtent::*end,
                                  const TIsBeyond& isBeyond) const;
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

template <class TValueAt, class TIsBeyond>
std::size_t TExtents::First(std::size_t from, std::size_t to, const TValueAt& valueAt, float TExtent::*end,
                            const TIsBeyond& isBeyond) const {
  std::size_t place = to;
  float found = TExtent().*end;
  const auto look = [&](std::size_t begin, std::size_t behind) {
    for (std::size_t i = begin; i < behind; ++i) {
      const float value = valueAt(i);
      if (!isBeyond(value, found) || !std::isfinite(value)) continue;
      found = value;
      place = i;
    }
  };
  const std::size_t first = (from + kBlock - 1) / kBlock;
  const std::size_t last = std::min(to / kBlock, FBlocks.size());
  if (first >= last) {
    look(from, to);
    return place;
  }
  std::size_t block = last;
  float inside = found;
  for (std::size_t i = first; i < last; ++i) {
    if (!isBeyond(FBlocks[i].*end, inside)) continue;
    inside = FBlocks[i].*end;
    block = i;
  }
  // A part of a block is looked at only if its block has such a value. In order, so that the first of equal values is
  // found.
  if (from < first * kBlock && !isBeyond(inside, FBlocks[first - 1].*end)) look(from, first * kBlock);
  if (isBeyond(inside, found)) {
    found = inside;
    place = block * kBlock;
    while (place + 1 < (block + 1) * kBlock && valueAt(place) != inside) ++place;
  }
  if (last == FBlocks.size() || isBeyond(FBlocks[last].*end, found)) look(last * kBlock, to);
  return place;
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
