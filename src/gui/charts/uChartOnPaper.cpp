#include "gui/charts/uChartOnPaper.h"

#include <QPicture>

#include "gui/charts/uTimeChart.h"

namespace {

constexpr double kPointsPerPixel = 0.75;
constexpr int kFontPixels = 9;

}  // namespace

void PrepareForPaper(TTimeChart& chart) {
  QFont font = chart.font();
  font.setPixelSize(kFontPixels);
  font.setHintingPreference(QFont::PreferNoHinting);
  chart.setFont(font);
  chart.SetForPaper();
}

// A widget that was never shown gets no resize event.
void SizeForPaper(TTimeChart& chart, const QSizeF& size) {
  chart.resize((size / kPointsPerPixel).toSize());
  chart.setViewport(chart.rect());
  chart.replot();
}

void DrawOnPaper(TTimeChart& chart, QPainter& painter, const QPointF& topLeft, const QString& caption) {
  QPicture picture;
  {
    QCPPainter recorder;
    recorder.setMode(QCPPainter::pmVectorized);
    recorder.begin(&picture);
    chart.DrawWith(recorder, caption);
  }
  // A picture is drawn larger by the ratio of the resolutions.
  const double ratio = static_cast<double>(painter.device()->logicalDpiX()) / picture.logicalDpiX();
  painter.save();
  painter.translate(topLeft);
  painter.scale(kPointsPerPixel / ratio, kPointsPerPixel / ratio);
  painter.drawPicture(QPointF(), picture);
  painter.restore();
}
