#include "gui/charts/uSensorsChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "analysis/uPointAbsorption.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr double kLimitInSight = 4;  // times the span of the readings
constexpr double kMinSpan = 0.02;    // of the readings themselves, where they hardly change
constexpr std::size_t kMaxCursorValues = 12;
constexpr int kAxisGap = 8;  // px between an inner and an outer axis
// The axis whose ticks the horizontal grid lines follow is the first of these that is drawn.
constexpr TSensorAxis kGridOrder[] = {TSensorAxis::LeftOuter, TSensorAxis::LeftInner, TSensorAxis::RightInner,
                                      TSensorAxis::RightOuter};

void PaintMoment(QCPPainter& painter, const TChartPlot& plot, double time) {
  const QRect rect = plot.Rect().rect();
  const double x = plot.TimeAxis().coordToPixel(time);
  if (!(x >= rect.left() - 1 && x <= rect.right() + 1)) return;
  painter.setAntialiasing(false);
  painter.setPen(QPen(plot.palette().color(QPalette::Highlight), 1, Qt::DotLine));
  painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
}

// The names and unit as far as there is room: all names, the first, the unit alone.
QString TitleWithin(const TShownSensors::TTitle& title, const QFontMetrics& metrics, int room) {
  const auto& [names, unit] = title;
  const QString inUnit = unit.isEmpty() ? QString() : QString(" (%1)").arg(unit);
  QString all = names.join(", ") + inUnit;
  const auto fits = [&](const QString& title) { return metrics.horizontalAdvance(title) <= room; };
  if (names.isEmpty() || fits(all)) return all;
  QString first = names.front() + (names.size() > 1 ? QString(", …") : QString()) + inUnit;
  if (fits(first)) return first;
  return unit.isEmpty() ? metrics.elidedText(first, Qt::ElideRight, room) : unit;
}

}  // namespace

TSensorsChart::TSensorsChart(QWidget* parent) : TTimeChart(TAxisUnit::Days, parent) {
  setAccessibleName(tr("Sensors chart"));
  SetPlaceholder(tr("No sensor readings"));
  FAxes[static_cast<std::size_t>(TSensorAxis::LeftInner)] = &ValueAxis();
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { PaintSensors(painter); });
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) {
    if (HasData() && FHovered) PaintMoment(painter, *this, *FHovered);
  });
  Restyle();
  Clear();
}

void TSensorsChart::PrepareExtraAxes() {
  constexpr std::pair<TSensorAxis, QCPAxis::AxisType> kExtra[] = {{TSensorAxis::LeftOuter, QCPAxis::atLeft},
                                                                  {TSensorAxis::RightInner, QCPAxis::atRight},
                                                                  {TSensorAxis::RightOuter, QCPAxis::atRight}};
  for (const auto& [axis, side] : kExtra) {
    QCPAxis*& made = FAxes[static_cast<std::size_t>(axis)];
    if (made) continue;
    made = AddAxis(side);
    made->setVisible(false);
  }
  for (const TSensorAxis inner : {TSensorAxis::LeftInner, TSensorAxis::RightInner}) AxisOf(inner).setPadding(kAxisGap);
  Restyle();
}

void TSensorsChart::Clear() {
  FSensors.Clear();
  FHovered.reset();
  FillLegend();
  SetFullRange(std::nullopt);
  SetUpAxes();
}

void TSensorsChart::SetSensors(const TSensorList& sensors, double startTime) {
  PrepareExtraAxes();
  Clear();
  FSensors.Set(sensors, startTime);
  FillLegend();
  SetFullRange(FSensors.TimeSpan());
  SetUpAxes();
}

void TSensorsChart::SetSensorVisible(std::size_t index, bool visible) {
  if (index >= FSensors.Series().size() || IsSensorVisible(index) == visible) return;
  EmitHidden(FSensors.SetVisible(index, visible), index);
  ScaleAxis(FSensors.Series()[index].look.axis);
  FillLegend();
  SetUpAxes();
}

void TSensorsChart::EmitHidden(const QStringList& hidden, std::size_t chosen) {
  if (hidden.isEmpty()) return;
  emit CursorValueChanged(tr("%1 hidden: the axis shows %2").arg(hidden.join(", "), FSensors.Series()[chosen].name));
}

void TSensorsChart::MoveSensor(std::size_t index, TSensorAxis axis) {
  if (index >= FSensors.Series().size()) return;
  PrepareExtraAxes();
  const TSensorAxis before = FSensors.Series()[index].look.axis;
  EmitHidden(FSensors.Move(index, axis), index);
  ScaleAxis(before);
  ScaleAxis(axis);
  FillLegend();
  SetUpAxes();
}

void TSensorsChart::SetHoveredTime(std::optional<double> time) {
  if (FHovered == time) return;
  FHovered = time;
  RedrawMarks();
}

bool TSensorsChart::IsSensorVisible(std::size_t index) const {
  return index < FSensors.Series().size() && FSensors.Series()[index].visible;
}

