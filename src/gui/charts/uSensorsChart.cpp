#include "gui/charts/uSensorsChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "analysis/uPointAbsorption.h"
#include "base/uDateTime.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr std::size_t kMostCursorValues = 12;
constexpr qsizetype kLongestName = 60;
constexpr int kAxisGap = 8;  // px between an inner and an outer axis
// The axis whose ticks the horizontal grid lines follow is the first of these that is drawn.
constexpr TSensorAxis kGridOrder[] = {TSensorAxis::LeftOuter, TSensorAxis::LeftInner, TSensorAxis::RightInner,
                                      TSensorAxis::RightOuter};

}  // namespace

TSensorsChart::TSensorsChart(QWidget* parent) : TTimeChart(TAxisUnit::Days, parent) {
  setAccessibleName(tr("Sensors chart"));
  SetNothing(tr("No sensor readings"));
  FAxes[static_cast<std::size_t>(TSensorAxis::LeftInner)] = &ValueAxis();
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { PaintSensors(painter); });
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
  FSeries.clear();
  FListed.clear();
  FillLegend();
  SetFullRange(std::nullopt);
  SetUpAxes();
}

void TSensorsChart::SetSensors(const TSensorList& sensors, double startTime) {
  PrepareExtraAxes();
  Clear();
  FStart = DrawableStart(startTime);
  std::optional<std::pair<double, double>> range;
  for (const TSensor& sensor : sensors.Sensors()) {
    const TSensorSeries& series = FSeries.emplace_back(MakeSeries(sensor));
    const auto readings = series.readings.Samples();
    if (readings.empty()) continue;
    const double first = DateTimeOf(FStart, readings.front().time);
    const double last = DateTimeOf(FStart, readings.back().time);
    range = range ? std::pair(std::min(range->first, first), std::max(range->second, last)) : std::pair(first, last);
    FListed.push_back(FSeries.size() - 1);
  }
  TakeNamesAndColours();
  ChooseVisible();
  FillLegend();
  SetFullRange(range);
  SetUpAxes();
}

TSensorsChart::TSensorSeries TSensorsChart::MakeSeries(const TSensor& sensor) const {
  TSensorSeries series;
  series.sensor = sensor.Name;
  series.look = LookOf(sensor.Name);
  series.readings.Set(sensor.Values());
  const auto readings = series.readings.Samples();
  series.extents.Set(readings.size(), [readings](std::size_t i) { return readings[i].xvalue; });
  series.whole = series.extents.Whole();
  return series;
}

void TSensorsChart::ChooseVisible() {
  int least = std::numeric_limits<int>::max();
  QString scale;  // of the sensor with that rank
  for (const TSensorSeries& series : FSeries) {
    if (series.look.axis != TSensorAxis::LeftInner || series.readings.Samples().empty()) continue;
    if (series.look.rank >= least) continue;
    least = series.look.rank;
    scale = series.look.scale;
  }
  std::set<std::string_view> shown;  // of several sensors of one name the first is enough to start with
  for (TSensorSeries& series : FSeries) {
    const bool fits = series.look.axis != TSensorAxis::LeftInner || series.look.scale == scale;
    series.visible = fits && !series.readings.Samples().empty() && !shown.contains(series.sensor);
    if (series.visible) shown.insert(series.sensor);
  }
}

void TSensorsChart::SetSensorVisible(std::size_t index, bool visible) {
  if (index >= FSeries.size() || FSeries[index].visible == visible) return;
  TSensorSeries& chosen = FSeries[index];
  chosen.visible = visible;
  for (TSensorSeries& other : FSeries) {
    if (visible && other.look.axis == chosen.look.axis && other.look.scale != chosen.look.scale) other.visible = false;
  }
  ScaleAxis(chosen.look.axis);
  FillLegend();
  SetUpAxes();
}

bool TSensorsChart::IsSensorVisible(std::size_t index) const {
  return index < FSeries.size() && FSeries[index].visible;
}

void TSensorsChart::SetSensorColour(std::string_view sensor, const QColor& colour) {
  FColours[std::string(sensor)] = colour;
  TakeNamesAndColours();
  Restyle();
}

void TSensorsChart::SetSensorNames(std::map<std::string, std::string> names) {
  FNames = std::move(names);
  TakeNamesAndColours();
  Restyle();
}

void TSensorsChart::TakeNamesAndColours() {
  for (TSensorSeries& series : FSeries) {
    const auto name = FNames.find(series.sensor);
    series.name = name == FNames.end() ? QString() : ShownText(name->second, kLongestName).trimmed();
    if (series.name.isEmpty()) series.name = ShownText(series.sensor, kLongestName);
    const auto colour = FColours.find(series.sensor);
    if (colour != FColours.end()) series.look.colour = colour->second;
  }
}

void TSensorsChart::SetAlarmLimits(std::map<std::string, std::pair<double, double>> limits) {
  FAlarms = std::move(limits);
  QueueReplot();
}

void TSensorsChart::SetAxisColour(TSensorAxis axis, const QColor& colour) {
  FAxisColours[static_cast<std::size_t>(axis)] = colour;
  SetUpAxes();
}

void TSensorsChart::SetAxisLocked(TSensorAxis axis, bool locked) {
  PrepareExtraAxes();
  LockAxis(AxisOf(axis), locked);
}

void TSensorsChart::ScaleValues() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) ScaleAxis(static_cast<TSensorAxis>(i));
}

void TSensorsChart::ScaleAxis(TSensorAxis axis) {
  if (!FAxes[static_cast<std::size_t>(axis)]) return;
  double least = std::numeric_limits<double>::infinity();
  double largest = -least;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.whole.IsEmpty() || series.look.axis != axis) continue;
    least = std::min(least, double{series.whole.least});
    largest = std::max(largest, double{series.whole.largest});
  }
  AxisOf(axis).setRange(ScaleAround(least, largest));
}

