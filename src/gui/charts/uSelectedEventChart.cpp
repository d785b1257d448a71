#include "gui/charts/uSelectedEventChart.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/uHighPassFilter.h"
#include "base/uDateTime.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr double kLevelInSight = 4;  // times the largest value; a level above would press the event flat
constexpr double kWordsRoom = 0.08;  // of the values, above and below, for the name of the peak

}  // namespace

TSelectedEventChart::TSelectedEventChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Milliseconds, parent) {
  setObjectName("Chart2");
  setAccessibleName(tr("Selected event chart"));
  ValueAxis().setLabel(tr("Acceleration (g)"));
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (!HasData()) return;
    painter.setFont(font());
    PaintIntervals(painter);
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
  SetNothing(tr("No event selected"));
  SetFullRange(std::nullopt);
  emit SamplesChanged();
}

void TSelectedEventChart::ShowEvent(const TEventList& events, std::size_t index, const TMissionData& mission) {
  Clear();
  if (index >= events.Count()) return;
  SetNothing(tr("The event has no samples"));
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
  FindIntervals(event);

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
  Measure();
  FindPeak(*FEvent);
  RescaleValues();
  emit SamplesChanged();
}

// Block by block, so that a long event is walked over once.
void TSelectedEventChart::Measure() {
  const auto samples = FSamples.Samples();
  for (TExtents& extents : FExtents) extents.Clear();
  for (std::size_t begin = 0; begin < samples.size(); begin += TExtents::kBlock) {
    const std::size_t count = std::min(TExtents::kBlock, samples.size() - begin);
    for (const TSeries series : kAllSeries) {
      ExtentsOf(series).Append(count, [samples, series](std::size_t i) { return ValueOf(samples[i], series); });
    }
  }
  for (const TSeries series : kAllSeries) FWhole[static_cast<std::size_t>(series)] = ExtentsOf(series).Whole();
}

// Of the recorded samples; filtered curves have none of their own.
void TSelectedEventChart::FindPeak(const TEvent& event) {
  FPeak.reset();
  if (FHighPass || !std::isfinite(event.MaxSingle)) return;
  const std::size_t axis = std::string_view("XYZ").find(event.MaxAxis.front());
  if (axis == std::string_view::npos) return;
  const auto samples = FSamples.Samples();
  const auto value = [&](std::size_t i) { return ValueOf(samples[i], static_cast<TSeries>(axis)); };
  const auto found = ExtentsOf(static_cast<TSeries>(axis)).Find(0, samples.size(), value);
  if (!found) return;
  for (const std::size_t i : {found->least, found->largest}) {
    const bool isPeak = std::fabs(value(i)) == event.MaxSingle;
    if (isPeak && (!FPeak || samples[i].time - FStart < FPeak->ms)) FPeak = {samples[i].time - FStart, value(i)};
  }
}

void TSelectedEventChart::FindIntervals(const TEvent& event) {
  std::vector<TThresholdInterval> intervals;
  CalcEventMetrics(event, FLevels, &intervals);
  FIntervals.reserve(intervals.size());
  for (const auto& [begin, end] : intervals) {
    const auto [from, to] = std::minmax({begin - FStart, end - FStart});
    if (std::isfinite(from) && std::isfinite(to)) FIntervals.emplace_back(from, to);
  }
  if (!std::ranges::is_sorted(FIntervals)) std::ranges::sort(FIntervals);
}

void TSelectedEventChart::SetAlarmLimits(TAlarmLimits limits) {
  if (std::exchange(FAlarm, limits) != limits) RescaleValues();
}

void TSelectedEventChart::SetMasks(TValueMasks masks) {
  FMasks = std::move(masks);
  RedrawMarks();
}

void TSelectedEventChart::ScaleValues() {
  double least = std::numeric_limits<double>::infinity();
  double largest = -least;
  for (const TSeries series : VisibleSeries()) {
    const TExtent& extent = FWhole[static_cast<std::size_t>(series)];
    least = std::min(least, double{extent.least});
    largest = std::max(largest, double{extent.largest});
  }
  if (!HasData() || !(least <= largest)) return ValueAxis().setRange(0, 1);
  const double size = std::max(std::fabs(least), std::fabs(largest));
  for (const double level : {FLevels.totOn, FLevels.totOff}) {
    if (level > 0 && level <= size * kLevelInSight) largest = std::max(largest, level);
  }
  if (FAlarm && std::fabs(FAlarm->first) <= size * kLevelInSight) least = std::min(least, FAlarm->first);
  if (FAlarm && std::fabs(FAlarm->second) <= size * kLevelInSight) largest = std::max(largest, FAlarm->second);
  const QCPRange range = ScaleAround(least, largest);
  const double room = range.size() * kWordsRoom;
  ValueAxis().setRange(range.lower - room, range.upper + room);
}

