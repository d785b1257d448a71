#include "gui/charts/uEventsChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "analysis/uMissionFigures.h"
#include "analysis/uPointAbsorption.h"
#include "base/uDateTime.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kReach = 8;         // px, how near to an event a click is meant for it
constexpr double kLevelInSight = 4;  // times the largest peak; a level above would press the events flat
constexpr double kTotalRadius = 3;   // px, of the dot behind
constexpr std::size_t kNoAxis = 3;
constexpr double kFaint = 0.16;  // of the text's colour, for events that the filter hides

std::uint8_t AxisOf(const TEvent& event) {
  const std::size_t axis = std::string_view("XYZ").find(event.MaxAxis.front());
  return static_cast<std::uint8_t>(std::min(axis, kNoAxis));
}

}  // namespace

TEventsChart::TEventsChart(QWidget* parent) : TTimeChart(TAxisUnit::Days, parent) {
  setAccessibleName(tr("Events chart"));
  ValueAxis().setLabel(tr("Acceleration (g)"));
  SetNothing(tr("No events"));
  new TPainted(&Rect(), "main", [this](QCPPainter& painter) { PaintEvents(painter); });
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) {
    if (FHovered != FSelected) PaintMark(painter, {FHovered, false});
    PaintMark(painter, {FSelected, true});
  });
  Restyle();
  Clear();
}

void TEventsChart::Clear() {
  FTimes = {};
  FMax = FMaxSingle = {};
  FAxes = {};
  FIndexes = {};
  FVisible = {};
  FLargest = 0;
  FTrigger.reset();
  FSelected.reset();
  FBeforeClick.reset();
  FHovered.reset();
  FDots.Clear();
  SetFullRange(std::nullopt);
}

void TEventsChart::SetEvents(const TEventList& events, const TMissionData& mission, const TAxesPresent& axes) {
  Clear();
  const std::string why = WhyNoEvents(axes);
  SetNothing(why.empty() ? tr("No events") : QtText(why));
  const double start = DrawableStart(events.StartTime);
  const std::size_t count = events.Count();
  FTimes.reserve(count);
  FMax.reserve(count);
  FMaxSingle.reserve(count);
  FAxes.reserve(count);
  for (const TEvent& event : events.Events()) {
    FTimes.push_back(DateTimeOf(start, event.GetStartTime()));
    FMax.push_back(event.Max);
    FMaxSingle.push_back(event.MaxSingle);
    FAxes.push_back(AxisOf(event));
    if (std::isfinite(event.Max)) FLargest = std::max(FLargest, event.Max);
  }
  const auto finite = [](double time) { return std::isfinite(time); };
  if (!std::ranges::all_of(FTimes, finite) || !std::ranges::is_sorted(FTimes)) SortByTime();
  Measure();
  if (mission.bValid && mission.adxl_level_on > 0) FTrigger = mission.adxl_level_on;
  if (!FTimes.empty()) SetFullRange(std::pair(FTimes.front(), FTimes.back()));
}

void TEventsChart::SortByTime() {
  FIndexes.resize(FTimes.size());
  std::iota(FIndexes.begin(), FIndexes.end(), 0U);
  std::erase_if(FIndexes, [this](std::uint32_t index) { return !std::isfinite(FTimes[index]); });
  std::ranges::stable_sort(FIndexes, {}, [this](std::uint32_t index) { return FTimes[index]; });
  const auto ordered = [this](const auto& column) {
    std::remove_cvref_t<decltype(column)> sorted;
    sorted.reserve(FIndexes.size());
    for (const std::uint32_t index : FIndexes) sorted.push_back(column[index]);
    return sorted;
  };
  FMax = ordered(FMax);
  FMaxSingle = ordered(FMaxSingle);
  FAxes = ordered(FAxes);
  FTimes = ordered(FTimes);
}

std::optional<std::size_t> TEventsChart::PlaceOf(std::optional<std::size_t> index) const {
  if (!index) return std::nullopt;
  if (FIndexes.empty()) return *index < FTimes.size() ? index : std::nullopt;
  const auto found = std::ranges::find(FIndexes, *index);
  if (found == FIndexes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - FIndexes.begin());
}

