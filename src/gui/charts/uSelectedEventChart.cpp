#include "gui/charts/uSelectedEventChart.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "analysis/uHighPassFilter.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr double kLevelInSight = 4;  // times the largest value; a level above is out of sight
constexpr double kWordsRoom = 0.08;  // of the values, above and below, for the name of the peak

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
  const auto found = extents[axis].Find(0, samples.size(), value);
  if (!found) return peak;
  for (const std::size_t i : {found->min, found->max}) {
    const double ms = samples[i].time - start;
    const bool isPeak = std::fabs(value(i)) == event.MaxSingle;
    if (isPeak && (!peak || ms < peak->x())) peak = QPointF(ms, double{value(i)});
  }
  return peak;
}

}  // namespace

TSelectedEventChart::TSelectedEventChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Milliseconds, parent) {
  setObjectName("Chart2");
  setAccessibleName(tr("Selected event chart"));
  ValueAxis().setLabel(tr("Acceleration (g)"));
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (!HasData()) return;
    painter.setFont(font());
    QColor shade(InkOn(palette(), QColor(0xFFA500U)));
    shade.setAlphaF(0.22F);
    ShadeSpans(painter, TimeAxis(), FIntervals, shade);
    PaintLevels(painter);
    PaintSeries(painter);
    PaintPeak(painter);
  });
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
  SetFullRange(TTimeSpan{Samples().front().time - FStart, Samples().back().time - FStart});
  ShowSamples();
}

void TSelectedEventChart::RefreshLabels() {
  if (FEvent != nullptr) ShowTitle();
  TTimeChart::RefreshLabels();
}

void TSelectedEventChart::ShowTitle() {
  const TEvent& event = *FEvent;
  const std::string when = FormatDateTime(DateTimeMask(), DateTimeOf(FMissionStart, event.GetStartTime()));
  QString title = tr("Event %1 · %2").arg(event.ID).arg(QtText(when));
  if (FHighPass) title += tr(" · high-passed");
  if (FHighPass && FFiltered.size() < event.Count()) {
    const QLocale english(QLocale::English);
    title += tr(", first %1 of %2 samples").arg(english.toString(FFiltered.size()), english.toString(event.Count()));
  }
  title += (FHighPass ? tr("; recorded peak %1 g (%2 g on %3)") : tr(" · peak %1 g (%2 g on %3)"))
               .arg(Figure(double{event.Max}), Figure(double{event.MaxSingle}), QtText(event.MaxAxis));
  if (FClipped) title += tr(", clipped");
  Legend().SetTitle(title);
}

void TSelectedEventChart::SetHighPass(bool on) {
  if (std::exchange(FHighPass, on) == on || FEvent == nullptr) return;
  ShowSamples();
}

void TSelectedEventChart::ShowSamples() {
  FFiltered.clear();
  if (FHighPass) {
    for (const TFilteredValue& value : HighPassFiltered(FEvent->Values())) {
      FFiltered.push_back(
          {value.time, static_cast<float>(value.x), static_cast<float>(value.y), static_cast<float>(value.z)});
    }
  }
  ShowTitle();
  FSamples.Set(FHighPass ? std::span<const TEventValue>(FFiltered) : FEvent->Values());
  FExtents = MeasureSeries(FSamples.Samples());
  // The recorded peak is not on the filtered curves.
  FPeak = FHighPass ? std::nullopt : FindPeak(*FEvent, FSamples.Samples(), FExtents, FStart);
  Range().RescaleValues();
  emit SamplesChanged();
}

void TSelectedEventChart::SetAlarmLimits(TAlarmLimits limits) {
  if (std::exchange(FAlarm, limits) != limits) Range().RescaleValues();
}

void TSelectedEventChart::SetMasks(TValueMasks masks) {
  FMasks = std::move(masks);
  RedrawMarks();
}

void TSelectedEventChart::ScaleValues() {
  TExtent whole;
  for (const TSeries series : VisibleSeries()) whole.Include(FExtents[Place(series)].Whole());
  if (!HasData() || whole.IsEmpty()) return ValueAxis().setRange(0, 1);
  double min{whole.min};
  double max{whole.max};
  const double size = std::max(std::fabs(min), std::fabs(max));
  for (const double level : {FLevels.totOn, FLevels.totOff}) {
    if (level > 0 && level <= size * kLevelInSight) max = std::max(max, level);
  }
  if (FAlarm && std::fabs(FAlarm->min) <= size * kLevelInSight) min = std::min(min, FAlarm->min);
  if (FAlarm && std::fabs(FAlarm->max) <= size * kLevelInSight) max = std::max(max, FAlarm->max);
  const QCPRange range = ScaleAround(min, max);
  const double room = range.size() * kWordsRoom;
  ValueAxis().setRange(range.lower - room, range.upper + room);
}

