#include "gui/charts/uSeriesExtents.h"

#include <algorithm>

// Block by block, so that a long event is walked over once.
void TSeriesExtents::Measure(std::span<const TEventValue> samples) {
  for (TExtents& extents : FExtents) extents.Clear();
  for (std::size_t begin = 0; begin < samples.size(); begin += TExtents::kBlock) {
    const std::size_t count = std::min(TExtents::kBlock, samples.size() - begin);
    for (std::size_t i = 0; i < kSeriesCount; ++i) {
      FExtents[i].Append(count, [samples, i](std::size_t at) { return ValueOf(samples[at], kAllSeries[i]); });
    }
  }
  for (std::size_t i = 0; i < kSeriesCount; ++i) FWhole[i] = FExtents[i].Whole();
}