float TEventsChart::StemOf(std::size_t place, std::size_t series) const {
  constexpr float kNothing = std::numeric_limits<float>::quiet_NaN();
  if (IsVisibleEvent(place) == (series == kHidden)) return kNothing;
  if (series < kNoAxis) return FAxes[place] == series ? FMaxSingle[place] : kNothing;
  return FMax[place];
}

void TEventsChart::Measure() {
  for (std::size_t series = 0; series < FStems.size(); ++series) {
    FStems[series].Set(FTimes.size(), [this, series](std::size_t place) { return StemOf(place, series); });
  }
}

void TEventsChart::SetVisibleEvents(std::vector<bool> visible) {
  if (visible == FVisible) return;
  FVisible = std::move(visible);
  Measure();
  QueueReplot();
}

void TEventsChart::SetSelectedEvent(std::optional<std::size_t> index) {
  const auto place = PlaceOf(index);
  if (place == FSelected) return;
  FSelected = place;
  RedrawMarks();
}

void TEventsChart::SetHoveredEvent(std::optional<std::size_t> index) {
  const auto place = PlaceOf(index);
  if (place == FHovered) return;
  FHovered = place;
  RedrawMarks();
}

void TEventsChart::SetPointAbsorption(bool on) {
  if (FDots.Absorption() == on) return;
  FDots.SetAbsorption(on);
  QueueReplot();
}

void TEventsChart::SetColour(TSeries series, const QColor& colour) {
  if (std::exchange(FColours[static_cast<std::size_t>(series)], colour) != colour) Restyle();
}

void TEventsChart::SetAlarmLimits(TAlarmLimits limits) {
  if (std::exchange(FAlarm, limits) != limits) RescaleValues();
}

void TEventsChart::SetMasks(TValueMasks masks) {
  FMasks = std::move(masks);
  RedrawMarks();
}

void TEventsChart::ScaleValues() {
  double top = FLargest;
  const auto include = [&](double level) {
    if (level <= FLargest * kLevelInSight) top = std::max(top, level);
  };
  if (FTrigger) include(*FTrigger);
  if (FAlarm) include(FAlarm->second);
  if (FAlarm) include(std::fabs(FAlarm->first));
  ValueAxis().setRange(0, top > 0 ? top * 1.1 : 1.0);
}

QColor TEventsChart::InkOf(TSeries series) const {
  return InkOn(palette(), FColours[static_cast<std::size_t>(series)]);
}

QString TEventsChart::GText(double g) const {
  return tr("%1 g").arg(QtText(MaskFloat(FMasks.acceleration, g)));
}

void TEventsChart::Restyle() {
  TTimeChart::Restyle();
  const std::array names = {tr("X"), tr("Y"), tr("Z"), tr("Total")};
  std::vector<TLegendEntry> entries;
  for (std::size_t i = 0; i < names.size(); ++i) {
    entries.push_back({names[i], InkOf(static_cast<TSeries>(i))});
  }
  Legend().SetEntries(std::move(entries));
}

// The levels stand behind, so that their names hide no peak.
void TEventsChart::PaintEvents(QCPPainter& painter) {
  if (FTimes.empty()) return;
  painter.setFont(font());
  PaintLevels(painter);
  if (!FVisible.empty()) {
    PaintStems(painter, kHidden, Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), kFaint));
  }
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    PaintStems(painter, static_cast<std::size_t>(series), InkOf(series));
  }
  PaintDots(painter);
}

