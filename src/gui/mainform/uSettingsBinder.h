// Between the settings and the controls that hold them: each setting is one control of the window with a fixed name.
#pragma once

#include <QHash>
#include <QObject>
#include <functional>

#include "shell/uIControls.h"

class QMainWindow;

class TSettingsBinder {
 public:
  explicit TSettingsBinder(QMainWindow& window) : FWindow(window) {}

  // Gives every control its default and calls `changed` from then on, whoever changes it. Throws std::logic_error when
  // the window lacks a control.
  void Bind(const std::function<void()>& changed);

  [[nodiscard]] TControlValue Value(std::string_view control) const;
  void SetValue(std::string_view control, const TControlValue& value);
  void Click(std::string_view toggle);

 private:
  [[nodiscard]] QObject* Find(std::string_view control) const;

  QMainWindow& FWindow;
  mutable QHash<QByteArray, QObject*> FControls;  // found so far
};
