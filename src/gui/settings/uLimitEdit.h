// A spin edit of any number, shown with no more digits than it has.
#pragma once

#include <QDoubleSpinBox>

class TLimitEdit : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit TLimitEdit(QWidget* parent);

  [[nodiscard]] QString textFromValue(double value) const override;
  [[nodiscard]] double valueFromText(const QString& text) const override;
  [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
};
