// One event: acceleration over ms from its start, the levels, the time over them, the peak. Main thread only.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "analysis/uShockMetrics.h"
#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSeries.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

class TSelectedEventChart final : public TAccelerationChart {
  Q_OBJECT

 public:
  explicit TSelectedEventChart(QWidget* parent = nullptr);

  // Borrows the event's samples until Clear or the next call; an index past the list clears. Shows the whole event.
  void ShowEvent(const TEventList& events, std::size_t index, const TMissionData& mission);
  void Clear() override;
  // Of the visible series, as they are drawn.
  [[nodiscard]] TRangeTable VisibleStatistics() const override;
  void RefreshLabels() override;
  // Shows the filtered curves of the event instead of the recorded ones, as many points as the filter gives. The peak
  // in the title and the shaded intervals stay those of the recorded samples.
  void SetHighPass(bool on);
  // What is shown, in the order of time, until SamplesChanged or Clear; time 0 of the axis is at StartMs.
  [[nodiscard]] std::span<const TEventValue> Samples() const { return FSamples.Samples(); }
  [[nodiscard]] double StartMs() const { return FStart; }
  // The sample nearest to a time of the axis; there is one.
  [[nodiscard]] std::size_t NearestSample(double ms) const { return FSamples.Nearest(ms + FStart); }
  // g of one sample; the total is the vector magnitude.
  static float ValueOf(const TEventValue& sample, TSeries series) {
    switch (series) {
      case TSeries::X:
        return sample.xvalue;
      case TSeries::Y:
        return sample.yvalue;
      case TSeries::Z:
        return sample.zvalue;
      case TSeries::Total:
        break;
    }
    return static_cast<float>(Magnitude(sample));
  }

  // All of these stay from event to event.
  // Of the acceleration, in g, as lines.
  void SetAlarmLimits(TAlarmLimits limits);
  void SetMasks(TValueMasks masks);

 signals:
  void SamplesChanged();

 protected:
  [[nodiscard]] std::vector<TReading> ReadingsAt(double time) const override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;
  // Of the sample that is read there.
  [[nodiscard]] QString MomentText(double time) const override;
  // A cursor stands on a sample.
  [[nodiscard]] double CursorMoment(double time) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  [[nodiscard]] std::vector<TReading> DifferencesBetween(double a, double b) const override;
  void ScaleValues() override;

 private:
  struct TPeak {
    double ms;    // from the start
    float value;  // g, signed
  };

  void ShowTitle();
  void ShowSamples();
  void Measure();
  [[nodiscard]] TExtents& ExtentsOf(TSeries series) { return FExtents[static_cast<std::size_t>(series)]; }
  void FindPeak(const TEvent& event);
  void FindIntervals(const TEvent& event);
  [[nodiscard]] QPointF PlaceOf(const TEventValue& sample, TSeries series) const;
  // "X 1.25 g"
  [[nodiscard]] TReading ReadingOf(const TEventValue& sample, TSeries series) const;
  void PaintIntervals(QCPPainter& painter) const;
  void PaintSeries(QCPPainter& painter);
  void PaintLevels(QCPPainter& painter) const;
  void PaintPeak(QCPPainter& painter) const;

  const TEvent* FEvent = nullptr;
  double FMissionStart = 0;  // a date-time
  bool FHighPass = false;
  std::vector<TEventValue> FFiltered;
  TInTimeOrder<TEventValue> FSamples;
  double FStart = 0;  // ms since the mission's start
  TThresholds FLevels{};
  TAlarmLimits FAlarm;  // g
  TValueMasks FMasks;
  std::array<TExtents, kSeriesCount> FExtents;        // of the samples, in g
  std::array<TExtent, kSeriesCount> FWhole;           // of each series
  std::vector<std::pair<double, double>> FIntervals;  // ms from the start, over the levels
  std::optional<TPeak> FPeak;
  std::vector<TEnvelopePoint> FEnvelope;  // of a replot, kept for its memory
};
