// Catches exceptions at the entries from Qt, so that none ends the program.
#pragma once

#include <QApplication>
#include <QSet>
#include <QWidget>
#include <functional>

// Runs a handler. An exception that leaves it becomes one message box over `parent`; the program goes on.
void Guarded(QWidget* parent, const std::function<void()>& handler) noexcept;

// Catches what event handlers without a guard throw. Each text is shown once, because a paint handler throws it again
// at every repaint.
class TGuardedApplication final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  QSet<QString> FTold;
};
