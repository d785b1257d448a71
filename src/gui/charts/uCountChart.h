// How many events fall into each step of a quantity, or have each of some names: a bar each. Beside a reference both
// are in % of their events, and the reference is an outline. Main thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "gui/charts/uAnalysisChart.h"

struct TCountBar {
  double from, to;  // along the axis of the bars, in its unit
  std::size_t count;
  QString name;  // of what is counted
  std::size_t reference = 0;
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
  // `quantity` names the axis and the table's column; an empty one leaves the chart's title there. `reference` names
  // what the bars count as reference; empty: nothing.
  void SetBars(std::vector<TCountBar> bars, const QString& quantity, const QString& reference = {});
  // A line across the bars at a number of events. It stays when the bars change.
  void SetLevel(std::optional<double> events, const QString& name);

  [[nodiscard]] const std::vector<TCountBar>& Bars() const { return FBars; }
  [[nodiscard]] TDataset Table() const override;
  [[nodiscard]] TRangeTable VisibleStatistics() const override;

 protected:
  void ScaleValues() override;
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  void Restyle() override;
  void Prepare() override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;

 private:
  [[nodiscard]] static TAxisUnit UnitOf(TBars bars);
  // Along the axis of the counts: events, or % of them beside a reference.
  [[nodiscard]] double Length(const TCountBar& bar) const;
  [[nodiscard]] double ReferenceLength(const TCountBar& bar) const;
  [[nodiscard]] double MaxLength(const std::vector<TCountBar>& bars) const;
  [[nodiscard]] QRectF RectOf(std::size_t bar, double length) const;
  [[nodiscard]] QCPAxis& CountAxis() const;
  void TitleCounts();
  void PaintReference(QCPPainter& painter, const QColor& ink);

  TBars FKind;
  QString FTitle, FQuantity;
  QString FReference;                        // empty: none
  double FEvents = 0, FReferenceEvents = 0;  // of all bars
  std::optional<double> FLevel;
  QString FLevelName;
  std::vector<TCountBar> FBars;
  std::vector<TCountBar> FDrawn;
};
