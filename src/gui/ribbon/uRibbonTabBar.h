// The ribbon's tabs, plain text with the current one underlined. Only clicks and keys change the tab, never the wheel.
#pragma once

#include <QTabBar>

class TRibbonTabBar : public QTabBar {
  Q_OBJECT

 public:
  explicit TRibbonTabBar(QWidget* parent);

 signals:
  // Down or Enter: the keyboard goes on into the page.
  void PageEntered();

 protected:
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};
