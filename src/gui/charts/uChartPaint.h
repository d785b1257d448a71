// Functions that draw on a chart: hooks that paint into a layer, curves, lines, words. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <cmath>
#include <functional>
#include <limits>
#include <span>
#include <vector>

#include "analysis/uEnvelope.h"
#include "gui/charts/uChartLabels.h"
#include "gui/charts/uLegendRow.h"

// Calls a function to paint into a layer of the plot. The clip is a little larger than the axis rect, so that marks on
// an edge are whole. The plot owns it.
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

// Columns over a span for this painter: one for each device pixel, more on paper. The span is in axis units, or in
// those of the samples.
TColumns ColumnsOf(const QCPAxis& keys, const QCPPainter& painter, const TTimeSpan& span);

// The axes of a curve and the clock of its samples: time t of a sample stands at offset + t / perUnit.
struct TCurveAxes {
  const QCPAxis& keys;
  const QCPAxis& values;
  double offset = 0;
  double perUnit = 1;

  [[nodiscard]] QPointF At(double time, double value) const {
    return {keys.coordToPixel(offset + time * (1 / perUnit)), values.coordToPixel(value)};
  }
  // The view in the samples' own time, widened by the rounding of the conversion, so that samples at its ends stay in.
  [[nodiscard]] TTimeSpan View() const {
    const QCPRange view = keys.range();
    const double size = (std::fabs(offset) + std::fabs(view.upper)) * perUnit;
    const double rounding = 4 * std::numeric_limits<double>::epsilon() * size;
    return {(view.lower - offset) * perUnit - rounding, (view.upper - offset) * perUnit + rounding};
  }
};

// A line through the points, cut at the edges of the axis rect before pixels grow beyond what a painter takes.
// A point between two breaks becomes a dot.
void DrawEnvelope(QCPPainter& painter, const TCurveAxes& axes, std::span<const TEnvelopePoint> points, const QPen& pen);

// A dot on each point that stands apart from its neighbours, so that there are never more dots than pixels.
void DrawLoneDots(QCPPainter& painter, const TCurveAxes& axes, std::span<const TEnvelopePoint> points,
                  const QColor& ink);

// Dots of one shape.
void DrawDots(QCPPainter& painter, const QList<QPointF>& dots, TMarker marker, double radius, const QColor& ink);

// Labels are placed off the line through these points.
void KeepClear(TChartLabels& labels, const TCurveAxes& axes, std::span<const TEnvelopePoint> points);

// The envelope of samples in the order of time, and dots on those that stand apart if asked for. The line breaks
// between samples that are farther apart than maxStep, in their own time. Labels keep clear of it.
template <class TSample, class TValueOf>
void DrawCurve(QCPPainter& painter, const TCurveAxes& axes, std::span<const TSample> samples, const TValueOf& valueOf,
               const TExtents& extents, const QPen& pen, TChartLabels& labels, bool withDots = false,
               double maxStep = kNoGap) {
  const std::vector<TEnvelopePoint> points = Envelope(
      samples.size(), [samples](std::size_t i) { return samples[i].time; },
      [&](std::size_t i) { return valueOf(samples[i]); }, extents, ColumnsOf(axes.keys, painter, axes.View()), maxStep);
  KeepClear(labels, axes, points);
  painter.setAntialiasing(true);
  DrawEnvelope(painter, axes, points, pen);
  if (withDots) DrawLoneDots(painter, axes, points, pen.color());
}

// Where the coordinates of an axis stand on the screen, for a million of them: QCPAxis::coordToPixel looks at the kind
// and the side of its axis anew each time. Valid until the axis changes.
class TPixels {
 public:
  explicit TPixels(const QCPAxis& axis)
      : FAxis(axis),
        FIsLinear(axis.scaleType() == QCPAxis::stLinear),
        FFrom(axis.range().lower),
        FPixelOfFrom(axis.coordToPixel(FFrom)),
        FPerUnit((axis.coordToPixel(axis.range().upper) - FPixelOfFrom) / axis.range().size()) {}

  [[nodiscard]] double At(double coordinate) const {
    return FIsLinear ? FPixelOfFrom + (coordinate - FFrom) * FPerUnit : FAxis.coordToPixel(coordinate);
  }

 private:
  const QCPAxis& FAxis;
  bool FIsLinear;
  double FFrom, FPixelOfFrom, FPerUnit;
};

// px of a curve at any scale.
inline constexpr double kCurveWidth = 1.5;

// A horizontal dashed line over the axis rect, whose name becomes a label at the side of its axis; nothing when the
// value is out of sight.
void DrawLevel(QCPPainter& painter, TChartLabels& labels, const QCPAxis& values, double value, const QString& name,
               const QColor& ink);

// A vertical line over the axis rect; false, and no line, where the time is out of sight.
bool DrawMoment(QCPPainter& painter, const QCPAxis& keys, double time, const QPen& pen);

// Spans of times, ordered by their starts, as a shade over the height of the axis rect.
void ShadeSpans(QCPPainter& painter, const QCPAxis& keys, std::span<const TTimeSpan> spans, const QColor& shade);

inline constexpr auto kNoNumber = "–";

// A number in general form with at most so many digits; a dash for one that is not finite.
QString Digits(double value, int digits = 6);

// A number for people: two decimals, or powers of ten where these would hide it.
QString Figure(double value);
