// The base of the charts of one event: the four acceleration series, of which the user shows what the legend lists.
#pragma once

#include <array>
#include <vector>

#include "gui/charts/uSeries.h"
#include "gui/charts/uTimeChart.h"

class TAccelerationChart : public TTimeChart {
  Q_OBJECT

 public:
  using TTimeChart::TTimeChart;

  // All of these stay from event to event. The axes are visible at first, the total is not.
  void SetSeriesVisible(TSeries series, bool visible);
  [[nodiscard]] bool IsSeriesVisible(TSeries series) const { return FVisible[Place(series)]; }
  void SetColour(TSeries series, const QColor& colour);
  // What is shown of the event, "spectrum", for captions and file names; empty for what was recorded.
  [[nodiscard]] virtual QString ShownName() const { return {}; }
  void SetValueAxisLocked(bool locked) { Range().LockAxis(ValueAxis(), locked); }

 signals:
  // The user showed or hid a series in the legend.
  void SeriesVisibleChanged(TSeries series, bool visible);

 protected:
  void Clicked(const QPointF& position) override;
  void Restyle() override;
  // Other series are visible.
  virtual void SeriesChanged() { Range().RescaleValues(); }

  [[nodiscard]] std::vector<TSeries> VisibleSeries() const;
  [[nodiscard]] QColor InkOf(TSeries series) const;

 private:
  TSeriesColours FColours = DefaultSettings().display.accelerationColours;
  std::array<bool, kSeriesCount> FVisible = {true, true, true, false};
};
