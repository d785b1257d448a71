// A small histogram of one quantity with its filter limits. A drag sets both limits, a drag past an edge removes that
// limit, a double click removes both; for the keyboard there are the edits. Heights are square roots of counts, so that
// single events stay visible.
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
  // During a drag; the limits are rounded.
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
  // Nothing outside the bars.
  [[nodiscard]] std::optional<double> ValueAt(double x) const;
  void PaintBars(QPainter& painter) const;
  void PaintEnds(QPainter& painter) const;

  THistogram FHistogram;
  TRange FRange;
  std::optional<double> FPressed;  // px
  bool FDragged = false;
};