void TSelectedEventChart::PaintIntervals(QCPPainter& painter) const {
  const QRect rect = Rect().rect();
  QColor shade(InkOn(palette(), QColor(0xFFA500U)));
  shade.setAlphaF(0.22F);
  painter.setAntialiasing(false);
  const auto [from, to] = TimeRange();
  double left = 0;
  double right = -1;  // of the shade that grows
  const auto shadeIt = [&] {
    if (right >= left) painter.fillRect(QRectF(left, rect.top(), std::max(right - left, 1.0), rect.height()), shade);
  };
  for (const auto& [begin, end] : FIntervals) {
    if (end < from) continue;
    if (begin > to) break;
    const double beginX = TimeAxis().coordToPixel(std::max(begin, from));
    const double endX = TimeAxis().coordToPixel(std::min(end, to));
    // Intervals that no pixel parts are one shade, so that a view of millions of them is as light as one of few.
    if (right >= left && beginX - right < 1) {
      right = std::max(right, endX);
      continue;
    }
    shadeIt();
    left = beginX;
    right = endX;
  }
  shadeIt();
}

void TSelectedEventChart::PaintSeries(QCPPainter& painter) {
  const auto [first, last] = TimeRange();
  // The samples' own clock runs from the mission's start.
  const auto [from, to] = WithRounding(first + FStart, last + FStart, std::fabs(FStart) + std::fabs(last));
  const TColumns columns = ColumnsOf(TimeAxis(), painter, from, to);
  const auto samples = FSamples.Samples();
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    if (!IsSeriesVisible(series)) continue;
    Envelope(
        samples.size(), [samples](std::size_t i) { return samples[i].time; },
        [samples, series](std::size_t i) { return ValueOf(samples[i], series); }, ExtentsOf(series), columns,
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
  const QPointF at(TimeAxis().coordToPixel(FPeak->ms), ValueAxis().coordToPixel(double{FPeak->value}));
  const QRect rect = Rect().rect();
  if (!QRectF(rect).adjusted(-1, -1, 1, 1).contains(at)) return;
  const QColor text = palette().color(QPalette::Text);
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(text, 1.5));
  painter.drawEllipse(at, 4.5, 4.5);
  const bool up = FPeak->value >= 0;
  DrawWords(painter, at + QPointF(0, up ? -6 : 6), Qt::AlignHCenter | (up ? Qt::AlignBottom : Qt::AlignTop),
            tr("%1 g").arg(Figure(double{FPeak->value})), text, palette().color(QPalette::Base), rect);
}

QString TSelectedEventChart::MomentText(double time) const {
  if (Samples().empty()) return {};
  return tr("%1 ms").arg(QtText(MaskFloat(FMasks.time, Samples()[NearestSample(time)].time - FStart)));
}

QPointF TSelectedEventChart::PlaceOf(const TEventValue& sample, TSeries series) const {
  return {TimeAxis().coordToPixel(sample.time - FStart), ValueAxis().coordToPixel(double{ValueOf(sample, series)})};
}

TTimeChart::TReading TSelectedEventChart::ReadingOf(const TEventValue& sample, TSeries series) const {
  const double value = ValueOf(sample, series);
  const QString text = tr("%1 %2 g").arg(NameOf(series), QtText(MaskFloat(FMasks.acceleration, value)));
  if (!std::isfinite(value)) return {text, InkOf(series), std::nullopt};
  return {text, InkOf(series), PlaceOf(sample, series)};
}

std::vector<TTimeChart::TReading> TSelectedEventChart::ReadingsAt(double time) const {
  std::vector<TReading> readings;
  if (Samples().empty()) return readings;
  const TEventValue& sample = Samples()[NearestSample(time)];
  for (const TSeries series : VisibleSeries()) readings.push_back(ReadingOf(sample, series));
  return readings;
}

std::optional<TTimeChart::TReading> TSelectedEventChart::NearestTo(const QPointF& position) const {
  const auto samples = Samples();
  if (samples.empty()) return std::nullopt;
  const auto across = [&](std::size_t i) {
    return std::fabs(TimeAxis().coordToPixel(samples[i].time - FStart) - position.x());
  };
  std::optional<TReading> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (const TSeries series : VisibleSeries()) {
    const auto distance = [&](std::size_t i) {
      const QPointF away = PlaceOf(samples[i], series) - position;
      return std::hypot(away.x(), away.y());
    };
    const auto found =
        NearestOnScreen(samples.size(), NearestSample(TimeAxis().pixelToCoord(position.x())), across, distance);
    if (!found || distance(*found) >= least) continue;
    least = distance(*found);
    nearest = ReadingOf(samples[*found], series);
    nearest->text += tr(" at %1").arg(MomentText(samples[*found].time - FStart));
  }
  return nearest;
}
