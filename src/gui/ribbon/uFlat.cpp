#include "gui/ribbon/uFlat.h"

#include <QPainter>
#include <algorithm>

namespace {

QColor Tinted(QColor colour, float alpha) {
  colour.setAlphaF(alpha);
  return colour;
}

}  // namespace

void PaintFlat(QPainter& painter, const QRect& rect, const QPalette& palette, const TFlatState& state) {
  const QColor highlight = palette.color(QPalette::Highlight);
  float ground = 0;
  if (state.Checked) ground = 0.25F;
  if (state.Hovered) ground += 0.15F;
  if (state.Pressed) ground = 0.45F;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(state.Checked ? QPen(highlight) : QPen(Qt::NoPen));
  painter.setBrush(ground > 0 ? QBrush(Tinted(highlight, ground)) : QBrush(Qt::NoBrush));
  if (ground > 0) painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
  if (state.Focused) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(highlight, 2));
    painter.drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), 3, 3);
  }
  painter.restore();
}

QColor LineColour(const QPalette& palette) {
  return Tinted(palette.color(QPalette::WindowText), 0.2F);
}

QString PlainCaption(const QString& caption) {
  QString plain;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  if (plain.endsWith("...")) plain.chop(3);
  if (plain.endsWith(QChar(0x2026))) plain.chop(1);
  return plain.trimmed();
}

int RibbonLargeIcon(const QFontMetrics& metrics) {
  return std::max(32, 2 * metrics.height() + 2);
}

int RibbonSmallIcon(const QFontMetrics& metrics) {
  return std::max(16, metrics.height());
}

int RibbonRowHeight(const QFontMetrics& metrics) {
  return RibbonSmallIcon(metrics) + 7;
}

int RibbonBodyHeight(const QFontMetrics& metrics) {
  return std::max(3 * RibbonRowHeight(metrics), RibbonLargeIcon(metrics) + 2 * metrics.height() + 7);
}
