// Draws the cells of every grid as shell/uAlarmMarks says: the mark at the left, the text beside it, a selected row on
// light green.
#pragma once

#include <QIcon>
#include <QStyledItemDelegate>
#include <array>
#include <cstddef>

class AlarmCellDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit AlarmCellDelegate(QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  static constexpr std::size_t kImageCount = 4;

  std::array<QIcon, kImageCount> FOnLight, FOnDark;  // drawn for every visible row, so made once
};
