// The spectral analysis of the selected event: its chart below the choice of what it shows.
#pragma once

#include <QWidget>

class TSpectrumChart;

class TSpectrumPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TSpectrumPanel(QWidget* parent);

  [[nodiscard]] TSpectrumChart* Chart() const { return FChart; }

 private:
  TSpectrumChart* FChart;
};
