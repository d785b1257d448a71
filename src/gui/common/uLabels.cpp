#include "gui/common/uLabels.h"

#include <QPainter>

#include "gui/common/uTheme.h"

QLabel* MakeTitle(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont title = SizedFont(label->font(), kTitleSize);
  title.setWeight(QFont::DemiBold);
  label->setFont(title);
  return label;
}

TElidedLabel::TElidedLabel(const QString& name, QWidget* parent, Qt::TextElideMode elide)
    : QLabel(parent), FElide(elide) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
}

void TElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), FElide, contentsRect().width());
  setToolTip(shown == text() ? QString() : Qt::convertFromPlainText(text()));
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, shown);
}
