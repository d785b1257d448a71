#include "gui/charts/uSelectedEventChart.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "analysis/uHighPassFilter.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr double kLevelInSight = 4;  // times the largest value; a level above would press the event flat
constexpr double kWordsRoom = 0.08;  // of the values, above and below, for the name of the peak

// Times over the levels, ms from the start, in order.
std::vector<std::pair<double, double>> IntervalsOver(const TThresholds& levels, const TEvent& event, double start) {
  std::vector<TThresholdInterval> intervals;
  CalcEventMetrics(event, levels, &intervals);
  std::vector<std::pair<double, double>> over;
  for (const auto& [begin, end] : intervals) {
    const auto [from, to] = std::minmax({begin - start, end - start});
    if (std::isfinite(from) && std::isfinite(to)) over.emplace_back(from, to);
  }
  if (!std::ranges::is_sorted(over)) std::ranges::sort(over);
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
  const auto found = extents.Of(series).Find(0, samples.size(), value);
  if (!found) return peak;
  for (const std::size_t i : {found->least, found->largest}) {
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
  FIntervals = IntervalsOver(FLevels, event, FStart);

  FMissionStart = events.StartTime;
  SetFullRange(std::pair(FSamples.Samples().front().time - FStart, FSamples.Samples().back().time - FStart));
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
  FExtents.Measure(FSamples.Samples());
  // Filtered curves have no peak of their own.
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
  for (const TSeries series : VisibleSeries()) whole.Take(FExtents.Whole(series));
  if (!HasData() || whole.IsEmpty()) return ValueAxis().setRange(0, 1);
  double min{whole.least};
  double max{whole.largest};
  const double size = std::max(std::fabs(min), std::fabs(max));
  for (const double level : {FLevels.totOn, FLevels.totOff}) {
    if (level > 0 && level <= size * kLevelInSight) max = std::max(max, level);
  }
  if (FAlarm && std::fabs(FAlarm->first) <= size * kLevelInSight) min = std::min(min, FAlarm->first);
  if (FAlarm && std::fabs(FAlarm->second) <= size * kLevelInSight) max = std::max(max, FAlarm->second);
  const QCPRange range = ScaleAround(min, max);
  const double room = range.size() * kWordsRoom;
  ValueAxis().setRange(range.lower - room, range.upper + room);
}

void TSelectedEventChart::PaintSeries(QCPPainter& painter) {
  const auto [first, last] = Range().Times();
  // The samples' own clock runs from the mission's start.
  const auto [from, to] = WithRounding(first + FStart, last + FStart, std::fabs(FStart) + std::fabs(last));
  const TColumns columns = ColumnsOf(TimeAxis(), painter, from, to);
  const auto samples = FSamples.Samples();
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    if (!IsSeriesVisible(series)) continue;
    Envelope(
        samples.size(), [samples](std::size_t i) { return samples[i].time; },
        [samples, series](std::size_t i) { return ValueOf(samples[i], series); }, FExtents.Of(series), columns,
        FEnvelope);
    painter.setAntialiasing(true);
    DrawEnvelope(painter, TimeAxis(), ValueAxis(), FEnvelope, QPen(InkOf(series), kLineWidth), -FStart);
    if (PointsVisible()) DrawLoneDots(painter, TimeAxis(), ValueAxis(), FEnvelope, InkOf(series), -FStart);
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
    // The names stand away from each other, however near the lines are.
    DrawLevel(painter, ValueAxis(), on, tr("ToT on %1 g").arg(Figure(on)), FaintInk(), ground,
              on > off ? kAbove : kBelow);
    DrawLevel(painter, ValueAxis(), off, tr("ToT off %1 g").arg(Figure(off)), FaintInk(), ground,
              off > on ? kAbove : kBelow);
  }
  if (!FAlarm) return;
  // At the left, because the upper limit often is the level that switches on.
  const QColor ink = InkOn(palette(), kAlarmColour);
  DrawLevel(painter, ValueAxis(), FAlarm->second, tr("alarm %1 g").arg(Figure(FAlarm->second)), ink, ground,
            Qt::AlignLeft | Qt::AlignTop);
  DrawLevel(painter, ValueAxis(), FAlarm->first, tr("alarm %1 g").arg(Figure(FAlarm->first)), ink, ground,
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

QPointF TSelectedEventChart::PlaceOf(const TEventValue& sample, TSeries series) const {
  return {TimeAxis().coordToPixel(sample.time - FStart), ValueAxis().coordToPixel(double{ValueOf(sample, series)})};
}

TReading TSelectedEventChart::ReadingOf(const TEventValue& sample, TSeries series) const {
  const double value = ValueOf(sample, series);
  const QString text = tr("%1 %2 g").arg(NameOf(series), QtText(MaskFloat(FMasks.acceleration, value)));
  if (!std::isfinite(value)) return {text, InkOf(series), std::nullopt};
  return {text, InkOf(series), PlaceOf(sample, series)};
}

std::vector<TReading> TSelectedEventChart::ReadingsAt(double time) const {
  std::vector<TReading> readings;
  if (Samples().empty()) return readings;
  const TEventValue& sample = Samples()[NearestSample(time)];
  for (const TSeries series : VisibleSeries()) readings.push_back(ReadingOf(sample, series));
  return readings;
}

std::optional<TReading> TSelectedEventChart::NearestTo(const QPointF& position) const {
  const auto samples = Samples();
  if (samples.empty()) return std::nullopt;
  const auto across = [&](std::size_t i) {
    return std::fabs(TimeAxis().coordToPixel(samples[i].time - FStart) - position.x());
  };
  std::optional<TReading> nearest;
  double minDistance = std::numeric_limits<double>::infinity();
  for (const TSeries series : VisibleSeries()) {
    const auto distance = [&](std::size_t i) {
      const QPointF away = PlaceOf(samples[i], series) - position;
      return std::hypot(away.x(), away.y());
    };
    const auto found =
        NearestOnScreen(samples.size(), NearestSample(TimeAxis().pixelToCoord(position.x())), across, distance);
    if (!found || distance(*found) >= minDistance) continue;
    minDistance = distance(*found);
    nearest = ReadingOf(samples[*found], series);
    nearest->text += tr(" at %1").arg(MomentText(samples[*found].time - FStart));
  }
  return nearest;
}

double TSelectedEventChart::CursorMoment(double time) const {
  return Samples().empty() ? time : Samples()[NearestSample(time)].time - FStart;
}

QStringList TSelectedEventChart::SpanTexts(double span) const {
  QStringList texts = TTimeChart::SpanTexts(span);
  texts.front() = tr("Δt %1 ms").arg(QtText(MaskFloat(FMasks.time, span)));
  return texts;
}

std::vector<TReading> TSelectedEventChart::DifferencesBetween(double a, double b) const {
  if (Samples().empty()) return {};
  const TEventValue& first = Samples()[NearestSample(a)];
  const TEventValue& second = Samples()[NearestSample(b)];
  std::vector<TReading> differences;
  for (const TSeries series : VisibleSeries()) {
    const double change = double{ValueOf(second, series)} - double{ValueOf(first, series)};
    const QString number = std::isfinite(change) ? QtText(MaskFloat(FMasks.acceleration, change)) : QString(kNoNumber);
    differences.push_back({tr("Δ%1 %2 g").arg(NameOf(series), number), InkOf(series), std::nullopt});
  }
  return differences;
}

TRangeTable TSelectedEventChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = Range().Times();
  TRangeTable table = SeriesTable(tr("%1 … %2 ms").arg(StatisticsNumber(from), StatisticsNumber(to)));
  const auto samples = Samples();
  const auto timeAt = [&](std::size_t i) { return samples[i].time - FStart; };
  for (const TSeries series : VisibleSeries()) {
    const auto valueAt = [samples, series](std::size_t i) { return ValueOf(samples[i], series); };
    table.rows.push_back(
        SeriesRow(NameOf(series), tr("g"), StatisticsIn(Range().Times(), samples.size(), timeAt, valueAt)));
  }
  return table;
}
