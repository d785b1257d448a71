#include "gui/settings/uLimitEdit.h"

#include <QLineEdit>
#include <limits>

#include "base/uText.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTypedNumber.h"

namespace {

// The base rounds to so many decimals: more than a double has between 1e-308 and 1.
constexpr int kDecimals = 323;
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kStep = 0.5;

}  // namespace

TLimitEdit::TLimitEdit(QWidget* parent) : QDoubleSpinBox(parent) {
  setDecimals(kDecimals);
  setRange(-kLargest, kLargest);
  setSingleStep(kStep);
  setKeyboardTracking(false);
  setMaximumWidth(fontMetrics().averageCharWidth() * 18);
  connect(lineEdit(), &QLineEdit::textEdited, this, &TLimitEdit::Typed);
}

QString TLimitEdit::textFromValue(double value) const {
  return QtText(GeneralFloat(value));
}

double TLimitEdit::valueFromText(const QString& text) const {
  return ReadTypedNumber(text).value.value_or(value());
}

// What may still become a number, or is to be refused as a whole, is let stand while it is typed.
QValidator::State TLimitEdit::validate(QString& text, int& /*position*/) const {
  if (ReadTypedNumber(text).value) return QValidator::Acceptable;
  static const QString kParts = QString("0123456789.,-+eE ") + QChar(0x2212) + QChar(0xA0) + QChar(0x202F);
  const bool maybe = std::ranges::all_of(text, [](QChar c) { return kParts.contains(c); });
  return maybe ? QValidator::Intermediate : QValidator::Invalid;
}

void TLimitEdit::fixup(QString& text) const {
  emit Refused(ReadTypedNumber(text).problem);
}
