// The base of every chart: a plot with its tools. The range is what is in sight, the gestures are what the user does,
// the marks and the cursors what is drawn for the user. Each chart owns its range. Main thread only.
#pragma once

#include <optional>
#include <utility>

#include "gui/charts/uChartCursors.h"
#include "gui/charts/uChartGestures.h"
#include "gui/charts/uChartMarks.h"
#include "gui/charts/uChartPlot.h"
#include "gui/charts/uChartRange.h"
#include "gui/charts/uChartReadings.h"
#include "gui/charts/uRangeTable.h"

class TTimeChart : public TChartPlot, public IChartReadings {
  Q_OBJECT

 public:
  explicit TTimeChart(TAxisUnit unit, QWidget* parent = nullptr);

  // Takes all data away. Views that borrow from the model let go of it here.
  virtual void Clear() = 0;
  // Statistics of what is in sight, computed when asked for; no rows without data.
  [[nodiscard]] virtual TRangeTable VisibleStatistics() const { return {}; }
  // Follows a change of the program's date format.
  virtual void RefreshLabels() { QueueReplot(); }
  // The dots of single samples, where these stand apart.
  void SetPointsVisible(bool visible);

  [[nodiscard]] TChartRange& Range() { return FRange; }
  [[nodiscard]] const TChartRange& Range() const { return FRange; }
  [[nodiscard]] TChartMarks& Marks() { return FMarks; }
  [[nodiscard]] const TChartCursors& Cursors() const { return FCursors; }
  [[nodiscard]] TChartGestures& Gestures() { return FGestures; }

 signals:
  // The user zoomed or panned.
  void TimeRangeChanged(double from, double to);
  // The user asked for everything to be seen again.
  void ZoomReset();
  // Time and value under the pointer in words, or what the user should know; empty when the pointer leaves.
  void CursorValueChanged(const QString& text);
  // The user moved the indicator.
  void IndicatorMoved(double time);
  // The user asked for a context menu, in coordinates of the screen; never in the midst of a drag.
  void MenuRequested(const QPoint& at);
  void StatisticsRequested();

 protected:
  // Left button, less than a drag.
  virtual void Clicked(const QPointF& position) = 0;
  // The last click was the first of a double-click.
  virtual void Unclicked() {}
  // The value axes back to the range of the data.
  virtual void ScaleValues() = 0;
  // In the program's date format, with as many decimals as the view tells apart.
  [[nodiscard]] QString MomentText(double time) const override;
  // What the indicator would say.
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;

  // Other data of this span, which is shown; without one the chart is empty.
  void SetFullRange(std::optional<std::pair<double, double>> range);
  [[nodiscard]] bool PointsVisible() const { return FPointsVisible; }

  void PaintOver(QPainter& painter) const override { FGestures.PaintSpan(painter); }

 private:
  TChartRange FRange;
  TChartMarks FMarks;
  TChartCursors FCursors;
  TChartGestures FGestures;
  bool FPointsVisible = false;
};
