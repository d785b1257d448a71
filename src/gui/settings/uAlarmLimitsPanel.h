// The alarm limits of every quantity, from … to …, opened below a button of the ribbon. Esc or a click beside it close
// it. What was typed and is not taken is said below the limits until somebody types again.
#pragma once

#include <QFrame>

class QLabel;

class TAlarmLimitsPanel : public QFrame {
  Q_OBJECT

 public:
  explicit TAlarmLimitsPanel(QWidget* parent);
  // Below `button`, wholly on its screen.
  void OpenBelow(const QWidget& button);
  // Why a limit keeps its value; empty: nothing to say.
  void ShowProblem(const QString& problem);

 signals:
  // Also told where it stays in sight: a click beside the panel takes what is typed and closes it.
  void LimitRefused(const QString& why);

 private:
  QLabel* FProblem;
};
