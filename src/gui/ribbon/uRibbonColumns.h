// The layout inside a ribbon group: widgets of a whole column, and rows, three to a column. Hidden widgets take no
// room. It is mirrored for right-to-left scripts.
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

class TRibbonColumns : public QLayout {
  Q_OBJECT

 public:
  using QLayout::QLayout;

  void AddColumn(QWidget* widget);
  void AddRow(QWidget* widget);

  void addItem(QLayoutItem* item) override;  // a column; takes the item
  int count() const override;
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;

 private:
  struct TItem {
    std::unique_ptr<QLayoutItem> Item;
    bool IsRow = false;
  };
  // Returns the width; places the items only if `move`.
  int Place(const QRect& rect, bool move) const;

  std::vector<TItem> FItems;
};
