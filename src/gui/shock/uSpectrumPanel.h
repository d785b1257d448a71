// The spectral analysis of the selected event: its chart, and the choice of what it shows.
#pragma once

#include <QWidget>

class TChoiceBar;
class TSpectrumChart;

class TSpectrumPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TSpectrumPanel(QWidget* parent);

  [[nodiscard]] TSpectrumChart* Chart() const { return FChart; }

  // For the bar above the chart, which takes it.
  [[nodiscard]] TChoiceBar* Choices() const { return FChoices; }

  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  TSpectrumChart* FChart;
  TChoiceBar* FChoices;
};
