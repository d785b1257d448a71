#include "gui/charts/uChartRange.h"

#include <algorithm>
#include <cmath>

#include "base/uDateTime.h"
#include "gui/common/uIcons.h"
#include "navigation/uTimeNavigator.h"

namespace {

constexpr double kSecondMs = 1000;
constexpr double kMaxTime = 1e12;         // days or ms from 0, to either side
constexpr double kMinSpanMs = 1e-3;       // of an axis in ms
constexpr double kMinSpanNumber = 1e-12;  // the frequencies of slow events are small
constexpr double kMinSpanPart = 1e-13;    // smallest span, relative to the time (double precision)
constexpr double kRounded = 0.5;          // of the smallest span; rounding never takes this much of a band
constexpr double kHeadroom = 0.05;        // above and below the values
constexpr double kSame = 1e-6;            // of a value, the noise of a reading that does not change
constexpr double kMinValuePart = 1e-6;    // smallest span, relative to the value (single precision)
constexpr double kMaxValue = 1e40;        // beyond every single-precision reading

// `factor` times as wide about a value that keeps its place.
QCPRange Zoomed(const QCPAxis& axis, const QCPRange& range, double factor, double about) {
  if (!IsLogarithmic(axis)) {
    return {about - (about - range.lower) * factor, about + (range.upper - about) * factor};
  }
  return {about * std::pow(range.lower / about, factor), about * std::pow(range.upper / about, factor)};
}

// Moved up by a part of what is in sight.
QCPRange Moved(const QCPAxis& axis, const QCPRange& range, double part) {
  if (!IsLogarithmic(axis)) return range + range.size() * part;
  return range * std::pow(range.upper / range.lower, part);
}

TTimeSpan SpanOf(const QCPRange& range) {
  return {range.lower, range.upper};
}

// Moved as little as possible into the bounds, which it may fill.
TTimeSpan Within(const TTimeSpan& bounds, const TTimeSpan& wanted) {
  const double width = wanted.Width();
  if (width >= bounds.Width()) return bounds;
  if (wanted.start < bounds.start) return {bounds.start, bounds.start + width};
  return wanted.end > bounds.end ? TTimeSpan{bounds.end - width, bounds.end} : wanted;
}

}  // namespace

TChartRange::TChartRange(TChartPlot& plot, std::function<void()> scaleValues)
    : FPlot(plot), FScaleValues(std::move(scaleValues)) {}

double TChartRange::MinTimes(double about) const {
  if (FPlot.Unit() == TAxisUnit::Days) return MinSpan(about);
  return std::max(FPlot.Unit() == TAxisUnit::Milliseconds ? kMinSpanMs : kMinSpanNumber,
                  std::fabs(about) * kMinSpanPart);
}

void TChartRange::SetTimes(const TTimeSpan& times) {
  if (!times.IsValid()) return;
  TTimeSpan shown{std::clamp(times.start, -kMaxTime, kMaxTime), std::clamp(times.end, -kMaxTime, kMaxTime)};
  if (IsLogarithmic(FPlot.TimeAxis())) shown.start = std::max(shown.start, FFull.start);
  const double min = MinTimes(shown.end);
  if (shown.Width() < min * kRounded) shown = {shown.Middle() - min / 2, shown.Middle() + min / 2};
  FPlot.TimeAxis().setRange(shown.start, shown.end);
  FPlot.QueueReplot();
}

TTimeSpan TChartRange::Times() const {
  const QCPRange range = FPlot.TimeAxis().range();
  return {range.lower, range.upper};
}

void TChartRange::SetFull(const std::optional<TTimeSpan>& span) {
  FFull = span.value_or(TTimeSpan{0, 1});
  if (FFull.Width() < MinTimes(FFull.end)) {
    const double second = FPlot.Unit() == TAxisUnit::Days ? kSecondMs / kMsPerDay : kSecondMs;
    // Far from any calendar a double cannot resolve a second.
    const double widened = std::max(second, MinTimes(FFull.end));
    FFull = {FFull.start - widened, FFull.end + widened};
  }
  FBack.clear();
  FForward.clear();
  FPlot.SetHasData(span.has_value());
  Reset();
}

void TChartRange::SetRecordingSpan(const TTimeSpan& span) {
  if (!FPlot.HasData()) return;
  FFull.Include(span);
  Reset();
}

void TChartRange::Reset() {
  FValuesZoomed = false;
  FScaleValues();
  FPlot.TimeAxis().setRange(FFull.start, FFull.end);
  FPlot.QueueReplot();
}

void TChartRange::RescaleValues() {
  if (!FValuesZoomed) FScaleValues();
  FPlot.QueueReplot();
}

void TChartRange::LockAxis(const QCPAxis& axis, bool locked) {
  if (locked) {
    FLocked.insert(&axis);
  } else {
    FLocked.remove(&axis);
  }
}

void TChartRange::SetSynced(std::optional<bool> synced) {
  FUnsynced = synced == false;
  if (!synced) {
    FPlot.Legend().SetTitle({});
  } else if (*synced) {
    FPlot.Legend().SetTitle(QObject::tr("Synced"), Icon("dialog-ok-apply"));
  } else {
    FPlot.Legend().SetTitle(QObject::tr("Not Synced"), Icon("dialog-cancel"));
  }
  FPlot.QueueReplot();
}

