#include "gui/mainform/uSettingsBinder.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QToolButton>
#include <stdexcept>

#include "gui/common/uQtText.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLimitEdit.h"
#include "shell/uSettingsStore.h"

namespace {

// The action behind a toggle, if it has one.
QAction* ActionOf(QObject* control) {
  if (auto* action = qobject_cast<QAction*>(control)) return action;
  const auto* button = qobject_cast<QToolButton*>(control);
  return button == nullptr ? nullptr : button->defaultAction();
}

void ConnectChange(QObject* control, const std::function<void()>& changed) {
  if (QAction* action = ActionOf(control)) {
    QObject::connect(action, &QAction::toggled, control, changed);
  } else if (auto* box = qobject_cast<QAbstractButton*>(control)) {
    QObject::connect(box, &QAbstractButton::toggled, control, changed);
  } else if (auto* colour = qobject_cast<TColourBox*>(control)) {
    QObject::connect(colour, &TColourBox::ColourChanged, control, changed);
  } else if (auto* list = qobject_cast<QComboBox*>(control)) {
    QObject::connect(list, &QComboBox::currentIndexChanged, control, changed);
  } else if (auto* number = qobject_cast<QDoubleSpinBox*>(control)) {
    QObject::connect(number, &QDoubleSpinBox::valueChanged, control, changed);
  } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
    QObject::connect(edit, &QLineEdit::textChanged, control, changed);
  } else {
    throw std::logic_error("not a control of a setting: " + Utf8(control->objectName()));
  }
}

}  // namespace

void TSettingsBinder::Bind(const std::function<void()>& changed) {
  for (const TSetting& setting : Settings()) {
    const TControlValue def = DefaultOf(setting);
    if (!std::holds_alternative<bool>(def)) {
      SetValue(setting.control, def);
    } else if (Value(setting.control) != def) {
      Click(setting.control);
    }
    ConnectChange(Find(setting.control), changed);
  }
}

TControlValue TSettingsBinder::Value(std::string_view control) const {
  QObject* found = Find(control);
  if (const QAction* action = ActionOf(found)) return action->isChecked();
  if (const auto* box = qobject_cast<QAbstractButton*>(found)) return box->isChecked();
  if (const auto* colour = qobject_cast<TColourBox*>(found)) return colour->Colour();
  if (const auto* list = qobject_cast<QComboBox*>(found)) return list->currentIndex();
  if (const auto* number = qobject_cast<QDoubleSpinBox*>(found)) return number->value();
  return Utf8(qobject_cast<QLineEdit*>(found)->text());
}

void TSettingsBinder::SetValue(std::string_view control, const TControlValue& value) {
  QObject* found = Find(control);
  if (auto* colour = qobject_cast<TColourBox*>(found)) {
    colour->SetColour(std::get<std::string>(value));
  } else if (auto* list = qobject_cast<QComboBox*>(found)) {
    const int index = std::get<int>(value);
    if (index >= 0 && index < list->count()) list->setCurrentIndex(index);
  } else if (auto* number = qobject_cast<QDoubleSpinBox*>(found)) {
    number->setValue(std::get<double>(value));
  } else {
    qobject_cast<QLineEdit*>(found)->setText(QtText(std::get<std::string>(value)));
  }
}

void TSettingsBinder::Click(std::string_view toggle) {
  QObject* found = Find(toggle);
  if (QAction* action = ActionOf(found)) {
    action->toggle();
  } else {
    qobject_cast<QAbstractButton*>(found)->toggle();
  }
}

QObject* TSettingsBinder::Find(std::string_view control) const {
  const QByteArray name(control.data(), static_cast<qsizetype>(control.size()));
  QObject*& found = FControls[name];
  if (found == nullptr) found = FWindow.findChild<QObject*>(QString::fromUtf8(name));
  if (found == nullptr) throw std::logic_error("the window has no control " + name.toStdString());
  return found;
}
