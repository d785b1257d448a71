#include "analysis/uPointAbsorption.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t kMaxRounds = 16;  // after the first few hardly a dot grows
constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// The dots that were kept, in square buckets that are at least as wide as two dots can overlap.
class TBuckets {
 public:
  TBuckets(const std::vector<TDot>& dots, double reach) : FReach(reach) {
    const auto [left, right] = std::ranges::minmax(dots, {}, &TDot::x);
    const auto [top, bottom] = std::ranges::minmax(dots, {}, &TDot::y);
    FLeft = left.x;
    FTop = top.y;
    FColumns = Bucket(right.x - FLeft) + 1;
    FHeads.assign(FColumns * (Bucket(bottom.y - FTop) + 1), kNone);
    FNext.reserve(dots.size());
  }

  // Calls visit with the number of each dot that may overlap one at this place.
  template <class TVisit>
  void Around(const TDot& dot, const TVisit& visit) const {
    const std::size_t column = Bucket(dot.x - FLeft);
    const std::size_t row = Bucket(dot.y - FTop);
    const std::size_t lastRow = std::min(row + 1, FHeads.size() / FColumns - 1);
    for (std::size_t r = row - std::min<std::size_t>(row, 1); r <= lastRow; ++r) {
      for (std::size_t c = column - std::min<std::size_t>(column, 1); c <= std::min(column + 1, FColumns - 1); ++c) {
        for (std::uint32_t i = FHeads[r * FColumns + c]; i != kNone; i = FNext[i]) visit(std::size_t{i});
      }
    }
  }
  // The next dot in number.
  void Add(const TDot& dot) {
    std::uint32_t& head = FHeads[Bucket(dot.y - FTop) * FColumns + Bucket(dot.x - FLeft)];
    FNext.push_back(std::exchange(head, static_cast<std::uint32_t>(FNext.size())));
  }

 private:
  [[nodiscard]] std::size_t Bucket(double distance) const { return static_cast<std::size_t>(distance / FReach); }

  double FReach, FLeft = 0, FTop = 0;
  std::size_t FColumns = 1;
  std::vector<std::uint32_t> FHeads, FNext;
};

// One pass from the highest down; true when a dot went into another.
bool AbsorbOnce(std::vector<TDot>& dots, const std::function<double(std::size_t)>& radiusOf) {
  std::size_t all = 0;
  for (const TDot& dot : dots) all += dot.count;
  TBuckets buckets(dots, 2 * std::max(radiusOf(all), 1.0));
  std::vector<TDot> kept;
  std::vector<double> radii;
  for (const TDot& dot : dots) {
    const double radius = radiusOf(dot.count);
    std::size_t taker = kept.size();
    buckets.Around(dot, [&](std::size_t i) {
      if (std::hypot(kept[i].x - dot.x, kept[i].y - dot.y) < radii[i] + radius) taker = std::min(taker, i);
    });
    if (taker == kept.size()) {
      buckets.Add(dot);
      kept.push_back(dot);
      radii.push_back(radius);
    } else {
      kept[taker].Take(dot);
      radii[taker] = radiusOf(kept[taker].count);
    }
  }
  const bool absorbed = kept.size() < dots.size();
  dots = std::move(kept);
  return absorbed;
}

}  // namespace

TDotGrid::TDotGrid(double left, double top, double width, double height, double cell)
    : FLeft(left),
      FTop(top),
      FCellsPerPixel(1 / cell),
      FColumns(std::ceil(std::max(width, 0.0) * FCellsPerPixel)),
      FRows(std::ceil(std::max(height, 0.0) * FCellsPerPixel)),
      FCellsInColumn(static_cast<std::size_t>(FRows)),
      FDotOfCell(static_cast<std::size_t>(FColumns) * FCellsInColumn) {}

void AbsorbDots(std::vector<TDot>& dots, const std::function<double(std::size_t)>& radiusOf) {
  if (dots.empty()) return;
  std::ranges::stable_sort(dots, {}, &TDot::y);
  for (std::size_t round = 0; round < kMaxRounds && AbsorbOnce(dots, radiusOf); ++round) {
  }
}
