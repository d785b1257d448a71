// The curves of the pinned events, placed beside those of another event. Main thread only.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "analysis/uPinnedEvents.h"
#include "base/uTimeSpan.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSeries.h"

struct TPinnedCurve {
  TPin pin;
  bool highPass = false;
  std::vector<TEventValue> filtered;  // while it is high-passed
  TInTimeOrder<TEventValue> samples;  // of one of both
  TSeriesExtents extents;
  double offset = 0;  // ms, added to a sample's time to get that of the axis
  TShift shift{};
};

class TPinnedCurves {
 public:
  // The visible ones. What was there already is kept, since it takes a walk over the samples.
  void Set(const TPins& pins, bool highPass);
  // Places them beside an event, whose start is at 0.
  void Align(const TEvent& shown, const TThresholds& levels, TAlignment alignment);
  [[nodiscard]] std::span<const TPinnedCurve> Curves() const { return FCurves; }
  // On the axis; nothing without a sample.
  [[nodiscard]] std::optional<TTimeSpan> Span() const;

 private:
  std::vector<TPinnedCurve> FCurves;
};
