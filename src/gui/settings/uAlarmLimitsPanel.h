// The minimum and the maximum of every quantity that has alarm limits. It opens below a button of the ribbon; Esc or a
// click beside it closes it. When it refuses a typed limit, it says why until somebody types again.
#pragma once

#include <QFrame>
#include <span>
#include <string>
#include <vector>

#include "model/uQuantities.h"

class QLabel;

class TAlarmLimitsPanel : public QFrame {
  Q_OBJECT

 public:
  explicit TAlarmLimitsPanel(QWidget* parent);
  // Below `button`, wholly on its screen.
  void OpenBelow(const QWidget& button);
  // The names stand beside the inputs; an empty one leaves the input alone.
  void ShowAnalogNames(std::span<const std::string, kAnalogInputs.size()> names);
  // Shows why a limit keeps its value; an empty text hides the last problem.
  void ShowProblem(const QString& problem);

 signals:
  // For the status bar: a click beside the panel enters what is typed and closes the panel with its own message.
  void LimitRefused(const QString& why);

 private:
  std::vector<QLabel*> FLabels;  // by TQuantity
  QLabel* FProblem;
};
