#include "gui/settings/uLimitEdit.h"

#include "base/uText.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kLargest = 1e9;
constexpr int kDecimals = 9;
constexpr double kStep = 0.5;

// A comma is a point to people of many countries.
QString WithPoint(QString text) {
  return text.trimmed().replace(',', '.').replace(QChar(0x2212), '-');
}

}  // namespace

TLimitEdit::TLimitEdit(QWidget* parent) : QDoubleSpinBox(parent) {
  setDecimals(kDecimals);
  setRange(-kLargest, kLargest);
  setSingleStep(kStep);
  setKeyboardTracking(false);
  setMaximumWidth(fontMetrics().averageCharWidth() * 18);
}

QString TLimitEdit::textFromValue(double value) const {
  return QtText(GeneralFloat(value));
}

double TLimitEdit::valueFromText(const QString& text) const {
  return WithPoint(text).toDouble();
}

QValidator::State TLimitEdit::validate(QString& text, int& /*position*/) const {
  const QString number = WithPoint(text);
  bool valid = false;
  const double value = number.toDouble(&valid);
  if (valid) return value >= minimum() && value <= maximum() ? QValidator::Acceptable : QValidator::Invalid;
  static const QString kParts = "0123456789.-+eE";
  const bool maybe = std::ranges::all_of(number, [](QChar c) { return kParts.contains(c); });
  return maybe ? QValidator::Intermediate : QValidator::Invalid;
}
