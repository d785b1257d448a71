// The guard at every entry point from Qt: no exception passes it.
#pragma once

#include <QWidget>
#include <functional>

// Runs a handler. An exception that leaves it becomes one message box over `parent`; the program goes on.
void Guarded(QWidget* parent, const std::function<void()>& handler) noexcept;
