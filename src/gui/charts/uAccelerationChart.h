// The base of the charts of one event: the four acceleration series, of which the user shows what the legend lists, and
// the pinned events beside it, each with all visible series in its own colour and dashes.
#pragma once

#include <array>
#include <vector>

#include "analysis/uPinnedEvents.h"
#include "gui/charts/uSeries.h"
#include "gui/charts/uTimeChart.h"

class TAccelerationChart : public TTimeChart {
  Q_OBJECT

 public:
  using TTimeChart::TTimeChart;

  // All of these stay from event to event. The axes are visible at first, the total is not.
  void SetSeriesVisible(TSeries series, bool visible);
  [[nodiscard]] bool IsSeriesVisible(TSeries series) const { return FVisible[Place(series)]; }
  // What is shown of the event, "spectrum", for captions and file names; empty for what was recorded.
  [[nodiscard]] virtual QString ShownName() const { return {}; }
  // They stay from event to event.
  void SetPins(const TPins& pins);
  void SetValueAxisLocked(bool locked) { Range().LockAxis(ValueAxis(), locked); }

 signals:
  // The user showed or hid a series in the legend.
  void SeriesVisibleChanged(TSeries series, bool visible);
  void PinVisibleChanged(std::size_t slot, bool visible);

 protected:
  void EntryClicked(std::size_t entry) override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  // What is said of a pinned event behind its name.
  [[nodiscard]] virtual QString PinWords(std::size_t /*pin*/) const { return {}; }
  // Other series are visible.
  virtual void SeriesChanged() { Range().RescaleValues(); }

  // Other events are pinned or visible, or they are aligned otherwise.
  virtual void PinsChanged() = 0;
  [[nodiscard]] const TPins& Pins() const { return FPins; }
  [[nodiscard]] QPen PenOf(const TPin& pin) const;
  // "12 (drop) X"
  [[nodiscard]] static QString CurveName(const TPin& pin, TSeries series);

  [[nodiscard]] std::vector<TSeries> VisibleSeries() const;
  [[nodiscard]] QColor InkOf(TSeries series) const;

 private:
  std::array<bool, kSeriesCount> FVisible = {true, true, true, false};
  TPins FPins;
};
