#include "gui/charts/uEventsChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/uEnvelope.h"
#include "analysis/uMissionFigures.h"
#include "analysis/uRangeStatistics.h"
#include "gui/charts/uChartPaint.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kReach = 8;         // px, how near to an event a click is meant for it
constexpr double kLevelInSight = 4;  // times the largest peak; a level above is out of sight
constexpr double kTotalRadius = 3;   // px, of the dot behind
constexpr double kRingAway = 3.5;    // px, of the ring of the selected event from its dot
constexpr double kFaint = 0.16;      // of the text's colour, for events that the filter hides

}  // namespace

TEventsChart::TEventsChart(QWidget* parent) : TSeriesChart(TAxisUnit::Days, true, parent) {
  setAccessibleName(tr("Events chart"));
  SetValueTitle(tr("Acceleration"), tr("g"));
  SetPlaceholder(tr("No events"));
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) {
    if (FHovered != FSelected) PaintMark(painter, FHovered, false);
    PaintMark(painter, FSelected, true);
  });
  Restyle();
  Clear();
}

void TEventsChart::Clear() {
  FEvents.Clear();
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
  SetPlaceholder(why.empty() ? tr("No events") : QtText(why));
  FEvents.Set(events);
  if (mission.bValid && mission.adxl_level_on > 0) FTrigger = mission.adxl_level_on;
  FillLegend();
  if (FEvents.Count() > 0) SetFullRange(TTimeSpan{FEvents.Time(0), FEvents.Time(FEvents.Count() - 1)});
}

void TEventsChart::SetVisibleEvents(std::vector<bool> visible) {
  if (FEvents.SetVisible(std::move(visible))) QueueReplot();
}

void TEventsChart::SetSelectedEvent(std::optional<std::size_t> index) {
  const auto place = FEvents.PlaceOf(index);
  if (std::exchange(FSelected, place) != place) RedrawMarks();
}

void TEventsChart::SetHoveredEvent(std::optional<std::size_t> index) {
  const auto place = FEvents.PlaceOf(index);
  if (std::exchange(FHovered, place) != place) RedrawMarks();
}

bool TEventsChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  using D = TDisplaySettings;
  return TSeriesChart::ShowsChangeFrom(before) ||
         Differ(before, Display(), &D::pointAbsorption, &D::formats, &D::alarmActive, &D::limits);
}

void TEventsChart::ScaleValues() {
  const double max = FEvents.MaxPeak();
  double top = max;
  const auto include = [&](double level) {
    if (level <= max * kLevelInSight) top = std::max(top, level);
  };
  if (FTrigger) include(*FTrigger);
  if (const auto alarm = AlarmOf(TQuantity::Acceleration)) {
    include(alarm->max);
    include(std::fabs(alarm->min));
  }
  ValueAxis().setRange(0, top > 0 ? top * 1.1 : 1.0);
}

QString TEventsChart::Number(double g) const {
  return QtText(MaskFloat(Display().FormatOf(TQuantity::Acceleration), g));
}

QString TEventsChart::GText(double g) const {
  return tr("%1 g").arg(Number(g));
}

// On paper the levels stand in the legend: there may be a bar wherever a label could be.
std::vector<TLegendEntry> TEventsChart::LegendEntries() const {
  std::vector<TLegendEntry> entries;
  for (const TSeries series : kAllSeries) {
    TLegendEntry entry{NameOf(series), InkOf(series), IsSeriesVisible(series)};
    if (IsForPaper()) entry.marker = kMarkers[Place(series)];
    entries.push_back(std::move(entry));
  }
  for (const TLevel& level : IsForPaper() ? Levels() : std::vector<TLevel>()) {
    entries.push_back({level.name, level.ink, true, {5, 3}});
  }
  return entries;
}

