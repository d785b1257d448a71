#include "gui/ribbon/uRibbonTabBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace {

constexpr int kEdges = 20;  // px: the style sheet's padding, border and margin of a tab, both sides

}  // namespace

TRibbonTabBar::TRibbonTabBar(QWidget* parent) : QTabBar(parent) {
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideRight);
  setMouseTracking(true);
}

QSize TRibbonTabBar::tabSizeHint(int index) const {
  const QSize least = minimumTabSizeHint(index);
  return {least.width() + fontMetrics().height(), least.height()};
}

QSize TRibbonTabBar::minimumTabSizeHint(int index) const {
  QFont wide = font();
  wide.setWeight(QFont::DemiBold);  // of the current tab
  const QFontMetrics metrics(wide);
  return {metrics.size(Qt::TextShowMnemonic, tabText(index)).width() + kEdges, metrics.height() + 14};
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