void TSensorsChart::SetSensorColour(std::string_view sensor, const QColor& colour) {
  if (FSensors.SetColour(sensor, colour)) Restyle();
}

void TSensorsChart::SetSensorNames(std::map<std::string, std::string> names) {
  if (FSensors.SetNames(std::move(names))) Restyle();
}

void TSensorsChart::SetAlarmLimits(std::map<std::string, std::pair<double, double>> limits) {
  if (FAlarms == limits) return;
  FAlarms = std::move(limits);
  Range().RescaleValues();
}

void TSensorsChart::SetAxisColour(TSensorAxis axis, const QColor& colour) {
  const std::uint32_t rgb = colour.rgb() & RGB_MASK;
  if (std::exchange(FAxisColours[static_cast<std::size_t>(axis)], rgb) != rgb) SetUpAxes();
}

void TSensorsChart::SetAxisLocked(TSensorAxis axis, bool locked) {
  PrepareExtraAxes();
  Range().LockAxis(AxisOf(axis), locked);
}

void TSensorsChart::ScaleValues() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) ScaleAxis(static_cast<TSensorAxis>(i));
}

void TSensorsChart::ScaleAxis(TSensorAxis axis) {
  if (!FAxes[static_cast<std::size_t>(axis)]) return;
  const TExtent extent = FSensors.ExtentOn(axis);
  double min{extent.least};
  double max{extent.largest};
  // Limits far away would press the readings flat.
  const double near = kLimitInSight * std::max(max - min, kMinSpan * std::max(std::fabs(min), std::fabs(max)));
  const double lowest = min - near;
  const double highest = max + near;
  for (const TSensorSeries& series : FSensors.Series()) {
    const auto limits = FAlarms.find(series.sensor);
    if (!series.visible || series.look.axis != axis || limits == FAlarms.end()) continue;
    for (const double limit : {limits->second.first, limits->second.second}) {
      if (!(limit >= lowest && limit <= highest)) continue;
      min = std::min(min, limit);
      max = std::max(max, limit);
    }
  }
  AxisOf(axis).setRange(ScaleAround(min, max));
}

void TSensorsChart::SetUpAxes() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i]) continue;
    FAxes[i]->setVisible(FSensors.IsUsed(static_cast<TSensorAxis>(i)));
    StyleAxis(*FAxes[i], InkOf(static_cast<TSensorAxis>(i)));
  }
  bool taken = false;
  for (const TSensorAxis axis : kGridOrder) {
    QCPAxis* const drawn = FAxes[static_cast<std::size_t>(axis)];
    if (!drawn) continue;
    drawn->grid()->setVisible(drawn->visible() && !taken);
    drawn->grid()->setZeroLinePen(drawn->grid()->pen());
    taken = taken || drawn->visible();
  }
  QueueReplot();
}

// The settings give an axis its colour; one that moved sensors have to themselves takes theirs.
QColor TSensorsChart::InkOf(TSensorAxis axis) const {
  const TSensorSeries* moved = FSensors.MovedOnly(axis);
  return moved ? InkOf(*moved) : SensorInk(palette(), FAxisColours[static_cast<std::size_t>(axis)]);
}

void TSensorsChart::Restyle() {
  TTimeChart::Restyle();
  FillLegend();
  SetUpAxes();
}

void TSensorsChart::FillLegend() {
  std::vector<TLegendEntry> entries;
  for (const std::size_t index : FSensors.Listed()) {
    const TSensorSeries& series = FSensors.Series()[index];
    entries.push_back({series.name, InkOf(series), series.visible});
  }
  Legend().SetEntries(std::move(entries));
}

void TSensorsChart::Prepare() {
  const QFontMetrics metrics(font(), this);
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i] || !FAxes[i]->visible()) continue;
    FAxes[i]->setLabel(TitleWithin(FSensors.TitleOf(static_cast<TSensorAxis>(i)), metrics, Rect().height()));
  }
}

void TSensorsChart::PaintSensors(QCPPainter& painter) {
  PaintAlarms(painter);
  const auto [first, last] = Range().Times();
  const auto [from, to] = WithRounding(FSensors.MsOf(first), FSensors.MsOf(last),
                                       (std::fabs(FSensors.Start()) + std::fabs(last)) * kMsPerDay);
  const TColumns columns = ColumnsOf(TimeAxis(), painter, from, to);
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || series.whole.IsEmpty()) continue;
    const auto readings = series.readings.Samples();
    Envelope(
        readings.size(), [readings](std::size_t i) { return readings[i].time; },
        [readings](std::size_t i) { return readings[i].xvalue; }, series.extents, columns, FEnvelope);
    painter.setAntialiasing(true);
    const QCPAxis& values = AxisOf(series.look.axis);
    DrawEnvelope(painter, TimeAxis(), values, FEnvelope, QPen(InkOf(series), kLineWidth), FSensors.Start(),
                 1 / kMsPerDay);
    if (PointsVisible())
      DrawLoneDots(painter, TimeAxis(), values, FEnvelope, InkOf(series), FSensors.Start(), 1 / kMsPerDay);
  }
}

