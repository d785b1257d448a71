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
constexpr double kLimitInSight = 4;  // times the span of the readings
constexpr double kLeastSpan = 0.02;  // of the readings themselves, where they hardly change
constexpr std::size_t kMostCursorValues = 12;
constexpr int kMovedRank = -1;  // before all others
constexpr int kAxisGap = 8;     // px between an inner and an outer axis
// The axis whose ticks the horizontal grid lines follow is the first of these that is drawn.
constexpr TSensorAxis kGridOrder[] = {TSensorAxis::LeftOuter, TSensorAxis::LeftInner, TSensorAxis::RightInner,
                                      TSensorAxis::RightOuter};

}  // namespace

TSensorsChart::TSensorsChart(QWidget* parent) : TTimeChart(TAxisUnit::Days, parent) {
  setAccessibleName(tr("Sensors chart"));
  SetNothing(tr("No sensor readings"));
  FAxes[static_cast<std::size_t>(TSensorAxis::LeftInner)] = &ValueAxis();
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { PaintSensors(painter); });
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) { PaintHovered(painter); });
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
  FHovered.reset();
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
  for (std::size_t axis = 0; axis < kSensorAxisCount; ++axis) ChooseVisible(static_cast<TSensorAxis>(axis));
  FillLegend();
  SetFullRange(range);
  SetUpAxes();
}

TSensorsChart::TSensorSeries TSensorsChart::MakeSeries(const TSensor& sensor) const {
  TSensorSeries series;
  series.sensor = sensor.Name;
  series.look = PlacedLook(sensor.Name);
  series.readings.Set(sensor.Values());
  const auto readings = series.readings.Samples();
  series.extents.Set(readings.size(), [readings](std::size_t i) { return readings[i].xvalue; });
  series.whole = series.extents.Whole();
  return series;
}

TSensorLook TSensorsChart::PlacedLook(const std::string& sensor) const {
  TSensorLook look = LookOf(sensor);
  const auto moved = FMoved.find(sensor);
  if (moved == FMoved.end()) return look;
  look.axis = moved->second;
  look.rank = kMovedRank;
  return look;
}

void TSensorsChart::ChooseVisible(TSensorAxis axis) {
  int least = std::numeric_limits<int>::max();
  QString scale;  // of the sensor with that rank
  for (const TSensorSeries& series : FSeries) {
    if (series.look.axis != axis || series.readings.Samples().empty()) continue;
    if (series.look.rank >= least) continue;
    least = series.look.rank;
    scale = series.look.scale;
  }
  std::set<std::string_view> shown;  // of several sensors of one name the first is enough to start with
  for (TSensorSeries& series : FSeries) {
    if (series.look.axis != axis) continue;
    series.visible = series.look.scale == scale && !series.readings.Samples().empty() && !shown.contains(series.sensor);
    if (series.visible) shown.insert(series.sensor);
  }
}

void TSensorsChart::SetSensorVisible(std::size_t index, bool visible) {
  if (index >= FSeries.size() || FSeries[index].visible == visible) return;
  FSeries[index].visible = visible;
  if (visible) ShowAlone(FSeries[index]);
  ScaleAxis(FSeries[index].look.axis);
  FillLegend();
  SetUpAxes();
}

// An axis has one scale.
void TSensorsChart::ShowAlone(const TSensorSeries& chosen) {
  QStringList hidden;
  for (TSensorSeries& other : FSeries) {
    if (other.look.axis != chosen.look.axis || other.look.scale == chosen.look.scale) continue;
    if (std::exchange(other.visible, false)) hidden << other.name;
  }
  if (hidden.isEmpty()) return;
  emit CursorValueChanged(tr("%1 hidden: the axis shows %2").arg(hidden.join(", "), chosen.name));
}