std::vector<TEventsChart::TLevel> TEventsChart::Levels() const {
  std::vector<TLevel> levels;
  if (FTrigger) levels.push_back({double{*FTrigger}, tr("trigger %1 g").arg(Figure(double{*FTrigger})), FaintInk()});
  const auto alarm = AlarmOf(TQuantity::Acceleration);
  if (!alarm) return levels;
  const QColor ink = QColor(TokensOf(palette()).alarm);
  const auto add = [&](double level, const QString& name) {
    if (!std::isfinite(level)) return;  // this end is not judged
    levels.push_back({level, tr("alarm %1 g").arg(name), ink});
  };
  const auto [lower, upper] = *alarm;
  const bool same = std::fabs(lower) == upper;
  add(upper, (same ? "±" : "") + Figure(upper));
  if (!same) add(std::fabs(lower), Figure(lower));
  return levels;
}

// The levels are drawn first, so that their names hide no peak.
void TEventsChart::PaintData(QCPPainter& painter) {
  for (const TLevel& level : Levels()) {
    DrawLevel(painter, Labels(), ValueAxis(), level.g, IsForPaper() ? QString() : level.name, level.ink);
  }
  if (FEvents.HasFilter()) {
    PaintStems(painter, TEventsInTime::kHidden,
               Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), kFaint));
  }
  for (const TSeries series : {TSeries::Total, TSeries::X, TSeries::Y, TSeries::Z}) {
    if (IsSeriesVisible(series)) PaintStems(painter, Place(series), InkOf(series));
  }
  PaintDots(painter);
}

void TEventsChart::PaintDots(QCPPainter& painter) {
  const QRect rect = Rect().rect();
  FDots.SetAbsorption(Display().pointAbsorption);
  FDots.SetShapes(IsForPaper());
  FDots.Begin(rect, font(), bufferDevicePixelRatio());
  const QCPRange range = TimeAxis().range();
  const TPixels times(TimeAxis());
  const TPixels values(ValueAxis());
  const auto key = [this](std::size_t i) { return FEvents.Time(i); };
  const std::size_t end =
      FirstAtOrAfter(FEvents.Count(), key, std::nextafter(range.upper, std::numeric_limits<double>::infinity()));
  FDots.AddRising(
      FirstAtOrAfter(FEvents.Count(), key, range.lower), end,
      [this](std::size_t i) { return FEvents.IsVisible(i) && IsSeriesVisible(static_cast<TSeries>(FEvents.Axis(i))); },
      [&](std::size_t i) { return times.At(FEvents.Time(i)); },
      [&](std::size_t i) { return values.At(double{FEvents.Peak(i)}); },
      [this](std::size_t i) { return double{FEvents.Max(i)}; });
  std::vector<QColor> inks;
  for (const TSeries series : kAllSeries) inks.push_back(InkOf(series));
  FDots.Paint(painter, inks, palette().color(QPalette::Base), [this](std::size_t i) { return FEvents.Axis(i); });
  FDots.KeepClear(Labels());
}

// Draws the highest stem of each column of pixels.
void TEventsChart::PaintStems(QCPPainter& painter, std::size_t series, const QColor& ink) {
  const std::vector<std::size_t> peaks = FEvents.StemsIn(ColumnsOf(TimeAxis(), painter, Range().Times()), series);
  const QRect rect = Rect().rect();
  // An SVG file has no clip.
  const double beyond = painter.modes().testFlag(QCPPainter::pmVectorized) ? 0 : 20;
  const auto clamped = [&](double y) { return std::clamp(y, rect.top() - beyond, rect.bottom() + beyond); };
  const double foot = clamped(ValueAxis().coordToPixel(0));
  QList<QLineF> stems;
  for (const std::size_t place : peaks) {
    const double x = TimeAxis().coordToPixel(FEvents.Time(place));
    stems.append(QLineF(x, foot, x, clamped(ValueAxis().coordToPixel(double{FEvents.Stem(place, series)}))));
  }
  painter.setAntialiasing(false);
  painter.setPen(QPen(ink, 1));
  painter.drawLines(stems);
  std::vector<QPointF> clear;
  const QPointF gap(0, std::numeric_limits<double>::quiet_NaN());
  for (const QLineF& stem : stems) clear.insert(clear.end(), {stem.p1(), stem.p2(), gap});
  Labels().AddStems(clear);
  const bool crowded = static_cast<double>(peaks.size()) * 2 * kTotalRadius > rect.width();
  if (series != Place(TSeries::Total) || crowded) return;
  QList<QPointF> dots;
  for (const QLineF& stem : stems) dots.append(stem.p2());
  DrawDots(painter, dots, IsForPaper() ? kMarkers[series] : TMarker::Circle, kTotalRadius, ink);
}

