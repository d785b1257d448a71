// What a chart shows at the pointer: the indicator and the nearest sample.
#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/charts/uTimeChart.h"

namespace {

constexpr int kBoxGap = 6;      // px, between the line and the words beside it
constexpr int kBoxPadding = 4;  // px
constexpr double kReadRadius = 2.5;
constexpr double kNearestRadius = 5;

double Sign(double value) {
  return value == 0 ? 0 : std::copysign(1.0, value);
}

}  // namespace

void TTimeChart::SetIndicatorVisible(bool visible) {
  if (std::exchange(FIndicator, visible) == visible) return;
  UnpinIndicator();
}

void TTimeChart::SetIndicatorLocked(bool locked) {
  if (std::exchange(FIndicatorLocked, locked) == locked) return;
  UnpinIndicator();
}

void TTimeChart::SetNearestVisible(bool visible) {
  if (std::exchange(FNearest, visible) == visible) return;
  RedrawMarks();
}

void TTimeChart::SetPointsVisible(bool visible) {
  if (std::exchange(FPointsVisible, visible) == visible) return;
  QueueReplot();
}

std::optional<double> TTimeChart::IndicatorTime() const {
  if (!FIndicator || !FHasData) return std::nullopt;
  if (FPinned) return FPinned;
  if (FHover) return MomentAt(*FHover);
  return std::nullopt;
}

QString TTimeChart::CursorText(const QPointF& position) const {
  QStringList values;
  for (const TReading& reading : ReadingsAt(TimeAxis().pixelToCoord(position.x()))) values.append(reading.text);
  return values.join("  ·  ");
}

void TTimeChart::Hover(const QPointF& position) {
  const auto before = IndicatorTime();
  const auto hoverBefore = FHover;
  FHover.reset();
  if (Rect().rect().contains(position.toPoint())) {
    FHover = position;
    FAsked.reset();
  }
  const auto now = IndicatorTime();
  if (now != before || (FNearest && FHover != hoverBefore)) RedrawMarks();
  if (now && now != before) emit IndicatorMoved(*now);
}

void TTimeChart::PinIndicator(const QPointF& position) {
  if (!FIndicator || !FIndicatorLocked || !FHasData || !Rect().rect().contains(position.toPoint())) return;
  FPinnedBefore = std::exchange(FPinned, MomentAt(position));
  RedrawMarks();
  emit IndicatorMoved(*FPinned);
}

void TTimeChart::UnpinIndicator() {
  FPinned = FPinnedBefore = std::nullopt;
  RedrawMarks();
  // It may stand under the pointer now.
  if (const auto now = IndicatorTime()) emit IndicatorMoved(*now);
}

void TTimeChart::PaintPointed(QCPPainter& painter) const {
  painter.setFont(font());
  QRectF taken;
  if (const auto time = IndicatorTime()) taken = PaintIndicator(painter, *time);
  if (!FNearest || !FHasData || !FHover) return;
  const auto nearest = NearestTo(*FHover);
  if (!nearest || !nearest->at || !QRectF(Rect().rect()).contains(*nearest->at)) return;
  painter.setAntialiasing(true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(nearest->ink, 2));
  painter.drawEllipse(*nearest->at, kNearestRadius, kNearestRadius);
  // Where they fit beside the words of the indicator, else above.
  constexpr double kAway = kNearestRadius + 2;
  const std::pair<QPointF, Qt::Alignment> places[] = {{{0, -kAway}, Qt::AlignHCenter | Qt::AlignBottom},
                                                      {{0, kAway}, Qt::AlignHCenter | Qt::AlignTop},
                                                      {{kAway, 0}, Qt::AlignLeft | Qt::AlignVCenter},
                                                      {{-kAway, 0}, Qt::AlignRight | Qt::AlignVCenter}};
  const QSizeF size = QSizeF(painter.fontMetrics().size(0, nearest->text)) + QSizeF(8, 0);
  const auto fits = [&](const std::pair<QPointF, Qt::Alignment>& place) {
    QRectF box(QPointF(), size);
    box.moveCenter(*nearest->at + place.first +
                   QPointF(Sign(place.first.x()) * size.width() / 2, Sign(place.first.y()) * size.height() / 2));
    return !box.intersects(taken) && QRectF(Rect().rect()).contains(box);
  };
  const auto* place = std::ranges::find_if(places, fits);
  if (place == std::end(places)) place = std::begin(places);
  DrawWords(painter, *nearest->at + place->first, place->second, nearest->text, nearest->ink,
            palette().color(QPalette::Base), Rect().rect());
}

QRectF TTimeChart::PaintIndicator(QCPPainter& painter, double time) const {
  const QRect rect = Rect().rect();
  const double x = TimeAxis().coordToPixel(time);
  if (!(x >= rect.left() - 1 && x <= rect.right() + 1)) return {};
  const QColor text = palette().color(QPalette::Text);
  painter.setAntialiasing(false);
  painter.setPen(QPen(text, 1));
  painter.drawLine(QPointF(x, rect.top()), QPointF(x, rect.bottom()));

  std::vector<TReading> readings = ReadingsAt(time);
  painter.setAntialiasing(true);
  painter.setPen(Qt::NoPen);
  for (const TReading& reading : readings) {
    if (!reading.at || !QRectF(rect).adjusted(-1, -1, 1, 1).contains(*reading.at)) continue;
    painter.setBrush(reading.ink);
    painter.drawEllipse(*reading.at, kReadRadius, kReadRadius);
  }

  readings.insert(readings.begin(), TReading{MomentText(time), text, std::nullopt});
  QRectF box({x + kBoxGap, rect.top() + 1.0}, FitReadings(painter.fontMetrics(), readings));
  if (box.right() > rect.right()) box.moveRight(x - kBoxGap);
  QColor veil = palette().color(QPalette::Base);
  veil.setAlphaF(0.85F);
  painter.fillRect(box, veil);
  DrawReadings(painter, box, readings);
  return box;
}

QSizeF TTimeChart::FitReadings(const QFontMetrics& metrics, std::vector<TReading>& readings) const {
  const int room = std::max(1, Rect().height() / metrics.height());
  if (std::cmp_greater(readings.size(), room)) readings.resize(static_cast<std::size_t>(room));
  int width = 0;
  for (TReading& reading : readings) {
    reading.text = metrics.elidedText(reading.text, Qt::ElideRight, Rect().width() / 2);
    width = std::max(width, metrics.horizontalAdvance(reading.text));
  }
  return {width + 2.0 * kBoxPadding, static_cast<double>(readings.size()) * metrics.height()};
}

void TTimeChart::DrawReadings(QCPPainter& painter, const QRectF& box, const std::vector<TReading>& readings) {
  QRectF line = box.adjusted(kBoxPadding, 0, -kBoxPadding, 0);
  line.setHeight(painter.fontMetrics().height());
  for (const TReading& reading : readings) {
    painter.setPen(reading.ink);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, reading.text);
    line.translate(0, line.height());
  }
}