void TSensorsChart::MoveSensor(std::size_t index, TSensorAxis axis) {
  if (index >= FSeries.size()) return;
  PrepareExtraAxes();
  TSensorSeries& chosen = FSeries[index];
  const TSensorAxis before = chosen.look.axis;
  FMoved[chosen.sensor] = axis;
  if (LookOf(chosen.sensor).axis == axis) FMoved.erase(chosen.sensor);
  for (TSensorSeries& series : FSeries) {
    if (series.sensor == chosen.sensor) series.look = PlacedLook(series.sensor);
  }
  TakeNamesAndColours();
  chosen.visible = !chosen.readings.Samples().empty();
  if (chosen.visible) ShowAlone(chosen);
  ScaleAxis(before);
  ScaleAxis(axis);
  FillLegend();
  SetUpAxes();
}

std::vector<TSensorsChart::TListed> TSensorsChart::Listed() const {
  std::vector<TListed> listed;
  for (const std::size_t index : FListed) {
    const TSensorSeries& series = FSeries[index];
    listed.push_back({index, series.name, series.visible, series.look.axis});
  }
  return listed;
}

void TSensorsChart::SetHoveredTime(std::optional<double> time) {
  if (FHovered == time) return;
  FHovered = time;
  RedrawMarks();
}

bool TSensorsChart::IsSensorVisible(std::size_t index) const {
  return index < FSeries.size() && FSeries[index].visible;
}

void TSensorsChart::SetSensorColour(std::string_view sensor, const QColor& colour) {
  if (!FChoices.SetColour(sensor, colour)) return;
  TakeNamesAndColours();
  Restyle();
}

void TSensorsChart::SetSensorNames(std::map<std::string, std::string> names) {
  if (!FChoices.SetNames(std::move(names))) return;
  TakeNamesAndColours();
  Restyle();
}

void TSensorsChart::TakeNamesAndColours() {
  for (TSensorSeries& series : FSeries) {
    series.name = FChoices.NameOf(series.sensor);
    series.look.colour = FChoices.ColourOf(series.sensor);
  }
}

void TSensorsChart::SetAlarmLimits(std::map<std::string, std::pair<double, double>> limits) {
  if (FAlarms == limits) return;
  FAlarms = std::move(limits);
  RescaleValues();
}

void TSensorsChart::SetAxisColour(TSensorAxis axis, const QColor& colour) {
  if (std::exchange(FAxisColours[static_cast<std::size_t>(axis)], colour) != colour) SetUpAxes();
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
  // Limits far away would press the readings flat.
  const double near =
      kLimitInSight * std::max(largest - least, kLeastSpan * std::max(std::fabs(least), std::fabs(largest)));
  const double lowest = least - near;
  const double highest = largest + near;
  for (const TSensorSeries& series : FSeries) {
    const auto limits = FAlarms.find(series.sensor);
    if (!series.visible || series.look.axis != axis || limits == FAlarms.end()) continue;
    for (const double limit : {limits->second.first, limits->second.second}) {
      if (!(limit >= lowest && limit <= highest)) continue;
      least = std::min(least, limit);
      largest = std::max(largest, limit);
    }
  }
  AxisOf(axis).setRange(ScaleAround(least, largest));
}

void TSensorsChart::SetUpAxes() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i]) continue;
    FAxes[i]->setVisible(std::ranges::any_of(FSeries, [i](const TSensorSeries& series) {
      return series.visible && series.look.axis == static_cast<TSensorAxis>(i);
    }));
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
  const TSensorSeries* moved = nullptr;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || series.look.axis != axis) continue;
    if (series.look.rank != kMovedRank) {
      moved = nullptr;
      break;
    }
    if (moved == nullptr) moved = &series;
  }
  return moved ? InkOf(*moved) : SensorInk(palette(), FAxisColours[static_cast<std::size_t>(axis)]);
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
  const auto [first, last] = TimeRange();
  const auto [from, to] = WithRounding(MsOf(first), MsOf(last), (std::fabs(FStart) + std::fabs(last)) * kMsPerDay);
  const TColumns columns = ColumnsOf(TimeAxis(), painter, from, to);
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

void TSensorsChart::PaintHovered(QCPPainter& painter) const {
  const QRect rect = Rect().rect();
  const double x = FHovered ? TimeAxis().coordToPixel(*FHovered) : -1;
  if (!HasData() || !(x >= rect.left() - 1 && x <= rect.right() + 1)) return;
  painter.setAntialiasing(false);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
  painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
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
