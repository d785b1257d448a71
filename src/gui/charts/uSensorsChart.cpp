#include "gui/charts/uSensorsChart.h"

#include <QSet>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/uPointAbsorption.h"
#include "base/uDateTime.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kLineWidth = 1.2;
constexpr qsizetype kMostCursorValues = 12;
constexpr int kAxisGap = 8;  // px between an inner and an outer axis
// The axis whose ticks the horizontal grid lines follow is the first of these that is drawn.
constexpr TSensorAxis kGridOrder[] = {TSensorAxis::LeftOuter, TSensorAxis::LeftInner, TSensorAxis::RightInner,
                                      TSensorAxis::RightOuter};

}  // namespace

TSensorsChart::TSensorsChart(QWidget* parent) : TTimeChart(TTimeUnit::Days, parent) {
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
  ChooseVisible();
  FillLegend();
  SetFullRange(range);
  SetUpAxes();
}

TSensorsChart::TSensorSeries TSensorsChart::MakeSeries(const TSensor& sensor) const {
  TSensorSeries series;
  series.name = QtText(sensor.Name);
  series.look = LookOf(sensor.Name);
  series.readings.Set(sensor.Values());
  float least = std::numeric_limits<float>::infinity();
  float largest = -least;
  for (const TSensorValue& reading : series.readings.Samples()) {
    if (!std::isfinite(reading.xvalue)) continue;
    least = std::min(least, reading.xvalue);
    largest = std::max(largest, reading.xvalue);
  }
  series.hasValues = least <= largest;
  if (series.hasValues) {
    series.least = least;
    series.largest = largest;
  }
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
  QSet<QString> shown;  // of several sensors of one name the first is enough to start with
  for (TSensorSeries& series : FSeries) {
    const bool fits = series.look.axis != TSensorAxis::LeftInner || series.look.scale == scale;
    series.visible = fits && !series.readings.Samples().empty() && !shown.contains(series.name);
    if (series.visible) shown.insert(series.name);
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

void TSensorsChart::ScaleValues() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) ScaleAxis(static_cast<TSensorAxis>(i));
}

void TSensorsChart::ScaleAxis(TSensorAxis axis) {
  if (!FAxes[static_cast<std::size_t>(axis)]) return;
  double least = std::numeric_limits<double>::infinity();
  double largest = -least;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || !series.hasValues || series.look.axis != axis) continue;
    least = std::min(least, double{series.least});
    largest = std::max(largest, double{series.largest});
  }
  AxisOf(axis).setRange(ScaleAround(least, largest));
}

void TSensorsChart::SetUpAxes() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (!FAxes[i]) continue;
    const auto first = std::ranges::find_if(FSeries, [i](const TSensorSeries& series) {
      return series.visible && series.look.axis == static_cast<TSensorAxis>(i);
    });
    FAxes[i]->setVisible(first != FSeries.end());
    if (first != FSeries.end()) StyleAxis(*FAxes[i], InkOf(palette(), first->look));
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
    entries.push_back({series.name, InkOf(palette(), series.look), series.visible});
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
  const auto [from, to] = TimeRange();
  const TColumns columns = ColumnsOf(TimeAxis(), painter, MsOf(from), MsOf(to));
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible || !series.hasValues) continue;
    const auto readings = series.readings.Samples();
    Envelope(
        readings.size(), [readings](std::size_t i) { return readings[i].time; },
        [readings](std::size_t i) { return readings[i].xvalue; }, columns, FEnvelope);
    DrawEnvelope(painter, TimeAxis(), AxisOf(series.look.axis), FEnvelope,
                 QPen(InkOf(palette(), series.look), kLineWidth), FStart, 1 / kMsPerDay);
  }
}

void TSensorsChart::Clicked(const QPointF& position) {
  const auto entry = Legend().EntryAt(position);
  if (!entry || *entry >= FListed.size()) return;
  const std::size_t index = FListed[*entry];
  SetSensorVisible(index, !FSeries[index].visible);
  emit SensorVisibleChanged(index, FSeries[index].visible);
}

QString TSensorsChart::CursorText(const QPointF& position) const {
  const double ms = MsOf(TimeAxis().pixelToCoord(position.x()));
  QStringList values;
  for (const TSensorSeries& series : FSeries) {
    if (!series.visible) continue;
    if (values.size() == kMostCursorValues) {
      values.append("…");
      break;
    }
    const float value = series.readings.Samples()[series.readings.Nearest(ms)].xvalue;
    const QString number = std::isfinite(value) ? Figure(double{value}) : QString("–");
    values.append(QString("%1 %2 %3").arg(series.name, number, series.look.unit).trimmed());
  }
  return values.join("  ·  ");
}
