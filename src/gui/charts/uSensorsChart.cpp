#include "gui/charts/uSensorsChart.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "analysis/uEnvelope.h"
#include "base/uDateTime.h"
#include "base/uText.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kLimitInSight = 4;  // times the span of the readings
constexpr double kMinSpan = 0.02;    // relative to the readings, where these hardly change
constexpr int kAxisGap = 8;          // px between an inner and an outer axis
// The first of these axes that is drawn has the horizontal grid lines.
constexpr TSensorAxis kGridOrder[] = {TSensorAxis::LeftOuter, TSensorAxis::LeftInner, TSensorAxis::RightInner,
                                      TSensorAxis::RightOuter};

}  // namespace

TSensorsChart::TSensorsChart(QWidget* parent) : TTimeChart(TAxisUnit::Days, parent) {
  setAccessibleName(tr("Sensors chart"));
  SetPlaceholder(tr("No sensor readings"));
  FAxes = {&ValueAxis(), AddAxis(QCPAxis::atLeft), AddAxis(QCPAxis::atRight), AddAxis(QCPAxis::atRight)};
  for (const TSensorAxis inner : {TSensorAxis::LeftInner, TSensorAxis::RightInner}) AxisOf(inner).setPadding(kAxisGap);
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) {
    if (!HasData() || !FHovered) return;
    DrawMoment(painter, TimeAxis(), *FHovered, QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
  });
  Restyle();
  Clear();
}

void TSensorsChart::Clear() {
  FSensors.Clear();
  FHovered.reset();
  FillLegend();
  SetFullRange(std::nullopt);
  SetUpAxes();
}

void TSensorsChart::SetSensors(const TSensorList& sensors, double startTime) {
  Clear();
  FSensors.Set(sensors, startTime);
  FillLegend();
  SetFullRange(FSensors.TimeSpan());
  SetUpAxes();
}

void TSensorsChart::SetSensorVisible(std::size_t index, bool visible) {
  if (index >= FSensors.Series().size() || IsSensorVisible(index) == visible) return;
  Change(index, [&] { return FSensors.SetVisible(index, visible); });
}

void TSensorsChart::MoveSensor(std::size_t index, TSensorAxis axis) {
  if (index < FSensors.Series().size()) Change(index, [&] { return FSensors.Move(index, axis); });
}

void TSensorsChart::Change(std::size_t index, const std::function<QStringList()>& change) {
  const TSensorLook& look = FSensors.Series()[index].look;
  const TSensorAxis before = look.axis;
  const QStringList hidden = change();
  if (!hidden.isEmpty()) emit SensorsHidden(tr("%1 hidden: the axis shows %2").arg(hidden.join(", "), look.name));
  ScaleAxis(before);
  ScaleAxis(look.axis);
  FillLegend();
  SetUpAxes();
}

void TSensorsChart::SetHoveredTime(std::optional<double> time) {
  if (std::exchange(FHovered, time) != time) RedrawMarks();
}

bool TSensorsChart::IsSensorVisible(std::size_t index) const {
  return index < FSensors.Series().size() && FSensors.Series()[index].visible;
}

void TSensorsChart::ScaleValues() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) ScaleAxis(static_cast<TSensorAxis>(i));
}

bool TSensorsChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  using D = TDisplaySettings;
  return TTimeChart::ShowsChangeFrom(before) || Differ(before, Display(), &D::sensorColours, &D::axisColours,
                                                       &D::analogNames, &D::formats, &D::alarmActive, &D::limits);
}

std::vector<double> TSensorsChart::LimitsOf(const TSensorSeries& series) const {
  const auto alarm = series.look.quantity ? AlarmOf(*series.look.quantity) : std::nullopt;
  if (!alarm) return {};
  std::vector<double> limits = {alarm->max, alarm->min};
  std::erase_if(limits, [&series](double limit) { return !series.look.CanCross(limit); });
  return limits;
}

void TSensorsChart::ScaleAxis(TSensorAxis axis) {
  const TExtent extent = FSensors.ExtentOn(axis);
  double min{extent.min};
  double max{extent.max};
  // Limits that are far from the readings would leave no height to these.
  const double near = kLimitInSight * std::max(max - min, kMinSpan * std::max(std::fabs(min), std::fabs(max)));
  const double lowest = min - near;
  const double highest = max + near;
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || series.look.axis != axis) continue;
    for (const double limit : LimitsOf(series)) {
      if (!(limit >= lowest && limit <= highest)) continue;
      min = std::min(min, limit);
      max = std::max(max, limit);
    }
  }
  AxisOf(axis).setRange(ScaleAround(min, max));
}

void TSensorsChart::SetUpAxes() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    FAxes[i]->setVisible(FSensors.IsUsed(static_cast<TSensorAxis>(i)));
    StyleAxis(*FAxes[i], InkOf(static_cast<TSensorAxis>(i)));
  }
  bool taken = false;
  for (const TSensorAxis axis : kGridOrder) {
    const TTitledAxis& drawn = AxisOf(axis);
    drawn.grid()->setVisible(drawn.visible() && !taken);
    drawn.grid()->setZeroLinePen(drawn.grid()->pen());
    taken = taken || drawn.visible();
  }
  QueueReplot();
}

