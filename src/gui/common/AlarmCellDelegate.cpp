#include "gui/common/AlarmCellDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <iterator>
#include <utility>

#include "gui/common/DatasetTableModel.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr int kImageSize = 16;    // px
constexpr int kRightPadding = 6;  // px
constexpr QRgb kSelected = 0xC0DCC0;

TCellDrawing DrawingOf(const QModelIndex& index) {
  return qobject_cast<const DatasetTableModel*>(index.model())->Drawing(index);
}

constexpr std::pair<TCellImage, const char*> kImages[] = {{TCellImage::Alarm, "data-warning"},
                                                          {TCellImage::AboveMaximum, "temperature-warm"},
                                                          {TCellImage::BelowMinimum, "temperature-cold"},
                                                          {TCellImage::Within, "temperature-normal"}};

}  // namespace

AlarmCellDelegate::AlarmCellDelegate(QObject* parent) : QStyledItemDelegate(parent) {
  static_assert(std::size(kImages) == kImageCount);
  for (std::size_t i = 0; i < kImageCount; ++i) {
    FOnLight[i] = Icon(kImages[i].second, false);
    FOnDark[i] = Icon(kImages[i].second, true);
  }
}

void AlarmCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  dbgCustomDrawColumnCell(*painter, option, DrawingOf(index));
}

void AlarmCellDelegate::dbgCustomDrawColumnCell(QPainter& painter, const QStyleOptionViewItem& option,
                                                const TCellDrawing& drawing) const {
  const QRect& cell = option.rect;
  painter.save();
  painter.setClipRect(cell);
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  if (selected) {
    painter.fillRect(cell, QColor(kSelected));
  } else if (option.features.testFlag(QStyleOptionViewItem::Alternate)) {
    painter.fillRect(cell, option.palette.alternateBase());
  }
  if (drawing.image != TCellImage::None) {
    const auto& icons = IsDark(option.palette) && !selected ? FOnDark : FOnLight;
    const auto image = std::ranges::find(kImages, drawing.image, [](const auto& row) { return row.first; });
    const auto which = static_cast<std::size_t>(image - std::begin(kImages));
    icons[which].paint(&painter, QRect(cell.topLeft(), QSize(kImageSize, kImageSize)));
  }
  painter.setFont(option.font);
  painter.setPen(selected ? QColor(Qt::black) : option.palette.color(QPalette::Text));
  const QFontMetrics& metrics = option.fontMetrics;
  const int room = cell.width() - drawing.textOffset;
  const QString text = metrics.elidedText(QtText(drawing.text), Qt::ElideRight, room);
  const int top = cell.top() + cell.height() / 2 - metrics.height() / 2;
  painter.drawText(cell.left() + drawing.textOffset, top + metrics.ascent(), text);
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter.setPen(Qt::DotLine);
    painter.drawRect(cell.adjusted(0, 0, -1, -1));
  }
  painter.restore();
}

QSize AlarmCellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const TCellDrawing drawing = DrawingOf(index);
  const int text = option.fontMetrics.horizontalAdvance(QtText(drawing.text));
  return {drawing.textOffset + text + kRightPadding, std::max(option.fontMetrics.height(), kImageSize)};
}

bool AlarmCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) {
  const bool isCell = event->type() == QEvent::ToolTip && index.isValid();
  const QRect inSight = option.rect & view->viewport()->rect();
  if (!isCell || sizeHint(option, index).width() - kRightPadding <= inSight.width()) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  QToolTip::showText(event->globalPos(), Qt::convertFromPlainText(QtText(DrawingOf(index).text)), view);
  return true;
}
