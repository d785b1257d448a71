#include "gui/common/uTypedNumber.h"

#include <QObject>
#include <QRegularExpression>
#include <cmath>

TTypedNumber ReadTypedNumber(const QString& text) {
  // Blanks of every width part thousands.
  static const QRegularExpression twoWays(R"(,\d{3}(?!\d)|\..*,|,.*\.|\d\s+\d)",
                                          QRegularExpression::UseUnicodePropertiesOption);
  QString number = text.trimmed();
  if (twoWays.match(number).hasMatch()) {
    return {std::nullopt,
            QObject::tr("“%1” can be read in two ways. Write 1000 for a thousand, 1.5 for one and a half.").arg(text)};
  }
  bool isNumber = false;
  const double value = number.replace(',', '.').replace(QChar(0x2212), '-').toDouble(&isNumber);
  if (!isNumber || !std::isfinite(value)) return {std::nullopt, QObject::tr("“%1” is no number.").arg(text)};
  return {value, {}};
}