void TEventsChart::PaintMark(QCPPainter& painter, std::optional<std::size_t> place, bool selected) const {
  if (!place) return;
  const QRect rect = Rect().rect();
  const double x = TimeAxis().coordToPixel(FEvents.Time(*place));
  const bool hasDot = FEvents.IsVisible(*place) && IsSeriesVisible(static_cast<TSeries>(FEvents.Axis(*place)));
  const double y = ValueAxis().coordToPixel(double{hasDot ? FEvents.Peak(*place) : FEvents.Max(*place)});
  const auto [middle, radius] = hasDot ? FDots.CircleOf({x, y}) : TEventDots::TCircle{{x, y}, kTotalRadius};
  const QPointF corner(radius + kRingAway, radius + kRingAway);
  const QRectF ring(middle - corner, middle + corner);
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.save();
  // The line leaves the number of a group legible.
  painter.setClipRegion(QRegion(rect) - QRegion(ring.toRect(), QRegion::Ellipse));
  const QPen line(highlight, 1, selected ? Qt::SolidLine : Qt::DotLine);
  const bool inSight = DrawMoment(painter, TimeAxis(), FEvents.Time(*place), line);
  painter.restore();
  if (!inSight || !(y >= rect.top() - 20 && y <= rect.bottom() + 20)) return;
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(highlight, selected ? 2.5 : 1.5));
  painter.drawEllipse(ring);
}

// The event whose stem or dot is nearest within reach; of several in one column of pixels, the one with the highest
// peak.
std::optional<std::size_t> TEventsChart::PlaceNear(const QPointF& position) const {
  if (FEvents.Count() == 0) return std::nullopt;
  const TTimeSpan near{MomentAt(position - QPointF(kReach, 0)), MomentAt(position + QPointF(kReach, 0))};
  std::optional<std::size_t> nearest;
  double minDistance = kReach;
  // Each event has a stem of the total, which is as high as the others.
  const bool total = IsSeriesVisible(TSeries::Total);
  for (std::size_t series = 0; series < kSeriesCount; ++series) {
    if (total ? series != Place(TSeries::Total) : !IsSeriesVisible(kAllSeries[series])) continue;
    for (const std::size_t place : FEvents.StemsIn({near, static_cast<std::size_t>(2 * kReach)}, series)) {
      const double dx = position.x() - TimeAxis().coordToPixel(FEvents.Time(place));
      const double top = ValueAxis().coordToPixel(double{FEvents.Stem(place, series)});
      const double distance = std::hypot(dx, std::max(0.0, top - position.y()));
      if (distance > minDistance) continue;
      minDistance = distance;
      nearest = place;
    }
  }
  return nearest;
}

// Looks at the foot of the chart, where all stems begin.
std::optional<std::size_t> TEventsChart::PlaceAt(double time) const {
  return PlaceNear({TimeAxis().coordToPixel(time), static_cast<double>(Rect().rect().bottom())});
}

std::optional<TEventsChart::THit> TEventsChart::HitAt(const QPointF& position) const {
  if (const auto group = FDots.GroupAt(position)) return THit{group->item, group->count, group->min, group->max};
  if (const auto place = PlaceNear(position)) return THit{*place};
  return std::nullopt;
}

// "event 68: 4.51 g", "21 events, 2.5 … 4.5 g, worst: 68"
QString TEventsChart::WordsOf(const THit& hit) const {
  const std::size_t index = FEvents.IndexOf(hit.place);
  if (hit.count == 1) return tr("event %1: %2").arg(index).arg(GText(double{FEvents.Max(hit.place)}));
  return tr("%1 events, %2 … %3, worst: %4").arg(hit.count).arg(Number(hit.min), GText(hit.max)).arg(index);
}

void TEventsChart::Clicked(const QPointF& position) {
  // Half of the first and the last dot is outside the axes.
  const QRectF reach = QRectF(Rect().rect()).adjusted(-kReach, 0, kReach, 0);
  if (!reach.contains(position)) return;
  FBeforeClick = FSelected;
  if (const auto hit = HitAt(position)) emit EventClicked(FEvents.IndexOf(hit->place));
}

