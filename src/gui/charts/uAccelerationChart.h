// The bases of the charts of acceleration: of those with its four series, and of those of one event.
#pragma once

#include <array>
#include <vector>

#include "analysis/uPinnedEvents.h"
#include "gui/charts/uSeries.h"
#include "gui/charts/uTimeChart.h"

// The user shows those series that the legend lists.
class TSeriesChart : public TTimeChart {
  Q_OBJECT

 public:
  // The axes are visible at first.
  TSeriesChart(TAxisUnit unit, bool showsTotal, QWidget* parent)
      : TTimeChart(unit, parent), FVisible{true, true, true, showsTotal} {}

  void SetSeriesVisible(TSeries series, bool visible);
  [[nodiscard]] bool IsSeriesVisible(TSeries series) const { return FVisible[Place(series)]; }
  void SetValueAxisLocked(bool locked) { Range().LockAxis(ValueAxis(), locked); }

 signals:
  // The user showed or hid a series in the legend.
  void SeriesVisibleChanged(TSeries series, bool visible);

 protected:
  void EntryClicked(std::size_t entry) override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  // Other series are visible.
  virtual void SeriesChanged() {}
  [[nodiscard]] QColor InkOf(TSeries series) const;

 private:
  std::array<bool, kSeriesCount> FVisible;
};

// With pinned events beside the shown one, each with all visible series in its own colour and dashes.
class TAccelerationChart : public TSeriesChart {
  Q_OBJECT

 public:
  TAccelerationChart(TAxisUnit unit, QWidget* parent) : TSeriesChart(unit, false, parent) {}

  // What is shown of the event, "spectrum", for captions and file names; empty for what was recorded.
  [[nodiscard]] virtual QString ShownName() const { return {}; }
  // They stay from event to event.
  void SetPins(const TPins& pins);

 signals:
  void PinVisibleChanged(std::size_t slot, bool visible);

 protected:
  void EntryClicked(std::size_t entry) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  // What is said of a pinned event behind its name.
  [[nodiscard]] virtual QString PinWords(std::size_t /*pin*/) const { return {}; }
  void SeriesChanged() override { Range().RescaleValues(); }

  // Other events are pinned or visible, or they are aligned otherwise.
  virtual void PinsChanged() = 0;
  [[nodiscard]] const TPins& Pins() const { return FPins; }
  [[nodiscard]] QPen PenOf(const TPin& pin) const;
  // "12 (drop) X"
  [[nodiscard]] static QString CurveName(const TPin& pin, TSeries series);

  [[nodiscard]] std::vector<TSeries> VisibleSeries() const;

 private:
  TPins FPins;
};
