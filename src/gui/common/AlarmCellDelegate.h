// Draws the cells of every grid as shell/uAlarmMarks says: the mark at the left, the text beside it, a selected row on
// light green.
#pragma once

#include <QIcon>
#include <QStyledItemDelegate>
#include <array>
#include <cstddef>

#include "shell/uAlarmMarks.h"

class AlarmCellDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit AlarmCellDelegate(QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // Draws one cell: the mark at its left top, the text beside it and vertically in its middle.
  void dbgCustomDrawColumnCell(QPainter& painter, const QStyleOptionViewItem& option,
                               const TCellDrawing& drawing) const;
  // The whole text of a cell that is cut.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  static constexpr std::size_t kImageCount = 4;

  std::array<QIcon, kImageCount> FOnLight, FOnDark;  // drawn for every visible row, so made once
};