void TEventsChart::Unclicked() {
  if (FBeforeClick && FBeforeClick != FSelected) emit EventClicked(FEvents.IndexOf(*FBeforeClick));
}

QString TEventsChart::CursorText(const QPointF& position) const {
  const QString pointed = GText(ValueAxis().pixelToCoord(position.y()));
  const auto hit = HitAt(position);
  return hit ? tr("%1  ·  %2").arg(pointed, WordsOf(*hit)) : pointed;
}

std::vector<TReading> TEventsChart::ReadingsAt(double time) const {
  const auto place = PlaceAt(time);
  return place ? ReadingsOf({*place}) : std::vector<TReading>();
}

std::vector<TReading> TEventsChart::ReadingsUnder(const QPointF& pointer) const {
  const auto hit = HitAt(pointer);
  return hit ? ReadingsOf(*hit) : std::vector<TReading>();
}

std::vector<TReading> TEventsChart::ReadingsOf(const THit& hit) const {
  const QColor text = palette().color(QPalette::Text);
  if (hit.count > 1) return {{WordsOf(hit), text, std::nullopt}};
  const std::size_t place = hit.place;
  const QPointF at(TimeAxis().coordToPixel(FEvents.Time(place)), ValueAxis().coordToPixel(double{FEvents.Max(place)}));
  std::vector<TReading> readings = {{WordsOf(hit), text, at}};
  if (FEvents.Axis(place) != TEventsInTime::kNoAxis) {
    const TSeries axis = kAllSeries[FEvents.Axis(place)];
    readings.push_back({tr("%1 %2").arg(NameOf(axis), GText(double{FEvents.Peak(place)})), InkOf(axis), std::nullopt});
  }
  return readings;
}

// A cursor snaps to an event near it.
double TEventsChart::CursorMoment(double time) const {
  const auto place = PlaceAt(time);
  return place ? FEvents.Time(*place) : time;
}

std::vector<TReading> TEventsChart::DifferencesBetween(double a, double b) const {
  const auto first = FEvents.PlaceOn(a);
  const auto second = FEvents.PlaceOn(b);
  if (!first || !second) return {};
  const QColor text = palette().color(QPalette::Text);
  const double change = double{FEvents.Max(*second)} - double{FEvents.Max(*first)};
  return {{tr("Δpeak %1").arg(std::isfinite(change) ? GText(change) : QString(kNoNumber)), text, std::nullopt},
          {tr("event %1 → %2").arg(FEvents.IndexOf(*first)).arg(FEvents.IndexOf(*second)), text, std::nullopt}};
}

TRangeTable TEventsChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const auto [from, to] = Range().Times();
  std::size_t count = 0;
  std::size_t hidden = 0;
  std::optional<std::size_t> largest;
  TStatisticsSum sum;
  const auto timeAt = [this](std::size_t i) { return FEvents.Time(i); };
  for (std::size_t i = FirstAtOrAfter(FEvents.Count(), timeAt, from); i < FEvents.Count() && FEvents.Time(i) <= to;
       ++i) {
    if (!FEvents.IsVisible(i)) {
      ++hidden;
      continue;
    }
    ++count;
    sum.Add(FEvents.Max(i));
    if (std::isfinite(FEvents.Max(i)) && (!largest || FEvents.Max(i) > FEvents.Max(*largest))) largest = i;
  }
  const TRangeStatistics found = sum.Result();
  const auto number = [this](double g) { return std::isfinite(g) ? Number(g) : QString(kNoNumber); };
  const QString which =
      largest ? tr("Largest peak (g), event %1").arg(FEvents.IndexOf(*largest)) : tr("Largest peak (g)");
  TRangeTable table{
      tr("%1 … %2").arg(MomentText(from), MomentText(to)),
      {tr("Figure"), tr("Value")},
      1,
      {{tr("Events"), QString::number(count)}, {which, number(found.max)}, {tr("Mean peak (g)"), number(found.mean)}}};
  if (hidden > 0) table.rows.push_back({tr("Events hidden by the filter"), QString::number(hidden)});
  return table;
}
