// A layout in rows that wraps at the right edge. Hidden widgets take no room.
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

class TFlowLayout : public QLayout {
  Q_OBJECT

 public:
  using QLayout::QLayout;

  void addItem(QLayoutItem* item) override;  // takes the item
  int count() const override;
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;

 private:
  // Returns the height; places the items only if `move`.
  int Place(const QRect& rect, bool move) const;

  std::vector<std::unique_ptr<QLayoutItem>> FItems;
};
