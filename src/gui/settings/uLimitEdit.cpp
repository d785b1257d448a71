#include "gui/settings/uLimitEdit.h"

#include <QLineEdit>
#include <limits>

#include "base/uText.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTypedNumber.h"

namespace {

// The base class rounds to this many decimals: enough for a number as small as 1e-308.
constexpr int kDecimals = 323;
constexpr double kMaxLimit = std::numeric_limits<double>::max();
constexpr double kStep = 0.5;

}  // namespace

TLimitEdit::TLimitEdit(QWidget* parent) : QDoubleSpinBox(parent) {
  setDecimals(kDecimals);
  setRange(-kMaxLimit, kMaxLimit);
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

// While the user types, a text may stay that can become a number or that fixup will refuse.
QValidator::State TLimitEdit::validate(QString& text, int& /*position*/) const {
  if (ReadTypedNumber(text).value) return QValidator::Acceptable;
  static const QString kParts = QString("0123456789.,-+eE ") + QChar(0x2212) + QChar(0xA0) + QChar(0x202F);
  const bool maybe = std::ranges::all_of(text, [](QChar c) { return kParts.contains(c); });
  return maybe ? QValidator::Intermediate : QValidator::Invalid;
}

void TLimitEdit::fixup(QString& text) const {
  emit Refused(ReadTypedNumber(text).problem);
}
