#include "gui/charts/uSelectedEventChart.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kPeakDotRadius = 4.5;  // px
constexpr double kFaintTotal = 0.4;     // of the total's colour, where it is drawn only for the shaded times
constexpr double kLineInSight = 4;      // times the largest value; a level above is out of sight
constexpr double kWordsRoom = 0.08;     // of the values, above and below, for the name of the peak

// Recorded times over the levels as ms from the start, in order.
std::vector<TTimeSpan> InOrder(const std::vector<TTimeSpan>& intervals, double start) {
  std::vector<TTimeSpan> over;
  for (const TTimeSpan& interval : intervals) {
    const auto [from, to] = std::minmax({interval.start - start, interval.end - start});
    if (std::isfinite(from) && std::isfinite(to)) over.push_back({from, to});
  }
  if (!std::ranges::is_sorted(over, {}, &TTimeSpan::start)) std::ranges::sort(over, {}, &TTimeSpan::start);
  return over;
}

// The earliest sample that is the event's peak, ms from the start and g.
std::optional<QPointF> FindPeak(const TEvent& event, std::span<const TEventValue> samples,
                                const TSeriesExtents& extents, double start) {
  const std::size_t axis = std::string_view("XYZ").find(event.MaxAxis.front());
  if (axis == std::string_view::npos || !std::isfinite(event.MaxSingle)) return std::nullopt;
  const auto series = static_cast<TSeries>(axis);
  const auto value = [&](std::size_t i) { return ValueOf(samples[i], series); };
  std::optional<QPointF> peak;
  for (const std::size_t i :
       {extents[axis].FirstMin(0, samples.size(), value), extents[axis].FirstMax(0, samples.size(), value)}) {
    if (i == samples.size()) continue;
    const double ms = samples[i].time - start;
    const bool isPeak = std::fabs(value(i)) == event.MaxSingle;
    if (isPeak && (!peak || ms < peak->x())) peak = QPointF(ms, double{value(i)});
  }
  return peak;
}

}  // namespace

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

TSelectedEventChart::TSelectedEventChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Milliseconds, parent) {
  setObjectName("Chart2");
  setAccessibleName(tr("Selected event chart"));
  SetValueTitle(tr("Acceleration"), tr("g"));
  Restyle();
  Clear();
}

void TSelectedEventChart::Clear() {
  FEvent = nullptr;
  FFiltered = {};
  FSamples.Clear();
  FIntervals = {};
  FPeak.reset();
  Legend().SetTitle({});
  SetPlaceholder(tr("No event selected"));
  SetFullRange(std::nullopt);
  emit SamplesChanged();
}

void TSelectedEventChart::ShowEvent(const TEventList& events, std::size_t index, const TMissionData& mission) {
  Clear();
  if (index >= events.Count()) return;
  SetPlaceholder(tr("The event has no samples"));
  if (events.GetItem(index).Count() == 0) return;
  FEvent = &events.GetItem(index);
  const TEvent& event = *FEvent;
  FSamples.Set(event.Values());
  if (FSamples.Samples().empty()) {
    FEvent = nullptr;
    return;
  }
  FStart = std::isfinite(event.GetStartTime()) ? event.GetStartTime() : FSamples.Samples().front().time;
  FLevels = ThresholdsOf(mission);
  std::vector<TTimeSpan> intervals;
  FClipped = CalcEventMetrics(event, FLevels, &intervals).clipped;
  FIntervals = InOrder(intervals, FStart);

  FMissionStart = events.StartTime;
  FSpan = {Samples().front().time - FStart, Samples().back().time - FStart};
  ShowSamples();
}

bool TSelectedEventChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  using D = TDisplaySettings;
  return TAccelerationChart::ShowsChangeFrom(before) ||
         Differ(before, Display(), &D::formats, &D::alarmActive, &D::limits);
}

void TSelectedEventChart::DisplayChanged() {
  if (FEvent != nullptr) ShowTitle();
}

// A narrow chart cuts the end of a title; the time stands in the grid, too.
void TSelectedEventChart::ShowTitle() {
  const TEvent& event = *FEvent;
  const std::string when = FormatDateTime(DateTimeMask(), DateTimeOf(FMissionStart, event.GetStartTime()));
  QString title = tr("Event %1").arg(event.ID);
  if (FHighPass) title += tr(" · high-passed");
  if (FHighPass && FFiltered.size() < event.Count()) {
    const QLocale english(QLocale::English);
    title += tr(", first %1 of %2 samples").arg(english.toString(FFiltered.size()), english.toString(event.Count()));
  }
  title += (FHighPass ? tr("; recorded peak %1 g") : tr(" · peak %1 g")).arg(Figure(double{event.Max}));
  if (FClipped) title += tr(", clipped");
  title += tr(" · %1 g on %2").arg(Figure(double{event.MaxSingle}), QtText(event.MaxAxis));
  Legend().SetTitle(title + PinsWords() + tr(" · %1").arg(QtText(when)));
}

