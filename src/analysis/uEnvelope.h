// The points to draw of a long series when many samples share one column of pixels. Pure functions; any thread.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "analysis/uExtents.h"
#include "base/uTimeSpan.h"

struct TEnvelopePoint {
  double key;
  float value;  // NaN: the line breaks here
};

// Columns of equal width over a span of keys.
struct TColumns {
  TTimeSpan span;
  std::size_t count;

  // Without columns, or without two finite ends in order, every function below gives nothing.
  [[nodiscard]] bool IsValid() const { return count > 0 && span.IsValid() && std::isfinite(span.Width()); }
};

// Calls visit(begin, end) with the samples of each column that has some, in order. keyAt(i) of the `count` samples
// does not fall with i.
template <class TKeyAt, class TVisit>
void VisitColumns(std::size_t count, const TKeyAt& keyAt, const TColumns& columns, const TVisit& visit);

// No two samples are too far apart for a line between them.
inline constexpr double kNoGap = std::numeric_limits<double>::infinity();

// The first, minimum, maximum and last sample of each column in their order: a line through these points covers the
// same pixels as a line through all samples. One neighbour outside on each side lets the line run to the edge. Values
// that are not finite break the line, as do neighbouring samples that are farther apart than maxStep. With the extents
// of the series the cost does not grow with the samples.
template <class TKeyAt, class TValueAt>
std::vector<TEnvelopePoint> Envelope(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt,
                                     const TExtents& extents, const TColumns& columns, double maxStep = kNoGap);

// The first maximum of the finite values of each column, by its index; a column without one is left out.
template <class TKeyAt, class TValueAt>
std::vector<std::size_t> ColumnPeaks(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt,
                                     const TExtents& extents, const TColumns& columns);

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

// The same among the samples from `begin` on. Fast where the answer is near `guess`, which is in [begin, count].
template <class TKeyAt>
std::size_t FirstAtOrAfterNear(std::size_t guess, std::size_t begin, std::size_t count, const TKeyAt& keyAt,
                               double key) {
  // The answer is in [begin, count]. Steps that double lead from the guess to a sample on its other side.
  std::size_t step = 1;
  if (guess < count && keyAt(guess) < key) {
    begin = guess + 1;
    for (; count - begin >= step && keyAt(begin + step - 1) < key; step *= 2) begin += step;
    count = std::min(begin + step, count);
  } else {
    count = guess;
    for (; count - begin >= step && !(keyAt(count - step) < key); step *= 2) count -= step;
    begin = count - std::min(step, count - begin);
  }
  return begin + FirstAtOrAfter(
                     count - begin, [&](std::size_t i) { return keyAt(begin + i); }, key);
}

template <class TKeyAt, class TVisit>
void VisitColumns(std::size_t count, const TKeyAt& keyAt, const TColumns& columns, const TVisit& visit) {
  if (!columns.IsValid()) return;
  const double width = columns.span.Width() / static_cast<double>(columns.count);
  std::size_t i = FirstAtOrAfter(count, keyAt, columns.span.start);
  std::size_t size = 1;  // of the column before; the next one is about as large
  while (i < count && keyAt(i) <= columns.span.end) {
    const double column = std::floor((keyAt(i) - columns.span.start) / width);
    // The last column includes the end of the span. A span without width is one column.
    const bool last = !(column + 1 < static_cast<double>(columns.count));
    const double columnEnd = last ? std::nextafter(columns.span.end, std::numeric_limits<double>::infinity())
                                  : columns.span.start + (column + 1) * width;
    const std::size_t begin = i;
    const std::size_t guess = begin + std::min(size, count - begin);
    i = FirstAtOrAfterNear(guess, begin + 1, count, keyAt, columnEnd);
    size = i - begin;
    visit(begin, i);
  }
}

template <class TKeyAt, class TValueAt>
std::vector<TEnvelopePoint> Envelope(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt,
                                     const TExtents& extents, const TColumns& columns, double maxStep) {
  std::vector<TEnvelopePoint> points;
  if (!columns.IsValid()) return points;
  points.reserve(std::min(count, columns.count * 4) + 2);
  bool gap = false;  // before the next point
  const auto add = [&](std::size_t i) {
    // Within a column a gap is narrower than a pixel.
    if (i > 0 && keyAt(i) - keyAt(i - 1) > maxStep) gap = true;
    if (gap && !points.empty()) points.push_back({keyAt(i), std::numeric_limits<float>::quiet_NaN()});
    gap = false;
    points.push_back({keyAt(i), valueAt(i)});
  };
  const auto addNeighbour = [&](std::size_t i) {
    if (std::isfinite(valueAt(i))) add(i);
  };

  const std::size_t begin = FirstAtOrAfter(count, keyAt, columns.span.start);
  std::size_t end = begin;
  if (begin > 0) addNeighbour(begin - 1);
  VisitColumns(count, keyAt, columns, [&](std::size_t from, std::size_t to) {
    end = to;
    const std::size_t first = extents.FirstFinite(from, to, valueAt);
    if (first != from) gap = true;
    if (first == to) return;
    const std::size_t last = extents.LastFinite(first, to, valueAt);
    const auto [lower, upper] =
        std::minmax({extents.FirstMin(first, to, valueAt), extents.FirstMax(first, to, valueAt)});
    const std::array<std::size_t, 4> kept = {first, lower, upper, last};
    for (std::size_t k = 0; k < kept.size(); ++k) {
      if (k == 0 || kept[k] != kept[k - 1]) add(kept[k]);
    }
    gap = last + 1 != to;
  });
  if (end < count) addNeighbour(end);
  return points;
}

template <class TKeyAt, class TValueAt>
std::vector<std::size_t> ColumnPeaks(std::size_t count, const TKeyAt& keyAt, const TValueAt& valueAt,
                                     const TExtents& extents, const TColumns& columns) {
  std::vector<std::size_t> peaks;
  VisitColumns(count, keyAt, columns, [&](std::size_t from, std::size_t to) {
    const std::size_t peak = extents.FirstMax(from, to, valueAt);
    if (peak != to) peaks.push_back(peak);
  });
  return peaks;
}
