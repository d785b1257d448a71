// The ribbon's tabs. Clicks and keys change the tab, the wheel does not.
#pragma once

#include <QTabBar>

class TRibbonTabBar : public QTabBar {
  Q_OBJECT

 public:
  explicit TRibbonTabBar(QWidget* parent);

 signals:
  // Down, Enter or Space: the focus moves into the page.
  void PageEntered();

 protected:
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};
