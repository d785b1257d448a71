#include "gui/charts/uNavigatorChart.h"

#include <algorithm>
#include <cmath>

#include "analysis/uEnvelope.h"
#include "analysis/uSensorMetrics.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uDateTicker.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kTickHeight = 7;  // px, of the mark of an event

void Include(std::optional<TTimeSpan>& span, double time) {
  if (!std::isfinite(time)) return;
  if (!span) span = TTimeSpan{time, time};
  span->Include({time, time});
}

}  // namespace

TNavigatorChart::TNavigatorChart(QWidget* parent)
    : TTimeChart(TAxisUnit::Days, parent),
      FBand(new TNavigatorBand("NavigatorBand", this)),
      FLeft(new TNavigatorBand("NavigatorBandLeft", this)),
      FRight(new TNavigatorBand("NavigatorBandRight", this)),
      FUnsyncedView(new TNavigatorBand("NavigatorBandUnSyncedView", this)),
      FGestures(*this, Range(), *FBand) {
  setObjectName("ChartNavigator");
  setAccessibleName(tr("Navigator chart"));
  SetPlaceholder(tr("No recording"));
  Range().SetZoomable(false);
  // The chart is too low for a value axis; the name and unit of the curve are in the corner.
  ValueAxis().setVisible(false);
  ValueAxis().grid()->setVisible(false);
  SetTimeTitle({});
  TimeAxis().setTicker(QSharedPointer<TDateTicker>::create(TimeAxis(), TDateLabels::OneLine));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) { PaintBand(painter); });
  connect(&FGestures, &TBandGestures::Dragging, this, &TNavigatorChart::BandDragging);
  connect(&FGestures, &TBandGestures::Resizing, this, &TNavigatorChart::BandResizing);
  Restyle();
  Clear();
}

void TNavigatorChart::Clear() {
  FEvents = {};
  FVisibleBefore = {};
  FReadings.Clear();
  FExtents.Clear();
  FSensor.clear();
  FillLegend();
  FGestures.LetGo();
  for (TNavigatorBand* band : {FBand, FLeft, FRight, FUnsyncedView}) band->Hide();
  SetFullRange(std::nullopt);
}

void TNavigatorChart::SetMission(const TEventList& events, const TSensorList& sensors) {
  Clear();
  FStart = DrawableStart(events.StartTime);
  std::optional<TTimeSpan> span;
  TakeEvents(events, span);
  TakeSensors(sensors, span);
  FillLegend();
  SetFullRange(span);
}

void TNavigatorChart::TakeEvents(const TEventList& events, std::optional<TTimeSpan>& span) {
  FEvents.reserve(events.Count());
  std::uint32_t index = 0;
  for (const TEvent& event : events.Events()) {
    const std::uint32_t at = index++;
    const double time = DateTimeOf(FStart, event.GetStartTime());
    if (!std::isfinite(time)) continue;
    FEvents.push_back({time, event.Max, at});
    Include(span, time);
    if (event.Count() > 0) Include(span, DateTimeOf(FStart, event.Values().back().time));
  }
  if (!std::ranges::is_sorted(FEvents, {}, &TEventTick::time)) {
    std::ranges::stable_sort(FEvents, {}, &TEventTick::time);
  }
  FExtents.Set(FEvents.size(), [this](std::size_t i) { return FEvents[i].peak; });
}

void TNavigatorChart::TakeSensors(const TSensorList& sensors, std::optional<TTimeSpan>& span) {
  for (const TSensor& sensor : sensors.Sensors()) {
    TInTimeOrder<TSensorValue> readings;
    readings.Set(sensor.Values());
    if (readings.Samples().empty()) continue;
    Include(span, DateTimeOf(FStart, readings.Samples().front().time));
    Include(span, DateTimeOf(FStart, readings.Samples().back().time));
    if (!FReadings.Samples().empty()) continue;
    FReadings = std::move(readings);
    const auto samples = FReadings.Samples();
    FExtents.Set(samples.size(), [samples](std::size_t i) { return samples[i].xvalue; });
    FSensor = sensor.Name;
    const double median = CalcSensorMetrics(sensor).medianInterval;
    FGap = median > 0 ? median * kGapIntervals : kNoGap;
  }
}

// Sums, so that a redraw need not look at every event.
void TNavigatorChart::SetVisibleEvents(const std::vector<bool>& visible) {
  FVisibleBefore.clear();
  if (!visible.empty()) {
    FVisibleBefore.reserve(FEvents.size() + 1);
    FVisibleBefore.push_back(0);
    for (const TEventTick& tick : FEvents)
      FVisibleBefore.push_back(FVisibleBefore.back() + (visible[tick.index] ? 1 : 0));
  }
  QueueReplot();
}

QString TNavigatorChart::Caption() const {
  if (FReadings.Samples().empty()) return tr("Peak acceleration (g)");
  const TSensorLook look = Look();
  return look.unit.isEmpty() ? look.name : QString("%1 (%2)").arg(look.name, look.unit);
}

QColor TNavigatorChart::CurveInk() const {
  return FReadings.Samples().empty() ? FaintInk() : SensorInk(palette(), Look().colour);
}

std::vector<TLegendEntry> TNavigatorChart::LegendEntries() const {
  std::vector<TLegendEntry> entries;
  if (!FReadings.Samples().empty() || !FEvents.empty()) entries.push_back({Caption(), CurveInk(), FCurveVisible});
  if (!FEvents.empty()) entries.push_back({tr("Events"), palette().color(QPalette::Text), FTicksVisible});
  return entries;
}

