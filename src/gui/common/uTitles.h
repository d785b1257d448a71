// The titles of a table's columns. The sort mark points up for ascending values; the base points it down.
#pragma once

#include <QHeaderView>
#include <QStyleOption>

class TTitles : public QHeaderView {
 public:
  explicit TTitles(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override {
    QHeaderView::initStyleOptionForIndex(option, column);
    using TMark = QStyleOptionHeader::SortIndicator;
    if (option->sortIndicator == TMark::None) return;
    option->sortIndicator = option->sortIndicator == TMark::SortDown ? TMark::SortUp : TMark::SortDown;
  }
};
