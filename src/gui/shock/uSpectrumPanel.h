// The spectral analysis of the selected event: its chart below the choice of what it shows.
#pragma once

#include <QWidget>

class QLabel;
class TSpectrumChart;

class TSpectrumPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TSpectrumPanel(QWidget* parent);

  [[nodiscard]] TSpectrumChart* Chart() const { return FChart; }

  // The labels of the choices hide where they have no room; their tool tips say the same.
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QList<QLabel*> FLabels;
  TSpectrumChart* FChart;
};
