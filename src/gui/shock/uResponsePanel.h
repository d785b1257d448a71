// The response spectrum of the selected event: its chart, the choice of what it shows, and the progress of a
// calculation that takes long.
#pragma once

#include <QWidget>
#include <string>

class QProgressBar;
class QPushButton;
class TChoiceBar;
class TResponseChart;

class TResponsePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TResponsePanel(QWidget* parent);

  [[nodiscard]] TResponseChart* Chart() const { return FChart; }
  // For the bar above the chart, which takes it.
  [[nodiscard]] TChoiceBar* Choices() const { return FChoices; }

  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  void AddChoices();
  [[nodiscard]] QWidget* MakeProgress();
  // Asks for the file of a limit curve, or takes the limit away. A file of no use changes nothing.
  void ChangeLimit(QPushButton& button);

  TResponseChart* FChart;
  TChoiceBar* FChoices;
  QProgressBar* FBar;
  std::string FLimitFolder;  // of the last one that was read
};
