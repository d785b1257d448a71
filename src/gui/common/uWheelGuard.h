// Ignores the wheel over a control without the focus, so that the page scrolls instead of the value changing. Owned by
// the control.
#pragma once

#include <QEvent>
#include <QWidget>

class TWheelGuard final : public QObject {
 public:
  explicit TWheelGuard(QWidget& control) : QObject(&control), FControl(control) {
    control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Wheel || FControl.hasFocus()) return false;
    event->ignore();
    return true;
  }

 private:
  QWidget& FControl;
};
