#include "gui/ribbon/uRibbonTabBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

TRibbonTabBar::TRibbonTabBar(QWidget* parent) : QTabBar(parent) {
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideRight);
  setMouseTracking(true);
}

QSize TRibbonTabBar::tabSizeHint(int index) const {
  const QFontMetrics metrics = fontMetrics();
  return {metrics.size(Qt::TextShowMnemonic, tabText(index)).width() + metrics.height() * 3 / 2, metrics.height() + 11};
}

QSize TRibbonTabBar::minimumTabSizeHint(int index) const {
  const QFontMetrics metrics = fontMetrics();
  return {metrics.size(Qt::TextShowMnemonic, tabText(index)).width() + 4, metrics.height() + 11};
}

void TRibbonTabBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      emit PageEntered();
      return;
    default:
      QTabBar::keyPressEvent(event);
  }
}

// The base takes a double click for one more press.
void TRibbonTabBar::mouseDoubleClickEvent(QMouseEvent* event) {
  emit tabBarDoubleClicked(tabAt(event->position().toPoint()));
}

void TRibbonTabBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}