void TEventsChart::PaintLevels(QCPPainter& painter) const {
  const QColor ground = palette().color(QPalette::Base);
  if (FTrigger) {
    DrawLevel(painter, ValueAxis(), double{*FTrigger}, tr("trigger %1 g").arg(Figure(double{*FTrigger})), FaintInk(),
              ground);
  }
  if (!FAlarm) return;
  // Not at the right, because the upper limit often is the trigger level.
  const QColor ink = InkOn(palette(), kAlarmColour);
  const auto draw = [&](double level, const QString& name, Qt::Alignment place) {
    DrawLevel(painter, ValueAxis(), level, tr("alarm %1 g").arg(name), ink, ground, place | Qt::AlignTop);
  };
  const auto [lower, upper] = *FAlarm;
  if (std::fabs(lower) == upper) return draw(upper, "±" + Figure(upper), Qt::AlignLeft);
  draw(upper, Figure(upper), Qt::AlignLeft);
  draw(std::fabs(lower), Figure(lower), Qt::AlignHCenter);
}

void TEventsChart::PaintDots(QCPPainter& painter) {
  const QRect rect = Rect().rect();
  FDots.Begin(rect, font(), bufferDevicePixelRatio());
  // Both axes are linear; asking the axis for each of a million events takes longer than all the rest.
  const QCPRange times = TimeAxis().range();
  const QCPRange values = ValueAxis().range();
  const double left = TimeAxis().coordToPixel(times.lower);
  const double foot = ValueAxis().coordToPixel(values.lower);
  const double perTime = rect.width() / times.size();
  const double perG = rect.height() / values.size();
  const auto key = [this](std::size_t i) { return FTimes[i]; };
  const std::size_t end =
      FirstAtOrAfter(FTimes.size(), key, std::nextafter(times.upper, std::numeric_limits<double>::infinity()));
  for (std::size_t i = FirstAtOrAfter(FTimes.size(), key, times.lower); i < end; ++i) {
    if (!IsVisibleEvent(i)) continue;
    const double g = FAxes[i] == kNoAxis ? FMax[i] : FMaxSingle[i];
    FDots.Add(left + (FTimes[i] - times.lower) * perTime, foot - (g - values.lower) * perG, i);
  }
  std::vector<QColor> inks;
  for (std::size_t series = 0; series < kSeriesCount; ++series) inks.push_back(InkOf(static_cast<TSeries>(series)));
  FDots.Paint(painter, inks, palette().color(QPalette::Base), [this](std::size_t i) { return std::size_t{FAxes[i]}; });
}

// Of each column of pixels the highest.
void TEventsChart::PaintStems(QCPPainter& painter, std::size_t series, const QColor& ink) {
  const auto [from, to] = TimeRange();
  ColumnPeaks(
      FTimes.size(), [this](std::size_t i) { return FTimes[i]; },
      [this, series](std::size_t i) { return StemOf(i, series); }, FStems[series],
      ColumnsOf(TimeAxis(), painter, from, to), FPeaks);
  const QRect rect = Rect().rect();
  const auto clamped = [&rect](double y) { return std::clamp(y, rect.top() - 20.0, rect.bottom() + 20.0); };
  const double foot = clamped(ValueAxis().coordToPixel(0));
  QList<QLineF> stems;
  for (const std::size_t place : FPeaks) {
    const double x = TimeAxis().coordToPixel(FTimes[place]);
    stems.append(QLineF(x, foot, x, clamped(ValueAxis().coordToPixel(double{StemOf(place, series)}))));
  }
  painter.setAntialiasing(false);
  painter.setPen(QPen(ink, 1));
  painter.drawLines(stems);
  const bool crowded = static_cast<double>(FPeaks.size()) * 2 * kTotalRadius > rect.width();
  if (series != static_cast<std::size_t>(TSeries::Total) || crowded) return;
  QList<QPointF> dots;
  for (const QLineF& stem : stems) dots.append(stem.p2());
  painter.setAntialiasing(true);
  painter.setPen(QPen(ink, 2 * kTotalRadius, Qt::SolidLine, Qt::RoundCap));
  painter.drawPoints(dots.constData(), static_cast<int>(dots.size()));
}

