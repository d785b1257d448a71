// Keeps the wheel from changing a control that happens to be under the pointer: without the focus it turns to what
// scrolls. Owned by the control.
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