// The curve comes first, then the ticks of the events.
void TNavigatorChart::EntryClicked(std::size_t entry) {
  bool& visible = entry == 0 ? FCurveVisible : FTicksVisible;
  visible = !visible;
  Restyle();
}

void TNavigatorChart::SetBand(const TTimeSpan& band) {
  if (FBand->Show(band)) RedrawMarks();
}

void TNavigatorChart::SetCompanions(const TTimeSpan& band) {
  const TTimeSpan& data = Range().Full();
  const bool left = FLeft->Show({std::min(data.start, band.start), band.start});
  const bool right = FRight->Show({band.end, std::max(data.end, band.end)});
  if (left || right) RedrawMarks();
}

std::optional<TTimeSpan> TNavigatorChart::DataSpan() const {
  if (!HasData()) return std::nullopt;
  return Range().Full();
}

void TNavigatorChart::SetUnsyncedView(const std::optional<TTimeSpan>& view) {
  if (view ? FUnsyncedView->Show(*view) : FUnsyncedView->Hide()) RedrawMarks();
}

bool TNavigatorChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  const TSensorLook was = LookOf(FSensor, before);
  const TSensorLook is = Look();
  return TTimeChart::ShowsChangeFrom(before) || was.name != is.name || was.colour != is.colour;
}

void TNavigatorChart::ScaleValues() {
  TExtent whole = FExtents.Whole();
  if (FReadings.Samples().empty()) whole.Include(0.0F);
  const QCPRange range = ScaleAround(double{whole.min}, double{whole.max});
  // Room for the event ticks below the curve and the words above it.
  ValueAxis().setRange(range.lower - range.size() * 0.2, range.upper + range.size() * 0.2);
}

void TNavigatorChart::PaintData(QCPPainter& painter) {
  if (FCurveVisible) PaintOverview(painter);
  if (FTicksVisible) PaintEventTicks(painter);
}

void TNavigatorChart::PaintOverview(QCPPainter& painter) {
  const QRect rect = Rect().rect();
  // Along the top, where the curve leaves room; a higher chart says it in its legend.
  if (Legend().IsHidden())
    Labels().AddLevel(rect.top() + painter.fontMetrics().height() * 0.75, Caption(), FaintInk(), Qt::AlignLeft);
  if (FReadings.Samples().empty()) {
    DrawCurve(
        painter, {TimeAxis(), ValueAxis()}, std::span<const TEventTick>(FEvents),
        [](const TEventTick& tick) { return tick.peak; }, FExtents, QPen(CurveInk(), kCurveWidth), Labels());
  } else {
    DrawCurve(
        painter, {TimeAxis(), ValueAxis(), FStart, kMsPerDay}, FReadings.Samples(),
        [](const TSensorValue& reading) { return reading.xvalue; }, FExtents, QPen(CurveInk(), kCurveWidth), Labels(),
        false, FGap);
  }
}

void TNavigatorChart::PaintEventTicks(QCPPainter& painter) const {
  const double bottom = Rect().rect().bottom();
  QList<QLineF> ticks;
  QList<QLineF> faint;
  VisitColumns(
      FEvents.size(), [this](std::size_t i) { return FEvents[i].time; },
      ColumnsOf(TimeAxis(), painter, Range().Times()),
      [&](std::size_t first, std::size_t end) {
        const double x = TimeAxis().coordToPixel(FEvents[first].time);
        const bool hidden = !FVisibleBefore.empty() && FVisibleBefore[first] == FVisibleBefore[end];
        (hidden ? faint : ticks).append(QLineF(x, bottom - kTickHeight, x, bottom));
      });
  painter.setAntialiasing(false);
  painter.setPen(QPen(Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.2), 1));
  painter.drawLines(faint);
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.drawLines(ticks);
}

void TNavigatorChart::PaintBand(QCPPainter& painter) const {
  const QRectF rect(Rect().rect());
  const auto place = [&](double time) { return std::clamp(TimeAxis().coordToPixel(time), rect.left(), rect.right()); };
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.setAntialiasing(false);
  if (!HasData()) return;
  QColor veil = palette().color(QPalette::Text);
  veil.setAlphaF(0.16F);
  for (const TNavigatorBand* beside : {FLeft, FRight}) {
    const QPointF topLeft(place(beside->Start()), rect.top());
    if (beside->IsVisible()) painter.fillRect(QRectF(topLeft, QPointF(place(beside->End()), rect.bottom())), veil);
  }
  if (FBand->IsVisible()) {
    const double left = place(FBand->Start());
    const double right = place(FBand->End());
    painter.setPen(QPen(highlight, 2));
    painter.drawLine(QPointF(left, rect.top()), QPointF(left, rect.bottom()));
    painter.drawLine(QPointF(right, rect.top()), QPointF(right, rect.bottom()));
  }
  if (FUnsyncedView->IsVisible()) {
    const double left = place(FUnsyncedView->Start());
    const double right = std::max(place(FUnsyncedView->End()), left + 2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(highlight, 1.5, Qt::DashLine));
    painter.drawRect(QRectF(left, rect.top() + 2, right - left, rect.height() - 4));
  }
}

QString TNavigatorChart::CursorText(const QPointF& position) const {
  const auto readings = FReadings.Samples();
  if (readings.empty()) return {};
  const double ms = (TimeAxis().pixelToCoord(position.x()) - FStart) * kMsPerDay;
  const float value = readings[FReadings.Nearest(ms)].xvalue;
  return std::isfinite(value) ? QString("%1 %2").arg(Figure(double{value}), Look().unit).trimmed() : QString();
}