void TSelectedEventChart::SetHighPass(bool on) {
  if (std::exchange(FHighPass, on) == on || FEvent == nullptr) return;
  ShowSamples();
}

void TSelectedEventChart::ShowSamples() {
  FFiltered.clear();
  if (FHighPass) FFiltered = HighPassedSamples(FEvent->Values());
  FSamples.Set(FHighPass ? std::span<const TEventValue>(FFiltered) : FEvent->Values());
  FExtents = MeasureSeries(FSamples.Samples());
  // The recorded peak is not on the filtered curves.
  FPeak = FHighPass ? std::nullopt : FindPeak(*FEvent, FSamples.Samples(), FExtents, FStart);
  PinsChanged();
  emit SamplesChanged();
}

void TSelectedEventChart::PinsChanged() {
  FPinned.Set(Pins(), FHighPass);
  if (FEvent == nullptr) return;
  PlacePins();
  ShowTitle();
  Range().RescaleValues();
}

void TSelectedEventChart::PlacePins() {
  FPinned.Align(*FEvent, FLevels, Pins().alignment);
  TTimeSpan full = FSpan;
  if (const auto pinned = FPinned.Span()) full.Include(*pinned);
  if (HasData() && full == Range().Full()) return;
  const bool zoomed = HasData() && Range().Times() != Range().Full();
  const TTimeSpan times = Range().Times();
  SetFullRange(full);
  if (zoomed) Range().SetTimes(times);
}

QString TSelectedEventChart::PinsWords() const {
  if (FPinned.Curves().empty()) return {};
  const auto alignment = static_cast<std::size_t>(Pins().alignment);
  QString words = tr(" · pinned events aligned at the %1").arg(QtText(kAlignments[alignment].first));
  for (const TPinnedCurve& curve : FPinned.Curves()) {
    const std::int32_t id = curve.pin.event->event.ID;
    if (!curve.shift.found) words += tr(", %1 at its start").arg(id);
    if (std::isfinite(curve.shift.correlation)) {
      words += tr(", %1: %2").arg(id).arg(curve.shift.correlation, 0, 'f', 2);
    }
  }
  return words;
}

void TSelectedEventChart::ScaleValues() {
  TExtent whole;
  for (const TSeries series : VisibleSeries()) whole.Include(FExtents[Place(series)].Whole());
  if (IsTotalFaint()) whole.Include(FExtents[Place(TSeries::Total)].Whole());
  for (const TPinnedCurve& curve : FPinned.Curves()) {
    for (const TSeries series : VisibleSeries()) whole.Include(curve.extents[Place(series)].Whole());
  }
  if (!HasData() || whole.IsEmpty()) return ValueAxis().setRange(0, 1);
  double min{whole.min};
  double max{whole.max};
  const double size = std::max(std::fabs(min), std::fabs(max));
  for (const double level : {FLevels.totOn, FLevels.totOff}) {
    if (level > 0 && level <= size * kLineInSight) max = std::max(max, level);
  }
  const auto alarm = AlarmOf(TQuantity::Acceleration);
  if (alarm && std::fabs(alarm->min) <= size * kLineInSight) min = std::min(min, alarm->min);
  if (alarm && std::fabs(alarm->max) <= size * kLineInSight) max = std::max(max, alarm->max);
  const QCPRange range = ScaleAround(min, max);
  const double room = range.size() * kWordsRoom;
  ValueAxis().setRange(range.lower - room, range.upper + room);
}

void TSelectedEventChart::PaintData(QCPPainter& painter) {
  QColor shade(TokensOf(palette()).alarm);
  shade.setAlphaF(0.12F);
  ShadeSpans(painter, TimeAxis(), FIntervals, shade);
  PaintLevels(painter);
  PaintPins(painter);
  PaintSeries(painter);
  PaintPeak(painter);
}

void TSelectedEventChart::PaintSeries(QCPPainter& painter) {
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    QColor ink = InkOf(series);
    const bool faint = series == TSeries::Total && IsTotalFaint();
    if (!faint && !IsSeriesVisible(series)) continue;
    if (faint) ink = Mixed(palette().color(QPalette::Base), ink, kFaintTotal);
    // The samples' own clock runs from the mission's start.
    DrawCurve(
        painter, {TimeAxis(), ValueAxis(), -FStart}, Samples(),
        [series](const TEventValue& sample) { return ValueOf(sample, series); }, FExtents[Place(series)],
        DashedPen(ink, kCurveWidth, Dashes(Place(series))), Labels(), PointsVisible() && !faint);
  }
}