void TEventsChart::PaintMark(QCPPainter& painter, const TMark& mark) const {
  if (!mark.place) return;
  const QRect rect = Rect().rect();
  const double x = TimeAxis().coordToPixel(FTimes[*mark.place]);
  const double y = ValueAxis().coordToPixel(double{FMax[*mark.place]});
  if (!(x >= rect.left() - 1 && x <= rect.right() + 1)) return;
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.setAntialiasing(false);
  painter.setPen(QPen(highlight, 1, mark.selected ? Qt::SolidLine : Qt::DotLine));
  painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));
  if (!(y >= rect.top() - 20 && y <= rect.bottom() + 20)) return;
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(highlight, mark.selected ? 2.5 : 1.5));
  painter.drawEllipse(QPointF(x, y), 7, 7);
}

// The event whose stem or dot is nearest within reach; of several in one column of pixels the largest.
std::optional<std::size_t> TEventsChart::PlaceNear(const QPointF& position) const {
  if (FTimes.empty()) return std::nullopt;
  const double from = TimeAxis().pixelToCoord(position.x() - kReach);
  const double to = TimeAxis().pixelToCoord(position.x() + kReach);
  std::vector<std::size_t> peaks;
  ColumnPeaks(
      FTimes.size(), [this](std::size_t i) { return FTimes[i]; },
      [this](std::size_t i) { return StemOf(i, static_cast<std::size_t>(TSeries::Total)); },
      FStems[static_cast<std::size_t>(TSeries::Total)], {from, to, static_cast<std::size_t>(2 * kReach)}, peaks);
  std::optional<std::size_t> nearest;
  double least = kReach;
  for (const std::size_t place : peaks) {
    const double dx = position.x() - TimeAxis().coordToPixel(FTimes[place]);
    const double above = std::max(0.0, ValueAxis().coordToPixel(double{FMax[place]}) - position.y());
    const double distance = std::hypot(dx, above);
    if (distance > least) continue;
    least = distance;
    nearest = place;
  }
  return nearest;
}

// The foot of a stem is nearest to the line that crosses it.
std::optional<std::size_t> TEventsChart::PlaceAt(double time) const {
  return PlaceNear({TimeAxis().coordToPixel(time), static_cast<double>(Rect().rect().bottom())});
}

void TEventsChart::Clicked(const QPointF& position) {
  // The dots of the first and the last event stand half outside the axes.
  const QRectF reach = QRectF(Rect().rect()).adjusted(-kReach, 0, kReach, 0);
  if (!reach.contains(position)) return;
  // A point that holds several is its largest.
  auto place = FDots.GroupAt(position);
  if (!place) place = PlaceNear(position);
  FBeforeClick = FSelected;
  if (place) emit EventClicked(IndexOf(*place));
}

void TEventsChart::Unclicked() {
  if (FBeforeClick && FBeforeClick != FSelected) emit EventClicked(IndexOf(*FBeforeClick));
}

QString TEventsChart::CursorText(const QPointF& position) const {
  QString pointed = GText(ValueAxis().pixelToCoord(position.y()));
  auto place = FDots.GroupAt(position);
  if (!place) place = PlaceNear(position);
  if (!place) return pointed;
  return tr("%1  ·  event %2: %3").arg(pointed).arg(IndexOf(*place)).arg(GText(double{FMax[*place]}));
}

std::vector<TTimeChart::TReading> TEventsChart::ReadingsAt(double time) const {
  const auto place = PlaceAt(time);
  if (!place) return {};
  const QPointF at(TimeAxis().coordToPixel(FTimes[*place]), ValueAxis().coordToPixel(double{FMax[*place]}));
  const QColor text = palette().color(QPalette::Text);
  std::vector<TReading> readings = {{tr("event %1").arg(IndexOf(*place)), text, std::nullopt},
                                    {tr("peak %1").arg(GText(double{FMax[*place]})), InkOf(TSeries::Total), at}};
  if (FAxes[*place] != kNoAxis) {
    const std::array names = {tr("X"), tr("Y"), tr("Z")};
    readings.push_back({tr("%1 %2").arg(names[FAxes[*place]], GText(double{FMaxSingle[*place]})),
                        InkOf(static_cast<TSeries>(FAxes[*place])), std::nullopt});
  }
  return readings;
}
