// The whole recording at a glance, and what of it the other charts show. Its bands are children with the names
// NavigatorBand, NavigatorBandLeft, NavigatorBandRight and NavigatorBandUnSyncedView. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/uExtents.h"
#include "gui/charts/uBandGestures.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSensorLooks.h"
#include "gui/charts/uTimeChart.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"

class TNavigatorChart final : public TTimeChart {
  Q_OBJECT

 public:
  explicit TNavigatorChart(QWidget* parent = nullptr);

  // From the first to the last time of an event or a reading, both by the events' StartTime. Borrows the readings of
  // the first sensor that has any until Clear or the next call. The bands are hidden.
  void SetMission(const TEventList& events, const TSensorList& sensors);
  void Clear() override;

  // The ticks of events that this mask, by index, does not mark are faint; an empty mask marks all.
  void SetVisibleEvents(const std::vector<bool>& visible);

  // From the first to the last time; nothing without a point.
  [[nodiscard]] std::optional<TTimeSpan> DataSpan() const;
  // The span that the charts show, in date-times.
  void SetBand(const TTimeSpan& band);
  // Shades what lies before and after the band.
  void SetCompanions(const TTimeSpan& band);
  // The span of a chart with a zoom of its own, if there is one.
  void SetUnsyncedView(const std::optional<TTimeSpan>& view);

  [[nodiscard]] QSize sizeHint() const override { return {400, 90}; }

 signals:
  // The user moves the band with its width kept, or changes its width; date-times, kept within the data and at least
  // MinSpan apart. The band itself stays until SetBand.
  void BandDragging(const TTimeSpan& band);
  void BandResizing(const TTimeSpan& band);

 protected:
  void EntryClicked(std::size_t entry) override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  void ScaleValues() override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;

 private:
  void TakeEvents(const TEventList& events, std::optional<TTimeSpan>& span);
  void TakeSensors(const TSensorList& sensors, std::optional<TTimeSpan>& span);
  [[nodiscard]] TSensorLook Look() const { return LookOf(FSensor, Display()); }
  // The curve's name and unit.
  [[nodiscard]] QString Caption() const;
  [[nodiscard]] QColor CurveInk() const;
  void PaintOverview(QCPPainter& painter);
  void PaintEventTicks(QCPPainter& painter) const;
  void PaintBand(QCPPainter& painter) const;

  struct TEventTick {
    double time;          // a date-time
    float peak;           // g
    std::uint32_t index;  // in the list
  };
  std::vector<TEventTick> FEvents;            // in the order of time
  std::vector<std::uint32_t> FVisibleBefore;  // by place and one more; empty: all are visible
  TInTimeOrder<TSensorValue> FReadings;       // of the sensor that is drawn
  TExtents FExtents;                          // of the readings, without one of the peaks
  double FStart = 0;                          // the mission's, a date-time
  double FGap = 0;                            // ms between readings that has no line
  std::string FSensor;                        // its name in the list
  bool FCurveVisible = true;
  bool FTicksVisible = true;
  TNavigatorBand* FBand;           // what the charts show
  TNavigatorBand *FLeft, *FRight;  // what lies before and after it
  TNavigatorBand* FUnsyncedView;   // what a chart with a zoom of its own shows
  TBandGestures FGestures;
};
