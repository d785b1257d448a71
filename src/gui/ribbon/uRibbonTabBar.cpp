#include "gui/ribbon/uRibbonTabBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionTab>
#include <QWheelEvent>

#include "gui/ribbon/uFlat.h"

TRibbonTabBar::TRibbonTabBar(QWidget* parent) : QTabBar(parent) {
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideRight);
  setAttribute(Qt::WA_Hover);
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

void TRibbonTabBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QPoint pointer = mapFromGlobal(QCursor::pos());
  for (int i = 0; i < count(); ++i) {
    if (!isTabVisible(i)) continue;
    QStyleOptionTab option;
    initStyleOption(&option, i);
    const QRect rect = tabRect(i);
    const bool current = i > 0 && i == currentIndex();
    TFlatState state;
    state.Hovered = underMouse() && rect.contains(pointer);
    state.Focused = current && hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange);
    PaintFlat(painter, rect.adjusted(1, 1, -1, -3), palette(), state);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect, Qt::AlignCenter | Qt::TextShowMnemonic,
                     fontMetrics().elidedText(tabText(i), Qt::ElideRight, rect.width(), Qt::TextShowMnemonic));
    if (current) {
      const int width = fontMetrics().size(Qt::TextShowMnemonic, tabText(i)).width();
      painter.fillRect(QRect(rect.center().x() - width / 2, rect.bottom() - 2, width, 3),
                       palette().color(QPalette::Highlight));
    }
  }
}
