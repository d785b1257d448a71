#include "gui/charts/uReferenceLooks.h"

#include <cmath>

#include "gui/charts/uChartPaint.h"
#include "gui/common/uTheme.h"

namespace {

const QList<qreal> kDashes = {5, 3};

}  // namespace

QPen ReferencePen(const QColor& ink) {
  QPen pen = DashedPen(ink, kCurveWidth, kDashes);
  pen.setJoinStyle(Qt::MiterJoin);
  return pen;
}

std::vector<TLegendEntry> ReferenceEntries(const QPalette& palette, const QString& reference) {
  if (reference.isEmpty()) return {};
  return {{.name = QObject::tr("shown"), .ink = InkOn(palette, QColor(TokensOf(palette).accent))},
          {.name = reference, .ink = QColor(TokensOf(palette).ink), .dashes = kDashes}};
}

QString SignedDigits(double difference, int digits) {
  const QString size = Digits(std::fabs(difference), digits);
  if (size == "0") return "±0";
  return (difference < 0 ? "-" : "+") + size;
}
