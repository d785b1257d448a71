// The window's controls by their fixed names.
#pragma once

#include <QWidget>
#include <stdexcept>
#include <string>
#include <string_view>

#include "gui/common/uQtText.h"

// A child of the window; an unknown name throws std::logic_error.
template <class T>
T& NamedChild(const QWidget& window, std::string_view name) {
  auto* found = window.findChild<T*>(QtText(name));
  if (found == nullptr) throw std::logic_error("the window has no control " + std::string(name));
  return *found;
}
