#include "gui/charts/uChartOnPaper.h"

#include <QPicture>

#include "gui/charts/uTimeChart.h"

namespace {

constexpr double kPointsPerPixel = 0.75;
constexpr int kFontPixels = 9;

// Laid out for a size in px.
void Draw(TTimeChart& chart, QPainter& painter, const QPointF& topLeft, const QSize& size, const QString& caption) {
  QPicture picture;
  {
    QCPPainter recorder;
    recorder.setMode(QCPPainter::pmVectorized);
    recorder.begin(&picture);
    chart.DrawWith(recorder, caption, size);
  }
  // A picture is drawn larger by the ratio of the resolutions.
  const double ratio = static_cast<double>(painter.device()->logicalDpiX()) / picture.logicalDpiX();
  painter.save();
  painter.translate(topLeft);
  painter.scale(kPointsPerPixel / ratio, kPointsPerPixel / ratio);
  painter.drawPicture(QPointF(), picture);
  painter.restore();
}

}  // namespace

void PrepareForPaper(TTimeChart& chart) {
  QFont font = chart.font();
  font.setPixelSize(kFontPixels);
  font.setHintingPreference(QFont::PreferNoHinting);
  chart.setFont(font);
  chart.SetForPaper(true);
}

// A widget that was never shown gets no resize event.
void SizeForPaper(TTimeChart& chart, const QSizeF& size) {
  chart.resize((size / kPointsPerPixel).toSize());
  chart.setViewport(chart.rect());
  chart.replot();
}

void DrawOnPaper(TTimeChart& chart, QPainter& painter, const QPointF& topLeft, const QString& caption) {
  Draw(chart, painter, topLeft, chart.size(), caption);
}

void DrawShownOnPaper(TTimeChart& chart, QPainter& painter, const QRectF& place) {
  const QFont font = chart.testAttribute(Qt::WA_SetFont) ? chart.font() : QFont();
  PrepareForPaper(chart);
  Draw(chart, painter, place.topLeft(), (place.size() / kPointsPerPixel).toSize(), {});
  chart.SetForPaper(false);
  chart.setFont(font);
}
