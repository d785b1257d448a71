#include "gui/mainform/uSettingsBinder.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QScopedValueRollback>
#include <QToolButton>
#include <utility>

#include "gui/mainform/uNamedChild.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLimitEdit.h"

void TSettingsBinder::Bind(TSettings& settings, std::function<void()> changed) {
  FSettings = &settings;
  FChanged = std::move(changed);
  for (const TSetting& row : Settings()) BindRow(row);
  Show({});
}

void TSettingsBinder::Show(TSettings settings) {
  {
    const QScopedValueRollback showing(FIsShowing, true);
    for (const auto& show : FShowing) show(settings);
  }
  FChanged();
}

void TSettingsBinder::BindRow(const TSetting& row) {
  std::visit(TByType{[&](TFieldOf<bool> field) {
                       // An action, a button of one, or a button that has none.
                       auto* action = FWindow.findChild<QAction*>(QtText(row.control));
                       const auto* button = FWindow.findChild<QToolButton*>(QtText(row.control));
                       if (button != nullptr) action = button->defaultAction();
                       action != nullptr ? BindToggle(*action, field)
                                         : BindToggle(NamedChild<QAbstractButton>(FWindow, row.control), field);
                     },
                     [&](TFieldOf<int> field) {
                       BindControl(NamedChild<QComboBox>(FWindow, row.control), &QComboBox::currentIndexChanged, field,
                                   &QComboBox::currentIndex, [](QComboBox& list, int index) {
                                     if (index >= 0 && index < list.count()) list.setCurrentIndex(index);
                                   });
                     },
                     [&](TFieldOf<double> field) {
                       BindControl(NamedChild<TLimitEdit>(FWindow, row.control), &TLimitEdit::valueChanged, field,
                                   &TLimitEdit::value, &TLimitEdit::setValue);
                     },
                     [&](TFieldOf<std::string> field) {
                       BindControl(
                           NamedChild<QLineEdit>(FWindow, row.control), &QLineEdit::textChanged, field,
                           [](const QLineEdit& edit) { return Utf8(edit.text()); },
                           [](QLineEdit& edit, const std::string& text) { edit.setText(QtText(text)); });
                     },
                     [&](TFieldOf<std::uint32_t> field) {
                       BindControl(NamedChild<TColourBox>(FWindow, row.control), &TColourBox::ColourChanged, field,
                                   &TColourBox::Colour, &TColourBox::SetColour);
                     }},
             row.field);
}

template <class TToggle>
void TSettingsBinder::BindToggle(TToggle& toggle, TFieldOf<bool> field) {
  BindControl(toggle, &TToggle::toggled, field, &TToggle::isChecked, &TToggle::setChecked);
}

template <class TControl, class TValue>
void TSettingsBinder::BindControl(TControl& control, auto changed, TFieldOf<TValue> field, auto get, auto set) {
  FShowing.emplace_back([&control, field, set](TSettings& settings) { std::invoke(set, control, field(settings)); });
  connect(&control, changed, this, [this, &control, field, get] {
    field(*FSettings) = std::invoke(get, control);
    if (!FIsShowing) FChanged();
  });
}
