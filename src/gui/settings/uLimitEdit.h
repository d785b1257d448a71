// A spin edit for any number. It shows no more digits than the number has. A text that is no number, or can be read in
// two ways, leaves the value as it was.
#pragma once

#include <QDoubleSpinBox>

class TLimitEdit : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit TLimitEdit(QWidget* parent);

  [[nodiscard]] QString textFromValue(double value) const override;
  [[nodiscard]] double valueFromText(const QString& text) const override;
  [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
  void fixup(QString& text) const override;

 signals:
  // The user changed the text.
  void Typed();
  // The typed text is no limit; `problem` is a sentence that says why.
  void Refused(const QString& problem) const;
};
