#include "gui/common/uFlowLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>

void TFlowLayout::addItem(QLayoutItem* item) {
  FItems.emplace_back(item);
  invalidate();
}

int TFlowLayout::count() const {
  return static_cast<int>(FItems.size());
}

QLayoutItem* TFlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? FItems[static_cast<size_t>(index)].get() : nullptr;
}

QLayoutItem* TFlowLayout::takeAt(int index) {
  if (index < 0 || index >= count()) return nullptr;
  QLayoutItem* taken = FItems[static_cast<size_t>(index)].release();
  FItems.erase(FItems.begin() + index);
  invalidate();
  return taken;
}

int TFlowLayout::heightForWidth(int width) const {
  return Place(QRect(0, 0, width, 0), false);
}

QSize TFlowLayout::sizeHint() const {
  int width = 0;
  int height = 0;
  for (const auto& item : FItems) {
    if (item->isEmpty()) continue;
    width += item->sizeHint().width() + (width > 0 ? spacing() : 0);
    height = std::max(height, item->sizeHint().height());
  }
  return {width, height};
}

QSize TFlowLayout::minimumSize() const {
  QSize size(0, 0);
  for (const auto& item : FItems) {
    if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
  }
  return size;
}

void TFlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  Place(rect, true);
}

int TFlowLayout::Place(const QRect& rect, bool move) const {
  const auto direction = parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
  int left = 0;
  int top = 0;
  int row = 0;
  for (const auto& item : FItems) {
    if (item->isEmpty()) continue;
    const QSize size = item->sizeHint().boundedTo(QSize(std::max(rect.width(), 1), QWIDGETSIZE_MAX));
    if (left > 0 && left + size.width() > rect.width()) {
      left = 0;
      top += row + spacing();
      row = 0;
    }
    if (move) item->setGeometry(QStyle::visualRect(direction, rect, QRect(rect.topLeft() + QPoint(left, top), size)));
    left += size.width() + spacing();
    row = std::max(row, size.height());
  }
  return top + row;
}