void TSensorsChart::SetUpAxes() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i]) continue;
    FAxes[i]->setVisible(std::ranges::any_of(FSeries, [i](const TSensorSeries& series) {
      return series.visible && series.look.axis == static_cast<TSensorAxis>(i);
    }));
    StyleAxis(*FAxes[i], SensorInk(palette(), FAxisColours[i]));
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

void TSensorsChart::Restyle() {
  TTimeChart::Restyle();
  FillLegend();
  SetUpAxes();
}

void TSensorsChart::FillLegend() {
  std::vector<TLegendEntry> entries;
  for (const std::size_t index : FListed) {
    const TSensorSeries& series = FSeries[index];
    entries.push_back({series.name, InkOf(series), series.visible});
  }
  Legend().SetEntries(std::move(entries));
}

void TSensorsChart::Prepare() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i] || !FAxes[i]->visible()) continue;
    FAxes[i]->setLabel(TitleOf(static_cast<TSensorAxis>(i), Rect().height()));
  }
}

// The names and unit as far as there is room: all names, the first, the unit alone.
QString TSensorsChart::TitleOf(TSensorAxis axis, int room) const {
  QStringList names;
  QString unit;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.look.axis != axis) continue;
    if (!names.contains(series.name)) names.append(series.name);
    unit = series.look.unit;
  }
  const QString inUnit = unit.isEmpty() ? QString() : QString(" (%1)").arg(unit);
  QString all = names.join(", ") + inUnit;
  const QFontMetrics metrics(font(), this);
  const auto fits = [&](const QString& title) { return metrics.horizontalAdvance(title) <= room; };
  if (names.isEmpty() || fits(all)) return all;
  QString first = names.front() + (names.size() > 1 ? QString(", …") : QString()) + inUnit;
  if (fits(first)) return first;
  return unit.isEmpty() ? metrics.elidedText(first, Qt::ElideRight, room) : unit;
}

double TSensorsChart::MsOf(double dateTime) const {
  return (dateTime - FStart) * kMsPerDay;
}

void TSensorsChart::PaintSensors(QCPPainter& painter) {
  PaintAlarms(painter);
  const auto [from, to] = TimeRange();
  const TColumns columns = ColumnsOf(TimeAxis(), painter, MsOf(from), MsOf(to));
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.whole.IsEmpty()) continue;
    const auto readings = series.readings.Samples();
    Envelope(
        readings.size(), [readings](std::size_t i) { return readings[i].time; },
        [readings](std::size_t i) { return readings[i].xvalue; }, series.extents, columns, FEnvelope);
    painter.setAntialiasing(true);
    const QCPAxis& values = AxisOf(series.look.axis);
    DrawEnvelope(painter, TimeAxis(), values, FEnvelope, QPen(InkOf(series), kLineWidth), FStart, 1 / kMsPerDay);
    if (PointsVisible()) DrawLoneDots(painter, TimeAxis(), values, FEnvelope, InkOf(series), FStart, 1 / kMsPerDay);
  }
}

void TSensorsChart::PaintAlarms(QCPPainter& painter) const {
  painter.setFont(font());
  std::set<std::string_view> drawn;  // several sensors of one name share their limits
  for (const TSensorSeries& series : FSeries) {
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
  if (!entry || *entry >= FListed.size()) return;
  const std::size_t index = FListed[*entry];
  SetSensorVisible(index, !FSeries[index].visible);
  emit SensorVisibleChanged(index, FSeries[index].visible);
}

QPointF TSensorsChart::PlaceOf(const TSensorSeries& series, const TSensorValue& reading) const {
  return {TimeAxis().coordToPixel(DateTimeOf(FStart, reading.time)),
          AxisOf(series.look.axis).coordToPixel(double{reading.xvalue})};
}

TTimeChart::TReading TSensorsChart::ReadingOf(const TSensorSeries& series, const TSensorValue& reading) const {
  const bool finite = std::isfinite(reading.xvalue);
  const QString number = finite ? Figure(double{reading.xvalue}) : QString("–");
  TReading result{QString("%1 %2 %3").arg(series.name, number, series.look.unit).trimmed(), InkOf(series),
                  std::nullopt};
  if (finite) result.at = PlaceOf(series, reading);
  return result;
}

std::vector<TTimeChart::TReading> TSensorsChart::ReadingsAt(double time) const {
  const double ms = MsOf(time);
  std::vector<TReading> readings;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.readings.Samples().empty()) continue;
    if (readings.size() == kMostCursorValues) {
      readings.push_back({"…", FaintInk(), std::nullopt});
      break;
    }
    readings.push_back(ReadingOf(series, series.readings.Samples()[series.readings.Nearest(ms)]));
  }
  return readings;
}

std::optional<TTimeChart::TReading> TSensorsChart::NearestTo(const QPointF& position) const {
  const double ms = MsOf(TimeAxis().pixelToCoord(position.x()));
  std::optional<TReading> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.whole.IsEmpty()) continue;
    const auto readings = series.readings.Samples();
    const auto across = [&](std::size_t i) { return std::fabs(PlaceOf(series, readings[i]).x() - position.x()); };
    const auto distance = [&](std::size_t i) {
      const QPointF away = PlaceOf(series, readings[i]) - position;
      return std::hypot(away.x(), away.y());
    };
    const auto found = NearestOnScreen(readings.size(), series.readings.Nearest(ms), across, distance);
    if (!found || distance(*found) >= least) continue;
    least = distance(*found);
    nearest = ReadingOf(series, readings[*found]);
    nearest->text += tr(" at %1").arg(MomentText(DateTimeOf(FStart, readings[*found].time)));
  }
  return nearest;
}
