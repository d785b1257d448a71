// The lines A and B of a chart, to measure between: the user sets them, drags them and takes them away. Main thread
// only.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "gui/charts/uChartPlot.h"

class TChartCursors {
 public:
  TChartCursors(TChartPlot& plot, const IChartReadings& readings);

  // Of A and B, while they are set.
  using TTimes = std::array<std::optional<double>, 2>;
  [[nodiscard]] const TTimes& Times() const { return FTimes; }
  // Sets A, then B, then takes both away: at the moment that the user points at, else a third and two thirds into the
  // view. Nothing happens without data.
  void Step(std::optional<double> pointed);
  // False where none is set.
  bool Clear();
  // They go with the data. Draws nothing.
  void Reset();

  // Of two in one place the later one.
  [[nodiscard]] std::optional<std::size_t> At(const QPointF& position) const;
  // The mouse takes the cursor that is near; false where none is. It is held until Release.
  bool Take(const QPointF& position);
  [[nodiscard]] bool IsHeld() const { return FHeld.has_value(); }
  // Stays within the view. Without a held cursor nothing moves.
  void Drag(double time);
  void PutBack();
  void Release() { FHeld.reset(); }
  // The shape of the pointer says where a cursor can be taken.
  void PointAt(const QPointF& position);

 private:
  struct THeld {
    std::size_t cursor;
    double from;  // where it was taken
  };

  void Move(double moment);
  // What is measured, or what to do next, in words.
  void EmitMeasured() const;
  [[nodiscard]] std::vector<TReading> Measures() const;
  void Paint(QCPPainter& painter) const;
  void PaintFlag(QCPPainter& painter, double x, const QString& name) const;
  void PaintMeasures(QCPPainter& painter, double beside) const;

  TChartPlot& FPlot;
  const IChartReadings& FReadings;
  TTimes FTimes;
  std::optional<THeld> FHeld;  // by the mouse
};
