// A spin edit of any number, shown with no more digits than it has. A text that is no number, or can be read in two
// ways, leaves the value as it was.
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
  // A person types.
  void Typed();
  // What was typed is not taken, for this reason, a sentence.
  void Refused(const QString& problem) const;
};
