// The alarm limits of every quantity, from … to …, opened below a button of the ribbon. Esc or a click beside it close
// it.
#pragma once

#include <QFrame>

class TAlarmLimitsPanel : public QFrame {
  Q_OBJECT

 public:
  explicit TAlarmLimitsPanel(QWidget* parent);
  // Below `button`, wholly on its screen.
  void OpenBelow(const QWidget& button);
};
