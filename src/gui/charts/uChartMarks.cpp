#include "gui/charts/uChartMarks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uTheme.h"

namespace {

constexpr double kReadRadius = 2.5;
constexpr int kReadingsSide = 12;  // px right of a line of readings
constexpr int kLowPlot = 120;      // px; a box of readings would hide the curves of a lower one
constexpr double kNearestRadius = 5;

double Sign(double value) {
  return value == 0 ? 0 : std::copysign(1.0, value);
}

// The first side of a sample where words of this size are within the axes and clear of the taken box; else above.
QRectF FreeBox(const QPointF& at, const QSizeF& size, const QRectF& taken, const QRectF& axes) {
  constexpr double kAway = kNearestRadius + 2;
  const auto boxAt = [&](const QPointF& away) {
    QRectF box(QPointF(), size);
    box.moveCenter(at + away + QPointF(Sign(away.x()) * size.width() / 2, Sign(away.y()) * size.height() / 2));
    return box;
  };
  for (const QPointF& away : {QPointF(0, -kAway), QPointF(0, kAway), QPointF(kAway, 0), QPointF(-kAway, 0)}) {
    const QRectF box = boxAt(away);
    if (!box.intersects(taken) && axes.contains(box)) return box;
  }
  return boxAt({0, -kAway});
}

}  // namespace

TChartMarks::TChartMarks(TChartPlot& plot, const IChartReadings& readings) : FPlot(plot), FReadings(readings) {
  new TPainted(&FPlot.Rect(), "marks", [this](QCPPainter& painter) { Paint(painter); });
}

void TChartMarks::SetIndicatorVisible(bool visible) {
  if (std::exchange(FIndicator, visible) == visible) return;
  FollowPointer();
}

void TChartMarks::SetIndicatorLocked(bool locked) {
  if (std::exchange(FIndicatorLocked, locked) == locked) return;
  FollowPointer();
}

void TChartMarks::SetNearestVisible(bool visible) {
  if (std::exchange(FNearest, visible) == visible) return;
  FPlot.RedrawMarks();
}

std::optional<double> TChartMarks::IndicatorTime() const {
  if (!FIndicator || !FPlot.HasData()) return std::nullopt;
  if (FPinned) return FPinned;
  return FHover ? FPlot.MomentAt(*FHover) : FShared;
}

void TChartMarks::SetShared(std::optional<double> time) {
  const auto before = IndicatorTime();
  FShared = time;
  if (IndicatorTime() != before) FPlot.RedrawMarks();
}

void TChartMarks::Hover(const QPointF& position) {
  const auto before = IndicatorTime();
  const auto hoverBefore = FHover;
  FHover.reset();
  if (FPlot.Rect().rect().contains(position.toPoint())) {
    FHover = position;
    FAsked.reset();
  }
  const auto now = IndicatorTime();
  const bool follows = FNearest || (FIndicator && !FPinned);
  if (now != before || (follows && FHover != hoverBefore)) FPlot.RedrawMarks();
  EmitMoved();
}

void TChartMarks::Ask(const QPointF& position) {
  FAsked.reset();
  if (FPlot.Rect().rect().contains(position.toPoint())) FAsked = FPlot.MomentAt(position);
}

std::optional<double> TChartMarks::PointedTime() const {
  if (FHover) return FPlot.MomentAt(*FHover);
  return FAsked ? FAsked : FPinned;
}

void TChartMarks::Pin(const QPointF& position) {
  if (!FIndicator || !FIndicatorLocked || !FPlot.HasData()) return;
  if (!FPlot.Rect().rect().contains(position.toPoint())) return;
  FPinnedBefore = std::exchange(FPinned, FPlot.MomentAt(position));
  FPlot.RedrawMarks();
  EmitMoved();
}

bool TChartMarks::Unpin() {
  if (!FPinned) return false;
  FollowPointer();
  return true;
}

void TChartMarks::FollowPointer() {
  FPinned = FPinnedBefore = std::nullopt;
  FPlot.RedrawMarks();
  EmitMoved();
}

void TChartMarks::ChangeData(const TTimeSpan& span) {
  FAsked.reset();
  FEmittedMoved.reset();
  if (FPinned && (*FPinned < span.start || *FPinned > span.end)) FPinned.reset();
  FPinnedBefore = FPinned;
}

void TChartMarks::Update() {
  if (FHover && !FPlot.Rect().rect().contains(FHover->toPoint())) FHover.reset();
  EmitMoved();
}

