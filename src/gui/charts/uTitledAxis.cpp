#include "gui/charts/uTitledAxis.h"

#include "gui/common/uTheme.h"

QString TTitledAxis::TitleText() const {
  QString text;
  for (const TTitlePart& part : FParts) text += part.text;
  return text;
}

// The title stands beyond the tick labels.
int TTitledAxis::calculateMargin() {
  const int margin = QCPAxis::calculateMargin();
  return FParts.empty() || !visible() ? margin : margin + labelPadding() + QFontMetrics(labelFont()).height();
}

void TTitledAxis::draw(QCPPainter* painter) {
  QCPAxis::draw(painter);
  if (FParts.empty()) return;
  const QRect rect = axisRect()->rect();
  const bool left = axisType() == atLeft;
  painter->setFont(labelFont());
  const QFontMetrics metrics = painter->fontMetrics();
  const int away = offset() + QCPAxis::calculateMargin() - padding() + labelPadding() + metrics.height();
  painter->save();
  painter->translate(left ? rect.left() - away : rect.right() + away, left ? rect.bottom() : rect.top());
  painter->rotate(left ? -90 : 90);
  double along = (rect.height() - metrics.horizontalAdvance(TitleText())) / 2.0;
  for (const TTitlePart& part : FParts) {
    const double width = metrics.horizontalAdvance(part.text);
    painter->setPen(InkOn(parentPlot()->palette(), part.ink, kTextContrast));
    painter->drawText(QRectF(along, 0, width, metrics.height()), Qt::AlignCenter | Qt::TextDontClip, part.text);
    along += width;
  }
  painter->restore();
}