void TSensorsChart::PaintAlarms(QCPPainter& painter) const {
  painter.setFont(font());
  std::set<std::string_view> drawn;  // several sensors of one name share their limits
  for (const TSensorSeries& series : FSensors.Series()) {
    const auto limits = FAlarms.find(series.sensor);
    if (!series.visible || limits == FAlarms.end() || !drawn.insert(series.sensor).second) continue;
    const auto draw = [&](double limit, Qt::AlignmentFlag side) {
      const QString name = tr("%1 alarm %2 %3").arg(series.name, Figure(limit), series.look.unit).trimmed();
      DrawLevel(painter, AxisOf(series.look.axis), limit, name, InkOf(series), palette().color(QPalette::Base),
                Qt::AlignLeft | side);
    };
    draw(limits->second.second, Qt::AlignTop);
    draw(limits->second.first, Qt::AlignBottom);
  }
}

void TSensorsChart::Clicked(const QPointF& position) {
  const auto entry = Legend().EntryAt(position);
  if (!entry || *entry >= FSensors.Listed().size()) return;
  const std::size_t index = FSensors.Listed()[*entry];
  SetSensorVisible(index, !FSensors.Series()[index].visible);
  emit SensorVisibleChanged(index, FSensors.Series()[index].visible);
}

QPointF TSensorsChart::PlaceOf(const TSensorSeries& series, const TSensorValue& reading) const {
  return {TimeAxis().coordToPixel(DateTimeOf(FSensors.Start(), reading.time)),
          AxisOf(series.look.axis).coordToPixel(double{reading.xvalue})};
}

TReading TSensorsChart::ReadingOf(const TSensorSeries& series, const TSensorValue& reading) const {
  const bool finite = std::isfinite(reading.xvalue);
  const QString number = finite ? Figure(double{reading.xvalue}) : QString("–");
  TReading result{QString("%1 %2 %3").arg(series.name, number, series.look.unit).trimmed(), InkOf(series),
                  std::nullopt};
  if (finite) result.at = PlaceOf(series, reading);
  return result;
}

std::vector<TReading> TSensorsChart::ReadingsAt(double time) const {
  const double ms = FSensors.MsOf(time);
  std::vector<TReading> readings;
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || series.readings.Samples().empty()) continue;
    if (readings.size() == kMaxCursorValues) {
      readings.push_back({"…", FaintInk(), std::nullopt});
      break;
    }
    readings.push_back(ReadingOf(series, series.readings.Samples()[series.readings.Nearest(ms)]));
  }
  return readings;
}

std::optional<TReading> TSensorsChart::NearestTo(const QPointF& position) const {
  const double ms = FSensors.MsOf(TimeAxis().pixelToCoord(position.x()));
  std::optional<TReading> nearest;
  double minDistance = std::numeric_limits<double>::infinity();
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || series.whole.IsEmpty()) continue;
    const auto readings = series.readings.Samples();
    const auto across = [&](std::size_t i) { return std::fabs(PlaceOf(series, readings[i]).x() - position.x()); };
    const auto distance = [&](std::size_t i) {
      const QPointF away = PlaceOf(series, readings[i]) - position;
      return std::hypot(away.x(), away.y());
    };
    const auto found = NearestOnScreen(readings.size(), series.readings.Nearest(ms), across, distance);
    if (!found || distance(*found) >= minDistance) continue;
    minDistance = distance(*found);
    nearest = ReadingOf(series, readings[*found]);
    nearest->text += tr(" at %1").arg(MomentText(DateTimeOf(FSensors.Start(), readings[*found].time)));
  }
  return nearest;
}

std::vector<TReading> TSensorsChart::DifferencesBetween(double a, double b) const {
  std::vector<TReading> differences;
  for (const TSensorSeries& series : FSensors.Series()) {
    const auto readings = series.readings.Samples();
    if (!series.visible || readings.empty()) continue;
    const double change = double{readings[series.readings.Nearest(FSensors.MsOf(b))].xvalue} -
                          double{readings[series.readings.Nearest(FSensors.MsOf(a))].xvalue};
    const QString number = std::isfinite(change) ? Figure(change) : QString(kNoNumber);
    differences.push_back(
        {QString("Δ%1 %2 %3").arg(series.name, number, series.look.unit).trimmed(), InkOf(series), std::nullopt});
  }
  return differences;
}

TRangeTable TSensorsChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = Range().Times();
  TRangeTable table = SeriesTable(tr("%1 … %2").arg(MomentText(from), MomentText(to)));
  for (const TSensorSeries& series : FSensors.Series()) {
    const auto readings = series.readings.Samples();
    if (!series.visible || readings.empty()) continue;
    const auto timeAt = [&](std::size_t i) { return DateTimeOf(FSensors.Start(), readings[i].time); };
    const auto valueAt = [readings](std::size_t i) { return readings[i].xvalue; };
    table.rows.push_back(
        SeriesRow(series.name, series.look.unit, StatisticsIn(Range().Times(), readings.size(), timeAt, valueAt)));
  }
  return table;
}
