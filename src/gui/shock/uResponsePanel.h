// The response spectrum of the selected event: its chart below the choice of what it shows, and the progress of a
// calculation that takes long.
#pragma once

#include <QWidget>
#include <string>

class QProgressBar;
class QPushButton;
class TFlowLayout;
class TResponseChart;

class TResponsePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TResponsePanel(QWidget* parent);

  [[nodiscard]] TResponseChart* Chart() const { return FChart; }

  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  void AddChoices(TFlowLayout& choices);
  [[nodiscard]] QWidget* MakeProgress();
  // Asks for the file of a limit curve, or takes the limit away. A file of no use changes nothing.
  void ChangeLimit(QPushButton& button);

  TResponseChart* FChart;
  QProgressBar* FBar;
  std::string FLimitFolder;  // of the last one that was read
};