void TSelectedEventChart::PaintSeries(QCPPainter& painter) {
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    if (!IsSeriesVisible(series)) continue;
    // The samples' own clock runs from the mission's start.
    DrawCurve(
        painter, {TimeAxis(), ValueAxis(), -FStart}, Samples(),
        [series](const TEventValue& sample) { return ValueOf(sample, series); }, FExtents[Place(series)],
        QPen(InkOf(series), kLineWidth), PointsVisible());
  }
}

void TSelectedEventChart::PaintLevels(QCPPainter& painter) const {
  const QColor ground = palette().color(QPalette::Base);
  constexpr Qt::Alignment kAbove = Qt::AlignRight | Qt::AlignTop;
  constexpr Qt::Alignment kBelow = Qt::AlignRight | Qt::AlignBottom;
  const double on = FLevels.totOn;
  const double off = FLevels.totOff;
  if (on == off) {
    DrawLevel(painter, ValueAxis(), on, tr("ToT on, off %1 g").arg(Figure(on)), FaintInk(), ground);
  } else {
    // One name above its line and one below, so that they never overlap.
    DrawLevel(painter, ValueAxis(), on, tr("ToT on %1 g").arg(Figure(on)), FaintInk(), ground,
              on > off ? kAbove : kBelow);
    DrawLevel(painter, ValueAxis(), off, tr("ToT off %1 g").arg(Figure(off)), FaintInk(), ground,
              off > on ? kAbove : kBelow);
  }
  if (!FAlarm) return;
  // At the left: the upper limit is often the ToT level, whose name is at the right.
  const QColor ink = InkOn(palette(), kAlarmColour);
  DrawLevel(painter, ValueAxis(), FAlarm->max, tr("alarm %1 g").arg(Figure(FAlarm->max)), ink, ground,
            Qt::AlignLeft | Qt::AlignTop);
  DrawLevel(painter, ValueAxis(), FAlarm->min, tr("alarm %1 g").arg(Figure(FAlarm->min)), ink, ground,
            Qt::AlignLeft | Qt::AlignBottom);
}

void TSelectedEventChart::PaintPeak(QCPPainter& painter) const {
  if (!FPeak) return;
  const QPointF at(TimeAxis().coordToPixel(FPeak->x()), ValueAxis().coordToPixel(FPeak->y()));
  const QRect rect = Rect().rect();
  if (!QRectF(rect).adjusted(-1, -1, 1, 1).contains(at)) return;
  const QColor text = palette().color(QPalette::Text);
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(text, 1.5));
  painter.drawEllipse(at, 4.5, 4.5);
  const bool up = FPeak->y() >= 0;
  DrawWords(painter, at + QPointF(0, up ? -6 : 6), Qt::AlignHCenter | (up ? Qt::AlignBottom : Qt::AlignTop),
            tr("%1 g").arg(Figure(FPeak->y())), text, palette().color(QPalette::Base), rect);
}

QString TSelectedEventChart::MomentText(double time) const {
  if (Samples().empty()) return {};
  return tr("%1 ms").arg(QtText(MaskFloat(FMasks.time, Samples()[NearestSample(time)].time - FStart)));
}

std::vector<TCurve> TSelectedEventChart::Curves() const {
  std::vector<TCurve> curves;
  const auto samples = Samples();
  if (samples.empty()) return curves;
  const auto number = [this](double g) { return QtText(MaskFloat(FMasks.acceleration, g)); };
  for (const TSeries series : VisibleSeries()) {
    curves.push_back({NameOf(series), tr("g"), InkOf(series), ValueAxis(), samples.size(),
                      [this, samples](std::size_t i) { return samples[i].time - FStart; },
                      [samples, series](std::size_t i) { return double{ValueOf(samples[i], series)}; },
                      [this](double ms) { return NearestSample(ms); }, number, number});
  }
  return curves;
}

double TSelectedEventChart::CursorMoment(double time) const {
  return Samples().empty() ? time : Samples()[NearestSample(time)].time - FStart;
}

QStringList TSelectedEventChart::SpanTexts(double span) const {
  QStringList texts = TTimeChart::SpanTexts(span);
  texts.front() = tr("Δt %1 ms").arg(QtText(MaskFloat(FMasks.time, span)));
  return texts;
}
