// The titles of a table's columns. The sort mark points up for ascending values; the base points it down.
#pragma once

#include <QHeaderView>
#include <QPainter>
#include <QStyleOption>

#include "gui/common/uTheme.h"

class TTitles : public QHeaderView {
 public:
  explicit TTitles(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  // A line of one device pixel below the titles.
  void paintEvent(QPaintEvent* event) override {
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    const double line = 1 / devicePixelRatioF();
    painter.fillRect(QRectF(0, viewport()->height() - line, viewport()->width(), line),
                     QColor(TokensOf(palette()).hairline));
  }
  void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override {
    QHeaderView::initStyleOptionForIndex(option, column);
    using TMark = QStyleOptionHeader::SortIndicator;
    if (option->sortIndicator == TMark::None) return;
    option->sortIndicator = option->sortIndicator == TMark::SortDown ? TMark::SortUp : TMark::SortDown;
  }
};
