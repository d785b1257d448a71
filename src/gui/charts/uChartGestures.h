// What mouse, wheel and keys do to a chart: zoom and pan its range, point at its marks, drag its cursors. It filters
// the events of the plot. Main thread only.
#pragma once

#include <QObject>

#include "gui/charts/uChartCursors.h"
#include "gui/charts/uChartMarks.h"
#include "gui/charts/uChartRange.h"

class TChartGestures final : public QObject {
  Q_OBJECT

 public:
  TChartGestures(TChartPlot& plot, const IChartReadings& readings, TChartRange& range, TChartMarks& marks,
                 TChartCursors& cursors);

  bool eventFilter(QObject* watched, QEvent* event) override;
  // The key C: sets or clears cursors at the moment that the user points at.
  void StepCursors();
  // A press of the mouse ends without effect.
  void EndDrag();
  // The band that a drag is about to zoom to.
  void PaintSpan(QPainter& painter) const;

 signals:
  // Left button, less than a drag.
  void Clicked(const QPointF& position);
  // The last click was the first of a double-click.
  void Unclicked();

 private:
  enum class TDrag { None, Span, Pan };

  [[nodiscard]] bool IsDragging() const { return FDrag != TDrag::None || FCursors.IsHeld(); }
  // The drag is long enough to zoom.
  [[nodiscard]] bool HasDragSpan() const;
  void Press(const QMouseEvent& event);
  void Move(const QMouseEvent& event);
  void Release(const QMouseEvent& event);
  void DoubleClick(const QMouseEvent& event);
  void Turn(const QWheelEvent& event);
  // False for a key that means nothing here.
  bool PressKey(QKeyEvent& event);
  bool Escape();
  void AskForMenu(const QContextMenuEvent& event);
  void DragPan(const QPointF& position);
  void EmitCursor(const QPointF& position);
  // What a resting pointer is at, after a change of range or data.
  void UpdatePointed();
  void EmitLocked();

  TChartPlot& FPlot;
  const IChartReadings& FReadings;
  TChartRange& FRange;
  TChartMarks& FMarks;
  TChartCursors& FCursors;
  TDrag FDrag = TDrag::None;
  Qt::MouseButton FDragButton = Qt::NoButton;
  bool FSpaceDown = false;
  QPointF FPressed, FPointer;
  TChartRange::TView FPressedView;
};