void TChartRange::ChangeTimes(const TTimeSpan& wanted) {
  if (!CanZoom() || !wanted.IsValid() || wanted.Width() == 0) return;
  const TTimeSpan now = Times();
  TTimeSpan shown = wanted;
  if (const double min = MinTimes(wanted.Middle()); wanted.Width() < min) {
    shown = {wanted.Middle() - min / 2, wanted.Middle() + min / 2};
  }
  // A view that the program set beyond the data may stay there, but moves no farther out.
  const TTimeSpan bounds{std::min(FFull.start, now.start), std::max(FFull.end, now.end)};
  if (!IsLogarithmic(FPlot.TimeAxis())) {
    shown = Within(bounds, shown);
  } else if (shown.start < bounds.start || shown.end > bounds.end) {
    const auto [start, end] =
        Within({std::log(bounds.start), std::log(bounds.end)}, {std::log(shown.start), std::log(shown.end)});
    shown = {std::exp(start), std::exp(end)};
  }
  Remember();
  SetTimes(shown);
  if (Times() != now) emit FPlot.TimeRangeChanged(Times());
}

void TChartRange::ZoomTime(double factor, std::optional<double> about) {
  const TTimeSpan times = Times();
  const double fixed =
      about.value_or(IsLogarithmic(FPlot.TimeAxis()) ? std::sqrt(times.start * times.end) : times.Middle());
  // At the smallest span the view stays where it is.
  if (factor < 1 && times.Width() * factor < MinTimes(fixed)) factor = MinTimes(fixed) / times.Width();
  ChangeTimes(SpanOf(Zoomed(FPlot.TimeAxis(), FPlot.TimeAxis().range(), factor, fixed)));
}

void TChartRange::PanTime(double part) {
  ChangeTimes(SpanOf(Moved(FPlot.TimeAxis(), FPlot.TimeAxis().range(), part)));
}

void TChartRange::PanToStart() {
  ChangeTimes({FFull.start, FFull.start + Times().Width()});
}

void TChartRange::PanToEnd() {
  ChangeTimes({FFull.end - Times().Width(), FFull.end});
}

void TChartRange::ZoomValues(QCPAxis& axis, double factor, double aboutPixel) {
  if (!CanZoom() || IsLocked(axis)) return;
  const double about = axis.pixelToCoord(aboutPixel);
  const QCPRange wanted = Zoomed(axis, axis.range(), factor, about);
  const double min = std::max(std::fabs(about) * kMinValuePart, 1 / kMaxValue);
  if (!(wanted.size() >= min && wanted.size() <= kMaxValue)) return;
  axis.setRange(wanted);
  FValuesZoomed = true;
  FPlot.QueueReplot();
}

void TChartRange::PanValues(double part) {
  if (!CanZoom()) return;
  for (QCPAxis* axis : FPlot.ValueAxes()) {
    const QCPRange moved = Moved(*axis, axis->range(), part);
    if (IsLocked(*axis) || !(std::fabs(moved.center()) < kMaxValue)) continue;
    axis->setRange(moved);
    FValuesZoomed = true;
    FPlot.QueueReplot();
  }
}

void TChartRange::ResetByUser() {
  if (!CanZoom()) return;
  Remember();
  Reset();
  emit FPlot.TimeRangeChanged(Times());
  emit FPlot.ZoomReset();
}

void TChartRange::Remember() {
  constexpr qint64 kOneGestureMs = 400;
  constexpr std::size_t kMaxViews = 100;
  const bool sameGesture = FChanged.isValid() && FChanged.elapsed() < kOneGestureMs;
  FChanged.start();
  FForward.clear();
  if (sameGesture && !FBack.empty()) return;
  if (FBack.size() == kMaxViews) FBack.erase(FBack.begin());
  FBack.push_back(Times());
}

bool TChartRange::Go(std::vector<TTimeSpan>& from, std::vector<TTimeSpan>& to) {
  FChanged.invalidate();
  while (!from.empty() && from.back() == Times()) from.pop_back();
  if (from.empty() || !CanZoom()) return false;
  to.push_back(Times());
  SetTimes(from.back());
  from.pop_back();
  emit FPlot.TimeRangeChanged(Times());
  return true;
}

TChartRange::TView TChartRange::View() const {
  TView view{Times(), {}};
  for (const QCPAxis* axis : FPlot.ValueAxes()) view.values.append(axis->range());
  return view;
}

void TChartRange::PanFrom(const TView& view, double right, double down) {
  if (!CanZoom()) return;
  ChangeTimes(SpanOf(Moved(FPlot.TimeAxis(), QCPRange(view.times.start, view.times.end), -right)));
  // Values are panned only after the user zoomed them.
  if (!FValuesZoomed) return;
  const QList<QCPAxis*> axes = FPlot.ValueAxes();
  for (qsizetype i = 0; i < axes.size() && i < view.values.size(); ++i) {
    if (!IsLocked(*axes[i])) axes[i]->setRange(Moved(*axes[i], view.values[i], down));
  }
  FPlot.QueueReplot();
}

QCPRange ScaleAround(double min, double max) {
  if (!std::isfinite(min) || !std::isfinite(max) || !(min <= max)) return {0, 1};
  const double size = std::max(std::fabs(min), std::fabs(max));
  if (size == 0) return {-1, 1};
  const double span = max - min;
  const double room = span > size * kSame ? span * kHeadroom : size * 0.1;
  return {min - room, max + room};
}
