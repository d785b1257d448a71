#include "gui/charts/uDamageChart.h"

#include <algorithm>
#include <cmath>

#include "analysis/uAnalysisTable.h"
#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uSeries.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kPointReach = 8;       // px, how near to an event a click is meant for it
constexpr double kRoom = 1.08;          // of the axes, beyond the farthest event
constexpr double kLimitsInSight = 1.5;  // times a limit
constexpr float kShade = 0.10F;         // of the alarm's colour, beyond the boundary

}  // namespace

TDamageChart::TDamageChart(QWidget* parent)
    : TAnalysisChart(TAxisUnit::Number, "ChartDamage", tr("Damage boundary chart"), parent) {
  FDots.SetAbsorption(false);
  SetTimeTitle(tr("Velocity change (m/s)"));
  SetValueTitle(tr("Peak of the pulse"), tr("g"));
  new TPainted(&Rect(), "marks", [this](QCPPainter& painter) { PaintSelected(painter); });
  Restyle();
  Clear();
}

void TDamageChart::Clear() {
  FSelected.reset();
  SetEvents({}, tr("No events"));
}

void TDamageChart::SetEvents(std::vector<TDamageEvent> events, const QString& placeholder) {
  FEvents = std::move(events);
  SetPlaceholder(placeholder);
  ShowAll();
}

void TDamageChart::SetLimits(const std::optional<TFragility>& limits) {
  FLimits = limits;
  Restyle();
  ShowAll();
}

void TDamageChart::SetSelectedEvent(std::optional<std::size_t> event) {
  if (std::exchange(FSelected, event) != event) RedrawMarks();
}

void TDamageChart::ShowAll() {
  if (FEvents.empty()) return SetFullRange(std::nullopt);
  double farthest = FLimits ? FLimits->velocityChange * kLimitsInSight : 0;
  for (const TDamageEvent& one : FEvents) farthest = std::max(farthest, one.point.velocityChange * kRoom);
  SetFullRange(TTimeSpan{0, farthest > 0 ? farthest : 1});
}

void TDamageChart::ScaleValues() {
  double top = FLimits ? FLimits->acceleration * kLimitsInSight : 0;
  for (const TDamageEvent& one : FEvents) top = std::max(top, one.point.peak * kRoom);
  ValueAxis().setRange(0, top > 0 ? top : 1);
}

QColor TDamageChart::InkOf(bool beyond) const {
  return beyond ? QColor(TokensOf(palette()).alarm) : InkOn(palette(), QColor(TokensOf(palette()).accent));
}

std::vector<TLegendEntry> TDamageChart::LegendEntries() const {
  std::vector<TLegendEntry> entries = {{tr("Events"), InkOf(false)}};
  if (FLimits) {
    entries.push_back({tr("Beyond the boundary"), InkOf(true)});
    entries.push_back({tr("Both limits"), FaintInk(), true, {6, 3}});
  }
  for (std::size_t i = 0; IsForPaper() && i < std::min<std::size_t>(entries.size(), 2); ++i) {
    entries[i].marker = kMarkers[i];
  }
  return entries;
}

QPointF TDamageChart::PlaceOf(const TDamageEvent& event) const {
  return {TimeAxis().coordToPixel(event.point.velocityChange), ValueAxis().coordToPixel(event.point.peak)};
}

void TDamageChart::PaintData(QCPPainter& painter) {
  PaintBoundary(painter);
  PaintEvents(painter);
}

// From the upper end of the boundary to the right edge; the area above is shaded.
void TDamageChart::PaintBoundary(QCPPainter& painter) {
  if (!FLimits) return;
  const QRectF rect = Rect().rect();
  const auto heightOf = [&](double g) {
    return std::clamp(ValueAxis().coordToPixel(g), rect.top() - 1, rect.bottom() + 1);
  };
  const double begin = TimeAxis().coordToPixel(FLimits->velocityChange);
  if (begin > rect.right()) return;
  QPolygonF curve;
  for (double x = std::max(begin, rect.left()); x <= rect.right() + 1; ++x) {
    const double velocity = TimeAxis().pixelToCoord(x) / FLimits->velocityChange;
    const double boundary = DamageBoundary(velocity) * FLimits->acceleration;
    curve.append({x, std::isfinite(boundary) ? heightOf(boundary) : rect.top() - 1});
  }
  QPolygonF area = curve;
  area.append({curve.last().x(), rect.top() - 1});
  area.append({curve.first().x(), rect.top() - 1});
  QColor shade = InkOf(true);
  shade.setAlphaF(kShade);
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setAntialiasing(true);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shade);
  painter.drawPolygon(area);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(InkOf(true), kCurveWidth));
  painter.drawPolyline(curve);
  const QPointF corner(begin, heightOf(FLimits->acceleration));
  painter.setPen(DashedPen(FaintInk(), 1, {6, 3}));
  painter.drawPolyline(QPolygonF({{begin, rect.top()}, corner, {rect.right(), corner.y()}}));
  painter.restore();
}

