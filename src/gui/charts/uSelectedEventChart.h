// One event: acceleration over ms from its start, the levels, the time over them, the peak. Main thread only.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "analysis/uPinnedEvents.h"
#include "analysis/uShockMetrics.h"
#include "base/uTimeSpan.h"
#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uSeries.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

// The curves of the pinned events, placed beside those of another event.
struct TPinnedCurve {
  TPin pin;
  bool highPass = false;
  std::vector<TEventValue> filtered;  // while it is high-passed
  TInTimeOrder<TEventValue> samples;  // of one of both
  TSeriesExtents extents;
  double offset = 0;  // ms, added to a sample's time to get that of the axis
  TShift shift{};
};

class TPinnedCurves {
 public:
  // The visible ones. What was there already is kept, since it takes a walk over the samples.
  void Set(const TPins& pins, bool highPass);
  // Places them beside an event, whose start is at 0.
  void Align(const TEvent& shown, const TThresholds& levels, TAlignment alignment);
  [[nodiscard]] std::span<const TPinnedCurve> Curves() const { return FCurves; }
  // On the axis; nothing without a sample.
  [[nodiscard]] std::optional<TTimeSpan> Span() const;

 private:
  std::vector<TPinnedCurve> FCurves;
};

class TSelectedEventChart final : public TAccelerationChart {
  Q_OBJECT

 public:
  explicit TSelectedEventChart(QWidget* parent = nullptr);

  // Borrows the event's samples until Clear or the next call; an index past the list clears. Shows the whole event.
  void ShowEvent(const TEventList& events, std::size_t index, const TMissionData& mission);
  void Clear() override;
  // Shows the filtered curves of the event instead of the recorded ones, as many points as the filter gives. The peak
  // in the title and the shaded intervals stay those of the recorded samples.
  void SetHighPass(bool on);
  [[nodiscard]] QString ShownName() const override { return FHighPass ? tr("high-passed") : QString(); }
  // What is shown, in the order of time, until SamplesChanged or Clear; time 0 of the axis is at StartMs.
  [[nodiscard]] std::span<const TEventValue> Samples() const { return FSamples.Samples(); }
  [[nodiscard]] double StartMs() const { return FStart; }
  // The sample nearest to a time of the axis; there is one.
  [[nodiscard]] std::size_t NearestSample(double ms) const { return FSamples.Nearest(ms + FStart); }

 signals:
  void SamplesChanged();

 protected:
  [[nodiscard]] std::vector<TCurve> Curves() const override;
  // Of the sample that is read there.
  [[nodiscard]] QString MomentText(double time) const override;
  // A cursor stands on a sample.
  [[nodiscard]] double CursorMoment(double time) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  void ScaleValues() override;
  [[nodiscard]] bool ShowsChangeFrom(const TDisplaySettings& before) const override;
  void DisplayChanged() override;
  void PaintData(QCPPainter& painter) override;
  void PinsChanged() override;

 private:
  // Places the pinned events, and shows the whole of all unless the user zoomed.
  void PlacePins();
  // "pinned events aligned at the peak"; empty without a visible one.
  [[nodiscard]] QString PinsWords() const;
  void PaintPins(QCPPainter& painter);
  void ShowTitle();
  void ShowSamples();
  // The shades are the times of the total over the levels; without it nobody sees why they are there.
  [[nodiscard]] bool IsTotalFaint() const { return !FIntervals.empty() && !IsSeriesVisible(TSeries::Total); }
  void PaintSeries(QCPPainter& painter);
  void PaintLevels(QCPPainter& painter);
  void PaintPeak(QCPPainter& painter);

  const TEvent* FEvent = nullptr;
  double FMissionStart = 0;  // a date-time
  bool FHighPass = false;
  std::vector<TEventValue> FFiltered;
  TInTimeOrder<TEventValue> FSamples;
  TPinnedCurves FPinned;
  double FStart = 0;      // ms since the mission's start
  TTimeSpan FSpan{0, 1};  // of the recorded samples, ms from the start
  TThresholds FLevels{};
  TSeriesExtents FExtents;            // of the samples
  bool FClipped = false;              // the true peak is higher
  std::vector<TTimeSpan> FIntervals;  // ms from the start, over the levels
  std::optional<QPointF> FPeak;       // ms from the start, g
};
