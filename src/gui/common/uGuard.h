// The guards at the entries from Qt: no exception ends the program.
#pragma once

#include <QApplication>
#include <QSet>
#include <QWidget>
#include <functional>

// Runs a handler. An exception that leaves it becomes one message box over `parent`; the program goes on.
void Guarded(QWidget* parent, const std::function<void()>& handler) noexcept;

// The net below: what an event handler without a guard of its own throws, a paint handler say, is told once for each
// text, because it may come again with the next repaint.
class TGuardedApplication final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  QSet<QString> FTold;
};