void TChartMarks::EmitMoved() {
  const auto indicator = IndicatorTime();
  if (std::exchange(FEmittedMoved, indicator) != indicator && indicator) emit FPlot.IndicatorMoved(*indicator);
  std::optional<double> pointer;
  if (FPlot.HasData()) pointer = FPinned || !FHover ? FPinned : FPlot.MomentAt(*FHover);
  if (std::exchange(FEmittedPointer, pointer) != pointer) emit FPlot.PointerMoved(pointer);
}

void TChartMarks::Paint(QCPPainter& painter) const {
  painter.setFont(FPlot.font());
  QRectF taken;
  if (const auto time = IndicatorTime()) taken = PaintIndicator(painter, *time);
  if (!FNearest || !FPlot.HasData() || !FHover) return;
  const auto nearest = FReadings.NearestTo(*FHover);
  if (!nearest || !nearest->at || !QRectF(FPlot.Rect().rect()).contains(*nearest->at)) return;
  PaintNearest(painter, *nearest, taken);
}

void TChartMarks::PaintNearest(QCPPainter& painter, const TReading& nearest, const QRectF& taken) const {
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(nearest.ink, 2));
  painter.drawEllipse(*nearest.at, kNearestRadius, kNearestRadius);
  const QSizeF size = PillSize(painter.fontMetrics(), nearest.text);
  const QRectF axes = FPlot.Rect().rect();
  QRectF box = FreeBox(*nearest.at, size, taken, axes);
  if (box.right() > axes.right()) box.moveRight(axes.right());
  if (box.left() < axes.left()) box.moveLeft(axes.left());
  if (box.bottom() > axes.bottom()) box.moveBottom(axes.bottom());
  if (box.top() < axes.top()) box.moveTop(axes.top());
  DrawPill(painter, box, nearest.text, nearest.ink, FPlot.palette());
}

QRectF TChartMarks::PaintIndicator(QCPPainter& painter, double time) const {
  const QColor text = FPlot.palette().color(QPalette::Text);
  if (!DrawMoment(painter, FPlot.TimeAxis(), time, QPen(text, 1))) return {};
  const QRect rect = FPlot.Rect().rect();
  const bool hovers = FHover && !FPinned;
  std::vector<TReading> readings = hovers ? FReadings.ReadingsUnder(*FHover) : FReadings.ReadingsAt(time);
  painter.setAntialiasing(true);
  painter.setPen(Qt::NoPen);
  for (const TReading& reading : readings) {
    if (!reading.at || !QRectF(rect).adjusted(-1, -1, 1, 1).contains(*reading.at)) continue;
    painter.setBrush(reading.ink);
    painter.drawEllipse(*reading.at, kReadRadius, kReadRadius);
  }

  for (TReading& reading : readings) reading.ink = InkOn(FPlot.palette(), reading.ink, kTextContrast);
  readings.insert(readings.begin(), TReading{FReadings.MomentText(time), text, std::nullopt});
  if (rect.height() < kLowPlot) {
    PaintStrip(painter, readings);
    return {};
  }
  const double x = FPlot.TimeAxis().coordToPixel(time);
  const QSizeF size = FitReadings(rect, painter.fontMetrics(), readings);
  const auto free = FPlot.Labels().BesideLine(x, kLabelGap, size, TChartLabels::TEnd::Top);
  const QRectF box = free.value_or(QRectF(rect.topLeft(), size));
  DrawPill(painter, box, {}, text, FPlot.palette());
  DrawReadings(painter, box, readings);
  return box;
}

// One line in place of the last row of the legend; without a legend the status bar says it.
void TChartMarks::PaintStrip(QCPPainter& painter, const std::vector<TReading>& readings) const {
  const QString between = "  ·  ";
  const QFontMetrics metrics = painter.fontMetrics();
  QRect line = FPlot.Legend().rect();
  if (line.height() < metrics.height()) return;
  if (line.height() >= 2 * metrics.height()) line.setTop(line.bottom() - metrics.height() - 1);
  painter.save();
  painter.setClipRect(line);
  painter.fillRect(line, FPlot.palette().color(QPalette::Base));
  line.adjust(FPlot.Rect().rect().left() - line.left(), 0, -kReadingsSide, 0);
  for (std::size_t i = 0; i < readings.size() && line.width() > 0; ++i) {
    const QString text = (i > 0 ? between : QString()) + readings[i].text;
    painter.setPen(readings[i].ink);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, metrics.elidedText(text, Qt::ElideRight, line.width()));
    line.setLeft(line.left() + metrics.horizontalAdvance(text));
  }
  painter.restore();
}
