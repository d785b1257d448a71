// All events of a mission: one point an event at its start, as high as its peak acceleration. A series has its stems
// and the points of its events: those that peak on that axis, or for the total on none. An event of which neither stem
// nor point is visible answers to no click. Main thread only.
#pragma once

#include <optional>
#include <vector>

#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uEventDots.h"
#include "gui/charts/uEventsInTime.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

class TEventsChart final : public TSeriesChart {
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

 signals:
  void EventClicked(std::size_t index);

 protected:
  void Clicked(const QPointF& position) override;
  void Unclicked() override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  [[nodiscard]] std::vector<TReading> ReadingsAt(double time) const override;
  [[nodiscard]] std::vector<TReading> ReadingsUnder(const QPointF& pointer) const override;
  [[nodiscard]] double CursorMoment(double time) const override;
  [[nodiscard]] std::vector<TReading> DifferencesBetween(double a, double b) const override;
  void ScaleValues() override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;

 private:
  // What is under a position: one event, or several that share a point, of which that with the largest total stands for
  // all.
  struct THit {
    std::size_t place;
    std::size_t count = 1;
    double min = 0, max = 0;  // of the totals of several, g
  };
  struct TLevel {
    double g;
    QString name;
    QColor ink;
  };
  // The trigger and the alarm: its upper limit, and the size of the lower where that is another, because peaks have no
  // sign.
  [[nodiscard]] std::vector<TLevel> Levels() const;
  // Hover, status bar and click all ask this.
  [[nodiscard]] std::optional<THit> HitAt(const QPointF& position) const;
  [[nodiscard]] QString WordsOf(const THit& hit) const;
  [[nodiscard]] std::vector<TReading> ReadingsOf(const THit& hit) const;
  [[nodiscard]] std::optional<std::size_t> PlaceNear(const QPointF& position) const;
  // Of the event whose stem stands near a time.
  [[nodiscard]] std::optional<std::size_t> PlaceAt(double time) const;
  [[nodiscard]] QString Number(double g) const;
  [[nodiscard]] QString GText(double g) const;
  void PaintStems(QCPPainter& painter, std::size_t series, const QColor& ink);
  void PaintDots(QCPPainter& painter);
  void PaintMark(QCPPainter& painter, std::optional<std::size_t> place, bool selected) const;

  TEventsInTime FEvents;
  std::optional<float> FTrigger;  // g
  TEventDots FDots;
  std::optional<std::size_t> FSelected, FHovered;  // places
  std::optional<std::size_t> FBeforeClick;         // what was selected before the last click
};
