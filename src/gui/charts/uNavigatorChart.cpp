#include "gui/charts/uNavigatorChart.h"

#include <algorithm>
#include <cmath>

#include "analysis/uPointAbsorption.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uDateTicker.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kTickHeight = 7;  // px, of the mark of an event

void Widen(std::optional<std::pair<double, double>>& range, double time) {
  if (!std::isfinite(time)) return;
  if (!range) range = std::pair(time, time);
  range->first = std::min(range->first, time);
  range->second = std::max(range->second, time);
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
  // Too low for an axis of values; what is drawn and its unit stand in the corner.
  ValueAxis().setVisible(false);
  ValueAxis().grid()->setVisible(false);
  TimeAxis().setLabel({});
  TimeAxis().setTicker(QSharedPointer<TDateTicker>::create(TimeAxis(), TDateLabels::OneLine));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) {
    if (!HasData()) return;
    PaintOverview(painter);
    PaintEventTicks(painter);
  });
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) { PaintBand(painter); });
  connect(&FGestures, &TBandGestures::Dragging, this, &TNavigatorChart::BandDragging);
  connect(&FGestures, &TBandGestures::Resizing, this, &TNavigatorChart::BandResizing);
  Restyle();
  Clear();
}

void TNavigatorChart::Clear() {
  FEvents = {};
  FReadings.Clear();
  FExtents.Clear();
  FSensor.clear();
  FGestures.LetGo();
  for (TNavigatorBand* band : {FBand, FLeft, FRight, FUnsyncedView}) band->Hide();
  SetFullRange(std::nullopt);
}

void TNavigatorChart::SetMission(const TEventList& events, const TSensorList& sensors) {
  Clear();
  FStart = DrawableStart(events.StartTime);
  std::optional<TSpan> range;
  TakeEvents(events, range);
  TakeSensors(sensors, range);
  SetFullRange(range);
}

void TNavigatorChart::TakeEvents(const TEventList& events, std::optional<TSpan>& range) {
  FEvents.reserve(events.Count());
  for (const TEvent& event : events.Events()) {
    const double time = DateTimeOf(FStart, event.GetStartTime());
    if (!std::isfinite(time)) continue;
    FEvents.push_back({time, event.Max});
    Widen(range, time);
    if (event.Count() > 0) Widen(range, DateTimeOf(FStart, event.Values().back().time));
  }
  if (!std::ranges::is_sorted(FEvents, {}, &TEventTick::time)) {
    std::ranges::stable_sort(FEvents, {}, &TEventTick::time);
  }
  FExtents.Set(FEvents.size(), [this](std::size_t i) { return FEvents[i].peak; });
}

void TNavigatorChart::TakeSensors(const TSensorList& sensors, std::optional<TSpan>& range) {
  for (const TSensor& sensor : sensors.Sensors()) {
    TInTimeOrder<TSensorValue> readings;
    readings.Set(sensor.Values());
    if (readings.Samples().empty()) continue;
    Widen(range, DateTimeOf(FStart, readings.Samples().front().time));
    Widen(range, DateTimeOf(FStart, readings.Samples().back().time));
    if (!FReadings.Samples().empty()) continue;
    FReadings = std::move(readings);
    const auto samples = FReadings.Samples();
    FExtents.Set(samples.size(), [samples](std::size_t i) { return samples[i].xvalue; });
    FSensor = sensor.Name;
  }
}

void TNavigatorChart::SetSensorColour(std::string_view sensor, const QColor& colour) {
  if (FChoices.SetColour(sensor, colour) && FSensor == sensor) QueueReplot();
}

void TNavigatorChart::SetSensorNames(std::map<std::string, std::string> names) {
  if (FChoices.SetNames(std::move(names))) QueueReplot();
}

QString TNavigatorChart::Caption() const {
  if (FReadings.Samples().empty()) return tr("Peak acceleration (g)");
  const QString unit = LookOf(FSensor).unit;
  const QString name = FChoices.NameOf(FSensor);
  return unit.isEmpty() ? name : QString("%1 (%2)").arg(name, unit);
}

