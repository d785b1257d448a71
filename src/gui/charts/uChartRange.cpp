#include "gui/charts/uChartRange.h"

#include <algorithm>
#include <cmath>

#include "base/uDateTime.h"
#include "gui/common/uIcons.h"
#include "navigation/uTimeNavigator.h"

namespace {

constexpr double kSecondMs = 1000;
constexpr double kMaxTime = 1e12;        // days or ms from 0, to either side
constexpr double kMinSpanMs = 1e-3;      // of an axis in ms
constexpr double kMinSpanHertz = 1e-12;  // slow events have slow spectra
constexpr double kMinSpanPart = 1e-13;   // of a time, so that the ends differ in a double
constexpr double kRounded = 0.5;         // of the smallest span; rounding leaves a band more than that
constexpr double kFarOut = 2;            // how much more than the data a user may see
constexpr double kHeadroom = 0.05;       // above and below the values
constexpr double kSame = 1e-6;           // of a value, the noise of a reading that does not change
constexpr double kMinValuePart = 1e-6;   // of a value: what a single-precision reading tells apart
constexpr double kMaxValue = 1e40;       // beyond every single-precision reading

}  // namespace

TChartRange::TChartRange(TChartPlot& plot, std::function<void()> scaleValues)
    : FPlot(plot), FScaleValues(std::move(scaleValues)) {}

double TChartRange::MinTimes(double about) const {
  if (FPlot.Unit() == TAxisUnit::Days) return MinSpan(about);
  return std::max(FPlot.Unit() == TAxisUnit::Hertz ? kMinSpanHertz : kMinSpanMs, std::fabs(about) * kMinSpanPart);
}

void TChartRange::SetTimes(double from, double to) {
  if (!std::isfinite(from) || !std::isfinite(to) || !(from <= to)) return;
  from = std::clamp(from, -kMaxTime, kMaxTime);
  to = std::clamp(to, -kMaxTime, kMaxTime);
  const double min = MinTimes(to);
  if (to - from < min * kRounded) {
    const double middle = (from + to) / 2;
    from = middle - min / 2;
    to = middle + min / 2;
  }
  FPlot.TimeAxis().setRange(from, to);
  FPlot.QueueReplot();
}

std::pair<double, double> TChartRange::Times() const {
  const QCPRange range = FPlot.TimeAxis().range();
  return {range.lower, range.upper};
}

void TChartRange::SetFull(std::optional<std::pair<double, double>> range) {
  FFull = range.value_or(std::pair(0.0, 1.0));
  if (FFull.second - FFull.first < MinTimes(FFull.second)) {
    const double second = FPlot.Unit() == TAxisUnit::Days ? kSecondMs / kMsPerDay : kSecondMs;
    // Far from any calendar a second is lost in the date itself.
    const double widened = std::max(second, MinTimes(FFull.second));
    FFull = {FFull.first - widened, FFull.second + widened};
  }
  FPlot.SetHasData(range.has_value());
  Reset();
}

void TChartRange::SetRecordingSpan(std::pair<double, double> span) {
  if (!FPlot.HasData()) return;
  FFull = {std::min(span.first, FFull.first), std::max(span.second, FFull.second)};
  Reset();
}

void TChartRange::Reset() {
  FValuesZoomed = false;
  FScaleValues();
  FPlot.TimeAxis().setRange(FFull.first, FFull.second);
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
  if (!synced) {
    FPlot.Legend().SetTitle({});
  } else if (*synced) {
    FPlot.Legend().SetTitle(tr("Synced"), Icon("dialog-ok-apply"));
  } else {
    FPlot.Legend().SetTitle(tr("Not Synced"), Icon("dialog-cancel"));
  }
  FPlot.QueueReplot();
}

void TChartRange::ChangeTimes(double from, double to) {
  if (!CanZoom() || !std::isfinite(from) || !std::isfinite(to) || !(from < to)) return;
  const QCPRange now = FPlot.TimeAxis().range();
  // A view that the program set beyond the data may stay there, but goes no farther.
  const double middle =
      std::clamp((from + to) / 2, std::min(FFull.first, now.center()), std::max(FFull.second, now.center()));
  const double max = std::max((FFull.second - FFull.first) * kFarOut, now.size());
  const double span = std::clamp(to - from, std::min(MinTimes(middle), max), max);
  if (middle == (from + to) / 2 && span == to - from) {
    SetTimes(from, to);  // to the last bit
  } else {
    SetTimes(middle - span / 2, middle + span / 2);
  }
  const QCPRange changed = FPlot.TimeAxis().range();
  if (changed != now) emit TimesChanged(changed.lower, changed.upper);
}

void TChartRange::ZoomTime(double factor, double about) {
  const QCPRange range = FPlot.TimeAxis().range();
  // At the limit the view stays instead of creeping away.
  if (factor < 1 && range.size() * factor < MinTimes(about)) factor = MinTimes(about) / range.size();
  ChangeTimes(about - (about - range.lower) * factor, about + (range.upper - about) * factor);
}

void TChartRange::ZoomTime(double factor) {
  ZoomTime(factor, FPlot.TimeAxis().range().center());
}

void TChartRange::PanTime(double part) {
  const QCPRange range = FPlot.TimeAxis().range();
  ChangeTimes(range.lower + range.size() * part, range.upper + range.size() * part);
}

void TChartRange::PanToStart() {
  ChangeTimes(FFull.first, FFull.first + FPlot.TimeAxis().range().size());
}

void TChartRange::PanToEnd() {
  ChangeTimes(FFull.second - FPlot.TimeAxis().range().size(), FFull.second);
}

void TChartRange::ZoomValues(QCPAxis& axis, double factor, double aboutPixel) {
  if (!CanZoom() || IsLocked(axis)) return;
  const QCPRange range = axis.range();
  const double about = axis.pixelToCoord(aboutPixel);
  const QCPRange wanted(about - (about - range.lower) * factor, about + (range.upper - about) * factor);
  const double min = std::max(std::fabs(about) * kMinValuePart, 1 / kMaxValue);
  if (!(wanted.size() >= min && wanted.size() <= kMaxValue)) return;
  axis.setRange(wanted);
  FValuesZoomed = true;
  FPlot.QueueReplot();
}

void TChartRange::PanValues(double part) {
  if (!CanZoom()) return;
  for (QCPAxis* axis : FPlot.ValueAxes()) {
    const double shift = axis->range().size() * part;
    if (IsLocked(*axis) || !(std::fabs(axis->range().center() + shift) < kMaxValue)) continue;
    axis->moveRange(shift);
    FValuesZoomed = true;
    FPlot.QueueReplot();
  }
}

void TChartRange::ResetByUser() {
  if (!CanZoom()) return;
  Reset();
  emit TimesChanged(Times().first, Times().second);
  emit ResetDone();
}

TChartRange::TView TChartRange::View() const {
  TView view{FPlot.TimeAxis().range(), {}};
  for (const QCPAxis* axis : FPlot.ValueAxes()) view.values.append(axis->range());
  return view;
}

void TChartRange::PanFrom(const TView& view, double right, double down) {
  if (!CanZoom()) return;
  const double time = right * view.times.size();
  ChangeTimes(view.times.lower - time, view.times.upper - time);
  // Values that all fit stay where they are.
  if (!FValuesZoomed) return;
  const QList<QCPAxis*> axes = FPlot.ValueAxes();
  for (qsizetype i = 0; i < axes.size() && i < view.values.size(); ++i) {
    if (!IsLocked(*axes[i])) axes[i]->setRange(view.values[i] + view.values[i].size() * down);
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
