// A small histogram of one quantity with the limits that the filter has on it. A drag sets both limits, a drag over an
// edge leaves that end open, a double click opens both; the edits beside it are the way for keys. Heights go by the
// square root, so that single events stay in sight.
#pragma once

#include <QWidget>

#include "analysis/uEventFilter.h"

class THistogramStrip : public QWidget {
  Q_OBJECT

 public:
  explicit THistogramStrip(QWidget* parent);

  void ShowHistogram(THistogram histogram);
  void SetRange(const TRange& range);

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  // While the mouse moves; the ends are round numbers.
  void RangeDragged(const TRange& range);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] QRectF Bars() const;
  [[nodiscard]] double Span() const;
  [[nodiscard]] double PixelOf(double value) const;
  // Nothing past the edges.
  [[nodiscard]] std::optional<double> ValueAt(double x) const;
  void PaintBars(QPainter& painter) const;
  void PaintEnds(QPainter& painter) const;

  THistogram FHistogram;
  TRange FRange;
  std::optional<double> FPressed;  // px
  bool FDragged = false;
};
