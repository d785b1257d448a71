// One event: acceleration over ms from its start, the levels, the time over them, the peak. Main thread only.
#pragma once

#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "analysis/uShockMetrics.h"
#include "gui/charts/uInTimeOrder.h"
#include "gui/charts/uTimeChart.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"

enum class TSeries { X, Y, Z, Total };
inline constexpr std::size_t kSeriesCount = 4;

class TSelectedEventChart final : public TTimeChart {
  Q_OBJECT

 public:
  explicit TSelectedEventChart(QWidget* parent = nullptr);

  // Borrows the event's samples until Clear or the next call; an index past the list clears. Shows the whole event.
  void ShowEvent(const TEventList& events, std::size_t index, const TMissionData& mission);
  void Clear() override;
  // The axes are visible at first, the total is not. Stays from event to event.
  void SetSeriesVisible(TSeries series, bool visible);
  [[nodiscard]] bool IsSeriesVisible(TSeries series) const { return FVisible[static_cast<std::size_t>(series)]; }

 signals:
  // The user showed or hid a series in the legend.
  void SeriesVisibleChanged(TSeries series, bool visible);

 protected:
  void Clicked(const QPointF& position) override;
  [[nodiscard]] QString CursorText(const QPointF& position) const override;
  void ScaleValues() override;
  void Restyle() override;

 private:
  struct TPeak {
    double ms;    // from the start
    float value;  // g, signed
  };

  // g of one sample; the total is the vector magnitude.
  static float ValueOf(const TEventValue& sample, TSeries series);
  void Measure();
  void FindPeak(const TEvent& event);
  void FindIntervals(const TEvent& event);
  [[nodiscard]] QColor InkOf(std::size_t series) const;
  void PaintIntervals(QCPPainter& painter) const;
  void PaintSeries(QCPPainter& painter);
  void PaintLevels(QCPPainter& painter) const;
  void PaintPeak(QCPPainter& painter) const;

  TInTimeOrder<TEventValue> FSamples;
  double FStart = 0;  // ms since the mission's start
  TThresholds FLevels{};
  std::array<bool, kSeriesCount> FVisible = {true, true, true, false};
  std::array<std::pair<float, float>, kSeriesCount> FExtent{};  // g, least and largest of the finite values
  std::vector<std::pair<double, double>> FIntervals;            // ms from the start, over the levels
  std::optional<TPeak> FPeak;
  std::vector<TEnvelopePoint> FEnvelope;  // of a replot, kept for its memory
};
