// Binds the settings to the window's controls: each is the state of one control, which has a fixed name.
#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "shell/uSettingsSchema.h"

class QMainWindow;

class TSettingsBinder : public QObject {
 public:
  explicit TSettingsBinder(QMainWindow& window) : FWindow(window) {}

  // Gives every control its default. From then on `settings` follow the controls, whoever changes them, and `changed`
  // is called after a change. `settings` outlive the binder. Throws std::logic_error when the window lacks a control.
  void Bind(TSettings& settings, std::function<void()> changed);

  // Sets every control, then calls `changed` once. A toggle does all that a click on it does, also while it is
  // disabled. A list stays as it is when it lacks the entry.
  void Show(TSettings settings);

 private:
  void BindRow(const TSetting& row);
  template <class TToggle>
  void BindToggle(TToggle& toggle, TFieldOf<bool> field);
  // `changed` is the control's signal, `get` reads its value, `set` sets it.
  template <class TControl, class TValue>
  void BindControl(TControl& control, auto changed, TFieldOf<TValue> field, auto get, auto set);

  QMainWindow& FWindow;
  TSettings* FSettings = nullptr;
  std::function<void()> FChanged;
  std::vector<std::function<void(TSettings&)>> FShowing;  // each sets one control
  bool FIsShowing = false;
};
