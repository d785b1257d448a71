// What a chart shows at the pointer: the indicator, a line with the values, and the sample nearest to the pointer.
// Both are drawn on the layer of the marks. Main thread only.
#pragma once

#include <optional>

#include "gui/charts/uChartPlot.h"

class TChartMarks {
 public:
  TChartMarks(TChartPlot& plot, const IChartReadings& readings);

  // Locked, the indicator stays where it was clicked; until then, and unlocked, it follows the pointer.
  void SetIndicatorVisible(bool visible);
  void SetIndicatorLocked(bool locked);
  // Where the line stands; nothing while there is none.
  [[nodiscard]] std::optional<double> IndicatorTime() const;
  // Where the pointer is in a neighbouring chart: the indicator stands there while it is not in this one.
  void SetShared(std::optional<double> time);
  // The sample nearest to the pointer is marked and named.
  void SetNearestVisible(bool visible);

  // The pointer is here; outside the axes it is nowhere.
  void Hover(const QPointF& position);
  // A menu was asked for here; outside the axes nowhere. This counts until the pointer comes back.
  void Ask(const QPointF& position);
  // The moment that the user pointed at last: under the pointer, of the menu, or of the clicked indicator.
  [[nodiscard]] std::optional<double> PointedTime() const;

  // A click puts a locked indicator here.
  void Pin(const QPointF& position);
  // The last click was the first of a double-click, so it put nothing.
  void TakePinBack() { FPinned = FPinnedBefore; }
  // False where nothing was put.
  bool Unpin();
  // Other data of this span. What was clicked stays where the span has it. Draws and emits nothing.
  void ChangeData(const TTimeSpan& span);
  // The plot was drawn anew, so that the pointer may be at another moment: emits what changed.
  void Update();
  // Where the pointer is, while it is over the axes.
  [[nodiscard]] const std::optional<QPointF>& Hovered() const { return FHover; }

 private:
  void FollowPointer();
  void EmitMoved();
  void Paint(QCPPainter& painter) const;
  // Gives the box of its words; a low plot has a line of them above it instead.
  QRectF PaintIndicator(QCPPainter& painter, double time) const;
  void PaintStrip(QCPPainter& painter, const std::vector<TReading>& readings) const;
  void PaintNearest(QCPPainter& painter, const TReading& nearest, const QRectF& taken) const;

  TChartPlot& FPlot;
  const IChartReadings& FReadings;
  bool FIndicator = false, FIndicatorLocked = false, FNearest = false;
  std::optional<QPointF> FHover;                 // the pointer, while it is over the axes
  std::optional<double> FAsked;                  // where the last menu was asked for
  std::optional<double> FShared;                 // of a neighbouring chart
  std::optional<double> FPinned, FPinnedBefore;  // where the indicator was clicked, and the click before
  // The last that was emitted of the data that are shown.
  std::optional<double> FEmittedMoved, FEmittedPointer;
};