void TNavigatorChart::SetBand(double from, double to) {
  if (FBand->Show(from, to)) RedrawMarks();
}

void TNavigatorChart::SetCompanions(double leftEnd, double rightStart) {
  const auto [first, last] = Range().Full();
  const bool left = FLeft->Show(std::min(first, leftEnd), leftEnd);
  const bool right = FRight->Show(rightStart, std::max(last, rightStart));
  if (left || right) RedrawMarks();
}

std::optional<std::pair<double, double>> TNavigatorChart::DataSpan() const {
  if (!HasData()) return std::nullopt;
  return Range().Full();
}

void TNavigatorChart::SetUnsyncedView(std::optional<TSpan> view) {
  if (view ? FUnsyncedView->Show(view->first, view->second) : FUnsyncedView->Hide()) RedrawMarks();
}

void TNavigatorChart::ScaleValues() {
  TExtent whole = FExtents.Whole();
  if (FReadings.Samples().empty()) whole.Take({0, 0});
  const QCPRange range = ScaleAround(double{whole.least}, double{whole.largest});
  // The event ticks stand below the line, the words above it.
  ValueAxis().setRange(range.lower - range.size() * 0.2, range.upper + range.size() * 0.2);
}

void TNavigatorChart::PaintOverview(QCPPainter& painter) {
  painter.setFont(font());
  const QRect rect = Rect().rect();
  DrawWords(painter, rect.topLeft() + QPointF(2, 1), Qt::AlignLeft | Qt::AlignTop, Caption(), FaintInk(),
            palette().color(QPalette::Base), rect);
  const auto [from, to] = Range().Times();
  if (!FReadings.Samples().empty()) {
    const auto readings = FReadings.Samples();
    const auto [first, last] = WithRounding((from - FStart) * kMsPerDay, (to - FStart) * kMsPerDay,
                                            (std::fabs(FStart) + std::fabs(to)) * kMsPerDay);
    const TColumns columns = ColumnsOf(TimeAxis(), painter, first, last);
    Envelope(
        readings.size(), [readings](std::size_t i) { return readings[i].time; },
        [readings](std::size_t i) { return readings[i].xvalue; }, FExtents, columns, FEnvelope);
    DrawEnvelope(painter, TimeAxis(), ValueAxis(), FEnvelope,
                 QPen(SensorInk(palette(), FChoices.ColourOf(FSensor)), 1.2), FStart, 1 / kMsPerDay);
  } else {
    Envelope(
        FEvents.size(), [this](std::size_t i) { return FEvents[i].time; },
        [this](std::size_t i) { return FEvents[i].peak; }, FExtents, ColumnsOf(TimeAxis(), painter, from, to),
        FEnvelope);
    DrawEnvelope(painter, TimeAxis(), ValueAxis(), FEnvelope, QPen(FaintInk(), 1.2));
  }
}

void TNavigatorChart::PaintEventTicks(QCPPainter& painter) const {
  const auto [from, to] = Range().Times();
  const double bottom = Rect().rect().bottom();
  QList<QLineF> ticks;
  VisitColumns(
      FEvents.size(), [this](std::size_t i) { return FEvents[i].time; }, ColumnsOf(TimeAxis(), painter, from, to),
      [&](std::size_t first, std::size_t /*end*/) {
        const double x = TimeAxis().coordToPixel(FEvents[first].time);
        ticks.append(QLineF(x, bottom - kTickHeight, x, bottom));
      });
  painter.setAntialiasing(false);
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
    painter.setPen(QPen(InkOn(palette(), QColor(0xC05000U)), 1.5, Qt::DashLine));
    painter.drawRect(QRectF(left, rect.top() + 2, right - left, rect.height() - 4));
  }
}

QString TNavigatorChart::CursorText(const QPointF& position) const {
  const auto readings = FReadings.Samples();
  if (readings.empty()) return {};
  const double ms = (TimeAxis().pixelToCoord(position.x()) - FStart) * kMsPerDay;
  const float value = readings[FReadings.Nearest(ms)].xvalue;
  return std::isfinite(value) ? QString("%1 %2").arg(Figure(double{value}), LookOf(FSensor).unit).trimmed() : QString();
}