void TSelectedEventChart::PaintPins(QCPPainter& painter) {
  for (const TPinnedCurve& curve : FPinned.Curves()) {
    for (const TSeries series : VisibleSeries()) {
      DrawCurve(
          painter, {TimeAxis(), ValueAxis(), curve.offset}, curve.samples.Samples(),
          [series](const TEventValue& sample) { return ValueOf(sample, series); }, curve.extents[Place(series)],
          PenOf(curve.pin), Labels());
    }
  }
}

// On both sides of zero, because an axis crosses a level in either direction; the total is never below zero.
void TSelectedEventChart::PaintLevels(QCPPainter& painter) {
  const std::vector<TSeries> visible = VisibleSeries();
  const bool isSigned = std::ranges::any_of(visible, [](TSeries series) { return series != TSeries::Total; });
  const auto draw = [&](double level, const QString& name) {
    DrawLevel(painter, Labels(), ValueAxis(), level, tr("%1 %2 g").arg(name, Figure(level)), FaintInk());
    if (isSigned && level > 0) DrawLevel(painter, Labels(), ValueAxis(), -level, {}, FaintInk());
  };
  if (FLevels.totOn == FLevels.totOff) {
    draw(FLevels.totOn, tr("ToT on, off"));
  } else {
    draw(FLevels.totOn, tr("ToT on"));
    draw(FLevels.totOff, tr("ToT off"));
  }
  const auto alarm = AlarmOf(TQuantity::Acceleration);
  if (!alarm) return;
  const QColor ink = QColor(TokensOf(palette()).alarm);
  for (const double limit : {alarm->max, alarm->min}) {
    DrawLevel(painter, Labels(), ValueAxis(), limit, tr("alarm %1 g").arg(Figure(limit)), ink);
  }
}

void TSelectedEventChart::PaintPeak(QCPPainter& painter) {
  if (!FPeak) return;
  const QPointF at(TimeAxis().coordToPixel(FPeak->x()), ValueAxis().coordToPixel(FPeak->y()));
  if (!QRectF(Rect().rect()).adjusted(-1, -1, 1, 1).contains(at)) return;
  const QColor text = palette().color(QPalette::Text);
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(text, kCurveWidth));
  painter.drawEllipse(at, kPeakDotRadius, kPeakDotRadius);
  Labels().AddDot(at, kPeakDotRadius);
  Labels().AddPoint(at, tr("%1 g").arg(Figure(FPeak->y())), text);
}

QString TSelectedEventChart::MomentText(double time) const {
  if (Samples().empty()) return {};
  return tr("%1 ms").arg(
      QtText(MaskFloat(Display().FormatOf(TQuantity::Time), Samples()[NearestSample(time)].time - FStart)));
}

std::vector<TCurve> TSelectedEventChart::Curves() const {
  std::vector<TCurve> curves;
  if (Samples().empty()) return curves;
  const auto number = [this](double g) { return QtText(MaskFloat(Display().FormatOf(TQuantity::Acceleration), g)); };
  const auto add = [&](const QString& name, const QColor& ink, TSeries series, const TInTimeOrder<TEventValue>& order,
                       double offset, const TSeriesExtents& extents) {
    const auto samples = order.Samples();
    curves.push_back({name, tr("g"), ink, ValueAxis(), samples.size(),
                      [samples, offset](std::size_t i) { return samples[i].time + offset; },
                      [samples, series](std::size_t i) { return double{ValueOf(samples[i], series)}; },
                      [&order, offset](double ms) { return order.Nearest(ms - offset); }, number, number,
                      &extents[Place(series)]});
  };
  for (const TSeries series : VisibleSeries()) add(NameOf(series), InkOf(series), series, FSamples, -FStart, FExtents);
  for (const TPinnedCurve& one : FPinned.Curves()) {
    const QColor ink = PenOf(one.pin).color();
    for (const TSeries series : VisibleSeries()) {
      add(CurveName(one.pin, series), ink, series, one.samples, one.offset, one.extents);
    }
  }
  return curves;
}

double TSelectedEventChart::CursorMoment(double time) const {
  return Samples().empty() ? time : Samples()[NearestSample(time)].time - FStart;
}

QStringList TSelectedEventChart::SpanTexts(double span) const {
  QStringList texts = TTimeChart::SpanTexts(span);
  texts.front() = tr("Δt %1 ms").arg(QtText(MaskFloat(Display().FormatOf(TQuantity::Time), span)));
  return texts;
}
