// The dots of the events chart: one an event, or one for all that would overlap, with their number. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/uPointAbsorption.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uLegendRow.h"

// By TSeries.
inline constexpr std::array kMarkers = {TMarker::Circle, TMarker::Square, TMarker::Triangle, TMarker::Diamond};

// Many smooth dots of one size in a picture, at a tenth of what drawing them takes.
class TDotStamp {
 public:
  // The picture is one of QImage::Format_ARGB32_Premultiplied and outlives the stamp; the radius is in its pixels.
  TDotStamp(QImage& picture, double radius);
  // Draws a dot of an opaque colour. The middle, in pixels of the picture, is rounded to a quarter of one.
  void Press(const QPointF& middle, QRgb ink) const;

 private:
  static constexpr int kSteps = 4;  // a pixel, in each direction

  QRgb* FPixels;
  int FWidth, FHeight;                                               // of the picture
  int FReach;                                                        // of a dot from the pixel of its middle
  int FSide;                                                         // of a mask
  std::array<std::vector<std::uint16_t>, kSteps * kSteps> FMasks{};  // the share of a pixel that is covered, of 256
};

class TEventDots {
 public:
  // Overlapping dots become a bigger one; else each is drawn, those of one pixel once.
  void SetAbsorption(bool on) { FAbsorption = on; }

  // Each kind of single dots has a shape of its own, kMarkers in their order.
  void SetShapes(bool on) { FShapes = on; }

  // Begins a picture of the events inside `rect`. The font is that of the numbers.
  void Begin(const QRect& rect, const QFont& font, double pixelRatio);
  // The largest value of a group says which of its events stands for all.
  void Add(double x, double y, std::size_t place, double value) { FGrid->Add(x, y, place, value); }
  // The same for many in the order of x; see TDotGrid.
  template <class... TOf>
  void AddRising(std::size_t begin, std::size_t end, const TOf&... of) {
    FGrid->AddRising(begin, end, of...);
  }
  // Ends it. inks: one a kind, kindOf(place) says which. `ground` parts a group from what it stands on.
  template <class TKindOf>
  void Paint(QCPPainter& painter, const std::vector<QColor>& inks, const QColor& ground, const TKindOf& kindOf);

  // The dot that stands for several and covers this position.
  [[nodiscard]] std::optional<TDot> GroupAt(const QPointF& position) const;
  struct TCircle {
    QPointF middle;
    double radius;
  };
  // What was drawn of the event at this position: its own dot, or that which absorbed it.
  [[nodiscard]] TCircle CircleOf(const QPointF& position) const;
  // Labels are placed off the dots.
  void KeepClear(TChartLabels& labels) const;
  void Clear() { FDots = {}; }

 private:
  static constexpr double kRadius = 3;  // px, of one event

  [[nodiscard]] double RadiusOf(std::size_t count) const;
  void Absorb();
  // Many dots of their own, which are stamped: each takes a tenth of the time of drawing it. All are circles.
  [[nodiscard]] bool IsCrowd(const QCPPainter& painter) const;
  [[nodiscard]] QImage Canvas(const QCPPainter& painter) const;
  void PaintGroup(QCPPainter& painter, const TDot& dot, const QColor& ink, const QColor& ground) const;

  bool FAbsorption = true;
  bool FShapes = false;
  QFont FFont;
  QRectF FArea;                    // of the picture, with what of a dot at its edge stands out
  std::array<double, 5> FRadii{};  // of a number of that many characters
  std::optional<TDotGrid> FGrid;
  std::vector<TDot> FDots;  // of the last picture
};

template <class TKindOf>
void TEventDots::Paint(QCPPainter& painter, const std::vector<QColor>& inks, const QColor& ground,
                       const TKindOf& kindOf) {
  Absorb();
  if (IsCrowd(painter)) {
    QImage canvas = Canvas(painter);
    const TDotStamp stamp(canvas, kRadius * canvas.devicePixelRatio());
    for (const TDot& dot : FDots) {
      const QPointF middle = QPointF(dot.x, dot.y) - FArea.topLeft();
      stamp.Press(middle * canvas.devicePixelRatio(), inks[kindOf(dot.item)].rgb());
    }
    painter.drawImage(FArea.topLeft(), canvas);
    return;
  }
  std::vector<QList<QPointF>> singles(inks.size());
  for (const TDot& dot : FDots) {
    if (!FAbsorption || dot.count == 1) singles[kindOf(dot.item)].append({dot.x, dot.y});
  }
  for (std::size_t kind = 0; kind < inks.size(); ++kind) {
    DrawDots(painter, singles[kind], FShapes ? kMarkers.at(kind) : TMarker::Circle, kRadius, inks[kind]);
  }
  for (const TDot& dot : FDots) {
    if (FAbsorption && dot.count > 1) PaintGroup(painter, dot, inks[kindOf(dot.item)], ground);
  }
}
