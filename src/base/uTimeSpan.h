// A span between two times, or in a spectrum between two frequencies. Both ends are in one unit, which the user of the
// span names.
#pragma once

#include <algorithm>
#include <cmath>

struct TTimeSpan {
  double start;
  double end;  // not before start, unless the user of the span says so
  bool operator==(const TTimeSpan&) const = default;

  [[nodiscard]] double Width() const { return end - start; }
  [[nodiscard]] double Middle() const { return (start + end) / 2; }
  [[nodiscard]] bool IsFinite() const { return std::isfinite(start) && std::isfinite(end); }
  // Finite, and the ends are in order.
  [[nodiscard]] bool IsValid() const { return IsFinite() && start <= end; }
  // Grows so that it includes the other.
  void Include(const TTimeSpan& other) {
    start = std::min(start, other.start);
    end = std::max(end, other.end);
  }
};
