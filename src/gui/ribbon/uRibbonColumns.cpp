#include "gui/ribbon/uRibbonColumns.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>

#include "gui/ribbon/uRibbonMetrics.h"

namespace {

constexpr int kRows = 3;
constexpr int kGap = 2;

}  // namespace

void TRibbonColumns::AddColumn(QWidget* widget) {
  addChildWidget(widget);
  FItems.push_back({std::make_unique<QWidgetItem>(widget), false});
  invalidate();
}

void TRibbonColumns::AddRow(QWidget* widget) {
  addChildWidget(widget);
  FItems.push_back({std::make_unique<QWidgetItem>(widget), true});
  invalidate();
}

void TRibbonColumns::addItem(QLayoutItem* item) {
  FItems.push_back({std::unique_ptr<QLayoutItem>(item), false});
  invalidate();
}

int TRibbonColumns::count() const {
  return static_cast<int>(FItems.size());
}

QLayoutItem* TRibbonColumns::itemAt(int index) const {
  return index >= 0 && index < count() ? FItems[static_cast<size_t>(index)].Item.get() : nullptr;
}

QLayoutItem* TRibbonColumns::takeAt(int index) {
  if (index < 0 || index >= count()) return nullptr;
  QLayoutItem* taken = FItems[static_cast<size_t>(index)].Item.release();
  FItems.erase(FItems.begin() + index);
  invalidate();
  return taken;
}

QSize TRibbonColumns::sizeHint() const {
  const QWidget* parent = parentWidget();
  return {Place({}, false), RibbonBodyHeight(parent->fontMetrics())};
}

QSize TRibbonColumns::minimumSize() const {
  return sizeHint();
}

void TRibbonColumns::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  Place(rect, true);
}

int TRibbonColumns::Place(const QRect& rect, bool move) const {
  const auto direction = parentWidget()->layoutDirection();
  int left = 0;
  for (size_t at = 0; at < FItems.size();) {
    std::vector<QLayoutItem*> column;
    int width = 0;
    const bool rows = FItems[at].IsRow;
    for (; at < FItems.size() && FItems[at].IsRow == rows && column.size() < (rows ? kRows : 1); ++at) {
      QLayoutItem* item = FItems[at].Item.get();
      if (item->isEmpty()) continue;
      column.push_back(item);
      width = std::max(width, item->sizeHint().width());
    }
    if (column.empty()) continue;
    if (left > 0) left += kGap;
    const int height = rows ? rect.height() / kRows : rect.height();
    for (size_t row = 0; move && row < column.size(); ++row) {
      const QRect cell(rect.left() + left, rect.top() + static_cast<int>(row) * height, width, height);
      column[row]->setGeometry(QStyle::visualRect(direction, rect, cell));
    }
    left += width;
  }
  return left;
}
