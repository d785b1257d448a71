// What of a long series is drawn when many samples share one column of pixels. Pure functions; any thread.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "analysis/uExtents.h"

struct TEnvelopePoint {
  double key;
  float value;  // NaN: the line breaks here
};

// The samples of [from, to], taken column by column of equal width.
struct TColumns {
  double from, to;
  std::size_t count;

  // What has no columns, or no order of finite ends, gives nothing.
  [[nodiscard]] bool Valid() const { return count > 0 && to >= from && std::isfinite(to - from); }
};

// Calls visit(begin, end) with the samples of each column that holds any, in order. keyAt(i) of the `count` samples
// does not fall with i.
template <class TKeyAt, class TVisit>
void VisitColumns(std::size_t count, const TKeyAt& keyAt, const TColumns& columns, const TVisit& visit);

// Of each column the first, least, largest and last sample in their order, so that a line through the points covers
// what a line through all samples covers, to a pixel. One neighbour outside on each side lets the line run to the edge.
// Values that are not finite break the line. `points` is overwritten; its memory is used again. With the extents of the
// series what it costs does not grow with the samples.
template <class TKeyAt, class TValueAt>
void Envelope(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt, const TExtents& extents,
              const TColumns& columns, std::vector<TEnvelopePoint>& points);
std::vector<TEnvelopePoint> Envelope(std::span<const double> keys, std::span<const float> values, double from,
                                     double to, std::size_t columns);

// Of each column the first of the largest finite values, as its number; a column without one is left out.
template <class TKeyAt, class TValueAt>
void ColumnPeaks(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt, const TExtents& extents,
                 const TColumns& columns, std::vector<std::size_t>& peaks);
std::vector<std::size_t> ColumnPeaks(std::span<const double> keys, std::span<const float> values, double from,
                                     double to, std::size_t columns);

// The first of `count` samples whose key is at or after `key`, or `count`.
template <class TKeyAt>
std::size_t FirstAtOrAfter(std::size_t count, const TKeyAt& keyAt, double key) {
  std::size_t begin = 0;
  while (begin < count) {
    const std::size_t middle = begin + (count - begin) / 2;
    if (keyAt(middle) < key) {
      begin = middle + 1;
    } else {
      count = middle;
    }
  }
  return begin;
}

template <class TKeyAt, class TVisit>
void VisitColumns(std::size_t count, const TKeyAt& keyAt, const TColumns& columns, const TVisit& visit) {
  if (!columns.Valid()) return;
  const double width = (columns.to - columns.from) / static_cast<double>(columns.count);
  std::size_t i = FirstAtOrAfter(count, keyAt, columns.from);
  while (i < count && keyAt(i) <= columns.to) {
    const double column = std::floor((keyAt(i) - columns.from) / width);
    // The last column is closed: it takes what stands at the end of the span. A span without width is one column.
    const bool last = !(column + 1 < static_cast<double>(columns.count));
    const double columnEnd = last ? std::nextafter(columns.to, std::numeric_limits<double>::infinity())
                                  : columns.from + (column + 1) * width;
    const std::size_t begin = i;
    // The end is near where there are few samples, and found in ever longer steps where there are many.
    std::size_t step = 1;
    for (; i + step < count && keyAt(i + step) < columnEnd; step *= 2) i += step;
    const std::size_t next = i + 1;
    i = next + FirstAtOrAfter(
                   std::min(step - 1, count - next), [&](std::size_t k) { return keyAt(next + k); }, columnEnd);
    visit(begin, i);
  }
}

template <class TKeyAt, class TValueAt>
void Envelope(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt, const TExtents& extents,
              const TColumns& columns, std::vector<TEnvelopePoint>& points) {
  points.clear();
  if (!columns.Valid()) return;
  bool gap = false;  // before the next point
  const auto add = [&](std::size_t i) {
    if (gap && !points.empty()) points.push_back({keyAt(i), std::numeric_limits<float>::quiet_NaN()});
    gap = false;
    points.push_back({keyAt(i), valueAt(i)});
  };
  const auto addNeighbour = [&](std::size_t i) {
    if (std::isfinite(valueAt(i))) add(i);
  };

  const std::size_t begin = FirstAtOrAfter(count, keyAt, columns.from);
  std::size_t end = begin;
  if (begin > 0) addNeighbour(begin - 1);
  VisitColumns(count, keyAt, columns, [&](std::size_t from, std::size_t to) {
    end = to;
    const std::size_t first = extents.FirstFinite(from, to, valueAt);
    if (first != from) gap = true;
    const auto found = extents.Find(first, to, valueAt);
    if (!found) return;
    const std::size_t last = extents.LastFinite(first, to, valueAt);
    const auto [lower, upper] = std::minmax(found->least, found->largest);
    const std::array<std::size_t, 4> kept = {first, lower, upper, last};
    for (std::size_t k = 0; k < kept.size(); ++k) {
      if (k == 0 || kept[k] != kept[k - 1]) add(kept[k]);
    }
    gap = last + 1 != to;
  });
  if (end < count) addNeighbour(end);
}

template <class TKeyAt, class TValueAt>
void ColumnPeaks(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt, const TExtents& extents,
                 const TColumns& columns, std::vector<std::size_t>& peaks) {
  peaks.clear();
  VisitColumns(count, keyAt, columns, [&](std::size_t from, std::size_t to) {
    if (const auto found = extents.Find(from, to, valueAt)) peaks.push_back(found->largest);
  });
}