// One dot a pixel at most, those beyond the boundary in front.
void TDamageChart::PaintEvents(QCPPainter& painter) {
  FDots.SetShapes(IsForPaper());
  FDots.Begin(Rect().rect(), font(), bufferDevicePixelRatio());
  for (std::size_t i = 0; i < FEvents.size(); ++i) {
    const QPointF at = PlaceOf(FEvents[i]);
    FDots.Add(at.x(), at.y(), i, FEvents[i].point.peak);
  }
  FDots.Paint(painter, {InkOf(false), InkOf(true)}, palette().color(QPalette::Base),
              [this](std::size_t i) -> std::size_t { return IsBeyond(FEvents[i]) ? 1 : 0; });
}

void TDamageChart::PaintSelected(QCPPainter& painter) const {
  const auto selected =
      std::ranges::find(FEvents, FSelected, [](const TDamageEvent& one) { return std::optional(one.event); });
  if (selected == FEvents.end() || !HasData()) return;
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2.5));
  painter.drawEllipse(PlaceOf(*selected), 7, 7);
}

const TDamageEvent* TDamageChart::EventAt(const QPointF& position) const {
  const TDamageEvent* nearest = nullptr;
  double minDistance = kPointReach;
  for (const TDamageEvent& one : FEvents) {
    const QPointF away = PlaceOf(one) - position;
    const double distance = std::hypot(away.x(), away.y());
    if (distance > minDistance) continue;
    minDistance = distance;
    nearest = &one;
  }
  return nearest;
}

void TDamageChart::Clicked(const QPointF& position) {
  if (const TDamageEvent* hit = EventAt(position)) emit EventClicked(hit->event);
}

QString TDamageChart::MomentText(double velocityChange) const {
  return tr("%1 m/s").arg(Digits(velocityChange, 4));
}

std::optional<TReading> TDamageChart::NearestTo(const QPointF& position) const {
  const TDamageEvent* hit = EventAt(position);
  if (hit == nullptr) return std::nullopt;
  QString words = tr("event %1 · %2 · %3 m/s · %4 g")
                      .arg(hit->event)
                      .arg(QtText(FormatDateTime(DateTimeMask(), hit->time)), Digits(hit->point.velocityChange, 4),
                           Digits(hit->point.peak, 4));
  if (IsBeyond(*hit)) words += tr(" · beyond the boundary");
  return TReading{words, InkOf(IsBeyond(*hit)), PlaceOf(*hit)};
}

TDataset TDamageChart::Table() const {
  TDataset table;
  table.AddIdAndTime();
  table.SetDisplayFormat(*table.FindField("Timestamp"), DateTimeMask());
  const std::size_t velocity = table.AddField(std::string(kVelocityChangeField), TFieldType::Single);
  const std::size_t peak = table.AddField("Peak (g)", TFieldType::Single);
  const std::size_t beyond = table.AddField("Beyond the boundary", TFieldType::Text);
  const std::size_t both = table.AddField("Beyond both limits", TFieldType::Text);
  table.Reserve(FEvents.size());
  for (const TDamageEvent& one : FEvents) {
    table.AppendAt(one.event, one.time);
    table.SetSingle(velocity, static_cast<float>(one.point.velocityChange));
    table.SetSingle(peak, static_cast<float>(one.point.peak));
    if (!FLimits) continue;
    table.SetText(beyond, IsBeyond(one) ? "yes" : "no");
    table.SetText(both, IsBeyondBoth(one.point, *FLimits) ? "yes" : "no");
  }
  return table;
}

TRangeTable TDamageChart::VisibleStatistics() const {
  if (!HasData()) return {};
  const QCPRange peaks = ValueAxis().range();
  const auto [from, to] = Range().Times();
  std::size_t count = 0;
  std::size_t beyond = 0;
  TDamagePoint largest{0, 0};
  for (const TDamageEvent& one : FEvents) {
    const auto [velocity, peak] = one.point;
    if (velocity < from || velocity > to || !peaks.contains(peak)) continue;
    ++count;
    if (IsBeyond(one)) ++beyond;
    largest = {std::max(largest.velocityChange, velocity), std::max(largest.peak, peak)};
  }
  TRangeTable table{
      tr("%1 … %2 m/s, %3 … %4 g").arg(Digits(from), Digits(to), Digits(peaks.lower), Digits(peaks.upper)),
      {tr("Figure"), tr("Value")},
      1,
      {{tr("Events"), QString::number(count)},
       {tr("Largest velocity change (m/s)"), Digits(largest.velocityChange)},
       {tr("Largest peak (g)"), Digits(largest.peak)}}};
  if (FLimits) table.rows.push_back({tr("Events beyond the boundary"), QString::number(beyond)});
  return table;
}
