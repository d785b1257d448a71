#include "gui/charts/uSeries.h"

#include <algorithm>
#include <cmath>

#include "analysis/uHighPassFilter.h"

// The total's extent from that of its square, so that only two roots are taken for each block.
static TExtent RootsOf(double minSquare, double maxSquare) {
  return {static_cast<float>(std::sqrt(minSquare)), static_cast<float>(std::sqrt(maxSquare))};
}

TSeriesExtents MeasureSeries(std::span<const TEventValue> samples) {
  TSeriesExtents extents;
  for (std::size_t begin = 0; begin < samples.size(); begin += TExtents::kBlock) {
    const std::size_t end = std::min(begin + TExtents::kBlock, samples.size());
    TExtent x, y, z;
    double minSquare = std::numeric_limits<double>::infinity();
    double maxSquare = 0;
    for (const TEventValue& sample : samples.subspan(begin, end - begin)) {
      x.Include(sample.xvalue);
      y.Include(sample.yvalue);
      z.Include(sample.zvalue);
      const double square = SquaredMagnitude(sample);
      minSquare = square < minSquare ? square : minSquare;
      maxSquare = square > maxSquare ? square : maxSquare;
    }
    const std::array<TExtent, kSeriesCount> found = {x, y, z, RootsOf(minSquare, maxSquare)};
    for (std::size_t i = 0; i < kSeriesCount; ++i) {
      const auto valueAt = [samples, i](std::size_t at) { return ValueOf(samples[at], kAllSeries[i]); };
      extents[i].Append(found[i].IsFinite() ? found[i] : FiniteExtent(begin, end, valueAt));
    }
  }
  return extents;
}

std::vector<TEventValue> HighPassedSamples(std::span<const TEventValue> samples) {
  std::vector<TEventValue> filtered;
  for (const TFilteredValue& value : HighPassFiltered(samples)) {
    filtered.push_back(
        {value.time, static_cast<float>(value.x), static_cast<float>(value.y), static_cast<float>(value.z)});
  }
  return filtered;
}
