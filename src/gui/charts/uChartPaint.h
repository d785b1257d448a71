// How things are put on a chart: hooks that paint into a layer, lines through an envelope, words on a ground of their
// own. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <functional>
#include <span>
#include <utility>

#include "analysis/uPointAbsorption.h"

// Calls a function to paint into a layer of the plot, clipped to the axis rect and a little around it, so that what
// stands on an edge is whole. The plot owns it.
class TPainted final : public QCPLayerable {
 public:
  using TPaint = std::function<void(QCPPainter&)>;
  TPainted(QCPAxisRect* rect, const QString& layer, TPaint paint);

 protected:
  [[nodiscard]] QRect clipRect() const override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;

 private:
  QCPAxisRect* FRect;
  TPaint FPaint;
};

// A colour mixed from two, `part` of the second.
QColor Mixed(const QColor& a, const QColor& b, double part);

// The columns to gather samples in for this painter: one a device pixel, more on paper. from and to in axis units.
TColumns ColumnsOf(const QCPAxis& keys, const QCPPainter& painter, double from, double to);

// A line through the points, cut at the edges of the axis rect before pixels grow beyond what a painter takes.
// A point between two breaks becomes a dot. keyOffset + key · keyScale is the axis coordinate.
void DrawEnvelope(QCPPainter& painter, const QCPAxis& keys, const QCPAxis& values,
                  std::span<const TEnvelopePoint> points, const QPen& pen, double keyOffset = 0, double keyScale = 1);

// A dot on each point that stands apart from its neighbours, so that there are never more dots than pixels.
void DrawLoneDots(QCPPainter& painter, const QCPAxis& keys, const QCPAxis& values,
                  std::span<const TEnvelopePoint> points, const QColor& ink, double keyOffset = 0, double keyScale = 1);

// Words at a point, on the palette's base so that they stay readable over lines; moved to stay inside `inside`.
void DrawWords(QCPPainter& painter, QPointF at, Qt::Alignment side, const QString& words, const QColor& ink,
               const QColor& ground, const QRect& inside);

// A horizontal dashed line over the axis rect with its name at an end or in the middle, above (AlignTop) or below it;
// nothing when the value is out of sight.
void DrawLevel(QCPPainter& painter, const QCPAxis& values, double value, const QString& name, const QColor& ink,
               const QColor& ground, Qt::Alignment namePlace = Qt::AlignRight | Qt::AlignTop);

// Spans of times, in the order of their beginnings, as a shade over the height of the axis rect.
void ShadeSpans(QCPPainter& painter, const QCPAxis& keys, std::span<const std::pair<double, double>> spans,
                const QColor& shade);

// A number of so many digits at most, in general form; a dash for none.
QString Digits(double value, int digits);

// A number for people: two decimals, or powers of ten where these would hide it.
QString Figure(double value);
