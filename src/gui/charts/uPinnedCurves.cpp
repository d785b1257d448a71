#include "gui/charts/uPinnedCurves.h"

#include <algorithm>
#include <cmath>
#include <utility>

void TPinnedCurves::Set(const TPins& pins, bool highPass) {
  std::vector<TPinnedCurve> before = std::exchange(FCurves, {});
  for (const TPin& pin : pins.items) {
    if (!pin.visible) continue;
    const auto known = std::ranges::find_if(
        before, [&](const TPinnedCurve& curve) { return curve.pin == pin && curve.highPass == highPass; });
    if (known != before.end()) {
      FCurves.push_back(std::move(*known));
      continue;
    }
    TPinnedCurve curve;
    curve.pin = pin;
    curve.highPass = highPass;
    const auto recorded = pin.event->event.Values();
    if (highPass) curve.filtered = HighPassedSamples(recorded);
    curve.samples.Set(highPass ? std::span<const TEventValue>(curve.filtered) : recorded);
    if (curve.samples.Samples().empty()) continue;
    curve.extents = MeasureSeries(curve.samples.Samples());
    FCurves.push_back(std::move(curve));
  }
}

void TPinnedCurves::Align(const TEvent& shown, const TThresholds& levels, TAlignment alignment) {
  for (TPinnedCurve& curve : FCurves) {
    const TEvent& event = curve.pin.event->event;
    curve.shift = ShiftBetween(shown, levels, *curve.pin.event, alignment);
    const double start = event.GetStartTime();
    curve.offset = curve.shift.ms - (std::isfinite(start) ? start : curve.samples.Samples().front().time);
  }
}

std::optional<TTimeSpan> TPinnedCurves::Span() const {
  std::optional<TTimeSpan> whole;
  for (const TPinnedCurve& curve : FCurves) {
    const auto samples = curve.samples.Samples();
    const TTimeSpan span{samples.front().time + curve.offset, samples.back().time + curve.offset};
    whole ? whole->Include(span) : void(whole = span);
  }
  return whole;
}
