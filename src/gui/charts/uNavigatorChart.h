// The whole recording at a glance, and what of it the other charts show. Main thread only.
#pragma once

#include <optional>
#include <utility>
#include <vector>

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
  // the first sensor that has any until Clear or the next call. The band goes.
  void SetMission(const TEventList& events, const TSensorList& sensors);
  void Clear() override;

  // The span that the charts show, a date-time each; what lies outside is shaded.
  void SetBand(double from, double to);
  // The span of a chart that has a zoom of its own, if one has.
  void SetUnsyncedView(std::optional<std::pair<double, double>> view);

  [[nodiscard]] QSize sizeHint() const override { return {400, 90}; }

 signals:
  // A date-time.
  void TimeClicked(double dateTime);

 protected:
  void Clicked(const QPointF& position) override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  void ScaleValues() override;

 private:
  using TSpan = std::pair<double, double>;

  void TakeEvents(const TEventList& events, std::optional<TSpan>& range);
  void TakeSensors(const TSensorList& sensors, std::optional<TSpan>& range);
  void PaintOverview(QCPPainter& painter);
  void PaintEventTicks(QCPPainter& painter);
  void PaintBand(QCPPainter& painter) const;

  struct TEventTick {
    double time;  // a date-time
    float peak;   // g
  };
  std::vector<TEventTick> FEvents;       // in the order of time
  TInTimeOrder<TSensorValue> FReadings;  // of the sensor that is drawn
  double FStart = 0;                     // the mission's, a date-time
  TSensorLook FLook;
  QString FWhat;  // what is drawn, and its unit
  std::optional<TSpan> FBand, FUnsynced;
  std::vector<TEnvelopePoint> FEnvelope;  // of a replot, kept for their memory
  std::vector<std::size_t> FTicks;
};