// The axis's colour of the settings; the sensor's, where only sensors that the user moved are on the axis.
QColor TSensorsChart::InkOf(TSensorAxis axis) const {
  const TSensorSeries* moved = FSensors.MovedOnly(axis);
  return moved ? InkOf(*moved) : SensorInk(palette(), Display().axisColours[static_cast<std::size_t>(axis)]);
}

QList<qreal> TSensorsChart::DashesOf(const TSensorSeries& series) const {
  std::size_t place = 0;
  for (const TSensorSeries& other : FSensors.Series()) {
    if (&other == &series) break;
    if (other.visible) ++place;
  }
  return Dashes(place);
}

void TSensorsChart::Restyle() {
  TTimeChart::Restyle();
  SetUpAxes();
}

std::vector<TLegendEntry> TSensorsChart::LegendEntries() const {
  std::vector<TLegendEntry> entries;
  for (const std::size_t index : FSensors.Listed()) {
    const TSensorSeries& series = FSensors.Series()[index];
    entries.push_back({series.look.name, InkOf(series), series.visible, DashesOf(series)});
  }
  return entries;
}

void TSensorsChart::Prepare() {
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    if (FAxes[i]->visible()) FAxes[i]->SetTitle(TitleOf(static_cast<TSensorAxis>(i)));
  }
}

// As much as fits: the names in the colours of their series and the unit, a dash in place of each name, the unit alone.
// On paper a dash says nothing.
std::vector<TTitlePart> TSensorsChart::TitleOf(TSensorAxis axis) const {
  const QColor ink = InkOf(axis);
  const std::vector<const TSensorSeries*> named = FSensors.NamedOn(axis);
  const QString unit = named.empty() ? QString() : named.front()->look.unit;
  std::vector<TTitlePart> names;
  std::vector<TTitlePart> dashes;
  for (const TSensorSeries* series : named) {
    if (!names.empty()) names.push_back({", ", ink});
    names.push_back({series->look.name, InkOf(*series)});
    dashes.push_back({"— ", InkOf(*series)});
  }
  if (!unit.isEmpty()) names.push_back({QString(" (%1)").arg(unit), ink});
  dashes.push_back({unit, ink});
  const QFontMetrics metrics(font(), this);
  const auto fits = [&](const std::vector<TTitlePart>& parts) {
    int width = 0;
    for (const TTitlePart& part : parts) width += metrics.horizontalAdvance(part.text);
    return width <= Rect().height();
  };
  if (fits(names)) return names;
  return fits(dashes) && !IsForPaper() ? dashes : std::vector<TTitlePart>{{unit, ink}};
}

void TSensorsChart::PaintData(QCPPainter& painter) {
  PaintAlarms(painter);
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || series.whole.IsEmpty()) continue;
    DrawCurve(
        painter, {TimeAxis(), AxisOf(series.look.axis), FSensors.Start(), kMsPerDay}, series.readings.Samples(),
        [](const TSensorValue& reading) { return reading.xvalue; }, series.extents,
        DashedPen(InkOf(series), kCurveWidth, DashesOf(series)), Labels(), PointsVisible(), series.gap);
  }
}

void TSensorsChart::PaintAlarms(QCPPainter& painter) {
  std::set<std::string_view> drawn;  // several sensors of one name share their limits
  for (const TSensorSeries& series : FSensors.Series()) {
    if (!series.visible || !drawn.insert(series.sensor).second) continue;
    for (const double limit : LimitsOf(series)) {
      const QString name = tr("%1 %2 %3").arg(series.look.name, Figure(limit), series.look.unit).trimmed();
      DrawLevel(painter, Labels(), AxisOf(series.look.axis), limit, name, InkOf(series));
    }
  }
}

void TSensorsChart::EntryClicked(std::size_t entry) {
  const std::size_t index = FSensors.Listed()[entry];
  SetSensorVisible(index, !FSensors.Series()[index].visible);
}

std::vector<TCurve> TSensorsChart::Curves() const {
  std::vector<TCurve> curves;
  for (const TSensorSeries& series : FSensors.Series()) {
    const auto readings = series.readings.Samples();
    if (!series.visible || readings.empty()) continue;
    const auto number = [this, &series](double value) {
      if (!std::isfinite(value)) return QString(kNoNumber);
      if (!series.look.quantity) return Figure(value);
      return QtText(MaskFloat(Display().FormatOf(*series.look.quantity), value));
    };
    curves.push_back({series.look.name, series.look.unit, InkOf(series), AxisOf(series.look.axis), readings.size(),
                      [this, readings](std::size_t i) { return DateTimeOf(FSensors.Start(), readings[i].time); },
                      [readings](std::size_t i) { return double{readings[i].xvalue}; },
                      [this, &series](double time) { return series.readings.Nearest(FSensors.MsOf(time)); }, number,
                      number, &series.extents});
  }
  return curves;
}
