// All events of a mission: one point an event at its start, as high as its peak acceleration. Main thread only.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "gui/charts/uEventDots.h"
#include "gui/charts/uSeries.h"
#include "gui/charts/uTimeChart.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

class TEventsChart final : public TTimeChart {
  Q_OBJECT

 public:
  explicit TEventsChart(QWidget* parent = nullptr);

  // Copies what it shows, 17 bytes an event; nothing of the model is kept. Shows the full range, nothing selected.
  void SetEvents(const TEventList& events, const TMissionData& mission, const TAxesPresent& axes = {true, true, true});
  void Clear() override;
  // Of the events that the filter lets through.
  [[nodiscard]] TRangeTable VisibleStatistics() const override;
  // Events that this mask, by index, does not mark are drawn faintly and answer to no click; an empty mask marks all.
  void SetVisibleEvents(std::vector<bool> visible);
  // By the event's index in the list. An event without a place in time has no marker.
  void SetSelectedEvent(std::optional<std::size_t> index);
  void SetHoveredEvent(std::optional<std::size_t> index);

  // Points that would overlap become a bigger one, drawn at the largest of them, that says how many it holds; on at
  // first. Else every event has a point of its own.
  void SetPointAbsorption(bool on);
  void SetColour(TSeries series, const QColor& colour);
  // Of the acceleration, in g: a line at the upper limit, and one at the size of the lower where that is another,
  // because peaks have no sign.
  void SetAlarmLimits(TAlarmLimits limits);
  void SetMasks(TValueMasks masks);
  void SetValueAxisLocked(bool locked) { LockAxis(ValueAxis(), locked); }

 signals:
  void EventClicked(std::size_t index);

 protected:
  void Clicked(const QPointF& position) override;
  void Unclicked() override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  [[nodiscard]] std::vector<TReading> ReadingsAt(double time) const override;
  [[nodiscard]] double CursorMoment(double time) const override;
  [[nodiscard]] std::vector<TReading> DifferencesBetween(double a, double b) const override;
  void ScaleValues() override;
  void Restyle() override;

 private:
  struct TMark {
    std::optional<std::size_t> place;
    bool selected;
  };

  // An event's place is that in the order of time.
  [[nodiscard]] std::optional<std::size_t> PlaceOf(std::optional<std::size_t> index) const;
  [[nodiscard]] std::optional<std::size_t> PlaceNear(const QPointF& position) const;
  // Of the event whose stem stands near a time.
  [[nodiscard]] std::optional<std::size_t> PlaceAt(double time) const;
  // The event that begins at exactly this time.
  [[nodiscard]] std::optional<std::size_t> PlaceOn(double time) const;
  [[nodiscard]] std::size_t IndexOf(std::size_t place) const { return FIndexes.empty() ? place : FIndexes[place]; }
  [[nodiscard]] bool IsVisibleEvent(std::size_t place) const { return FVisible.empty() || FVisible[IndexOf(place)]; }
  void SortByTime();
  // What stands at a place for a series, or for the events that the filter hides: g, NaN for nothing.
  static constexpr std::size_t kHidden = kSeriesCount;
  [[nodiscard]] float StemOf(std::size_t place, std::size_t series) const;
  void Measure();
  [[nodiscard]] QColor InkOf(TSeries series) const;
  [[nodiscard]] QString GText(double g) const;
  void PaintEvents(QCPPainter& painter);
  void PaintLevels(QCPPainter& painter) const;
  void PaintStems(QCPPainter& painter, std::size_t series, const QColor& ink);
  void PaintDots(QCPPainter& painter);
  void PaintMark(QCPPainter& painter, const TMark& mark) const;

  // In the order of time.
  std::vector<double> FTimes;
  std::vector<float> FMax, FMaxSingle;  // g
  std::vector<std::uint8_t> FAxes;      // of the peak: 0 x, 1 y, 2 z, 3 none
  std::vector<std::uint32_t> FIndexes;  // in the list; empty while every place is its index
  std::vector<bool> FVisible;           // by index in the list; empty while all are
  float FLargest = 0;                   // g, of all finite peaks
  std::optional<float> FTrigger;        // g
  TAlarmLimits FAlarm;                  // g
  TSeriesColours FColours = kAccelerationColours;
  TValueMasks FMasks;
  TEventDots FDots;
  std::array<TExtents, kSeriesCount + 1> FStems;
  std::optional<std::size_t> FSelected, FHovered;  // places
  std::optional<std::size_t> FBeforeClick;         // the selected place then
  std::vector<std::size_t> FPeaks;                 // of a replot, kept for its memory
};
