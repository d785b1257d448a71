#include "gui/charts/uChartReadings.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kPadding = 4;  // px

}  // namespace

QSizeF FitReadings(const QRect& axes, const QFontMetrics& metrics, std::vector<TReading>& readings) {
  const int room = std::max(1, axes.height() / metrics.height());
  if (std::cmp_greater(readings.size(), room)) readings.resize(static_cast<std::size_t>(room));
  int width = 0;
  for (TReading& reading : readings) {
    reading.text = metrics.elidedText(reading.text, Qt::ElideRight, axes.width() / 2);
    width = std::max(width, metrics.horizontalAdvance(reading.text));
  }
  return {width + 2.0 * kPadding, static_cast<double>(readings.size()) * metrics.height()};
}

void DrawReadings(QCPPainter& painter, const QRectF& box, const std::vector<TReading>& readings) {
  QRectF line = box.adjusted(kPadding, 0, -kPadding, 0);
  line.setHeight(painter.fontMetrics().height());
  for (const TReading& reading : readings) {
    painter.setPen(reading.ink);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, reading.text);
    line.translate(0, line.height());
  }
}
