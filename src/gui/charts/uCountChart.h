// How many events fall into each step of a quantity, or have each of some names: a bar each. Main thread only.
#pragma once

#include <cstddef>
#include <vector>

#include "gui/charts/uAnalysisChart.h"

struct TCountBar {
  double from, to;  // along the axis of the bars, in its unit
  std::size_t count;
  QString name;  // of what is counted
};

class TCountChart final : public TAnalysisChart {
  Q_OBJECT

 public:
  enum class TBars {
    Steps,  // upwards, side by side along a quantity; the table has both ends of each
    Days,   // the same for days; the table has their names
    Hours,  // the same from 0 to 24
    // From left to right below each other, the first on top; `from` and `to` are not used. Those that have no room
    // become one bar at the bottom; the table has all.
    Names,
  };
  TCountChart(TBars bars, const QString& name, const QString& title, QWidget* parent);

  void Clear() override { SetBars({}, {}); }
  // `quantity` names the axis and the table's column; an empty one leaves the chart's title there.
  void SetBars(std::vector<TCountBar> bars, const QString& quantity);

  [[nodiscard]] const std::vector<TCountBar>& Bars() const { return FBars; }
  [[nodiscard]] TDataset Table() const override;
  [[nodiscard]] TRangeTable VisibleStatistics() const override;

 protected:
  void ScaleValues() override;
  void Restyle() override;
  void Prepare() override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;

 private:
  [[nodiscard]] static TAxisUnit UnitOf(TBars bars);
  [[nodiscard]] static double MaxCount(const std::vector<TCountBar>& bars);
  [[nodiscard]] QRectF RectOf(std::size_t bar) const;
  void Paint(QCPPainter& painter);

  TBars FKind;
  QString FTitle, FQuantity;
  std::vector<TCountBar> FBars;
  std::vector<TCountBar> FDrawn;
};
