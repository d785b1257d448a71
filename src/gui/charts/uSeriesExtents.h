// Minimum and maximum of any part of an event's series. Main thread only.
#pragma once

#include <array>
#include <span>

#include "analysis/uExtents.h"
#include "gui/charts/uSeries.h"
#include "model/uEvents.h"

class TSeriesExtents {
 public:
  // Keeps no samples.
  void Measure(std::span<const TEventValue> samples);
  // g
  [[nodiscard]] const TExtents& Of(TSeries series) const { return FExtents[static_cast<std::size_t>(series)]; }
  [[nodiscard]] const TExtent& Whole(TSeries series) const { return FWhole[static_cast<std::size_t>(series)]; }

 private:
  std::array<TExtents, kSeriesCount> FExtents;
  std::array<TExtent, kSeriesCount> FWhole;
};
