// Events by velocity change and peak, with the damage boundary of a product. Main thread only.
#pragma once

#include <optional>
#include <vector>

#include "analysis/uDamageBoundary.h"
#include "gui/charts/uAnalysisChart.h"
#include "gui/charts/uEventDots.h"

struct TDamageEvent {
  std::size_t event;  // its index in the list
  double time;        // date-time of its begin
  TDamagePoint point;
};

class TDamageChart final : public TAnalysisChart {
  Q_OBJECT

 public:
  explicit TDamageChart(QWidget* parent);

  void Clear() override;
  // Events with a pulse; `placeholder` is shown when there are none.
  void SetEvents(std::vector<TDamageEvent> events, const QString& placeholder);
  // Without limits there is no boundary.
  void SetLimits(const std::optional<TFragility>& limits);
  // An event that is not drawn is not marked.
  void SetSelectedEvent(std::optional<std::size_t> event);

  [[nodiscard]] const std::vector<TDamageEvent>& Events() const { return FEvents; }
  [[nodiscard]] TDataset Table() const override;
  [[nodiscard]] TRangeTable VisibleStatistics() const override;

 signals:
  void EventClicked(std::size_t event);

 protected:
  void Clicked(const QPointF& position) override;
  void ScaleValues() override;
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  // m/s.
  [[nodiscard]] QString MomentText(double velocityChange) const override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;

 private:
  [[nodiscard]] bool IsBeyond(const TDamageEvent& event) const { return FLimits && IsDamaging(event.point, *FLimits); }
  [[nodiscard]] QPointF PlaceOf(const TDamageEvent& event) const;
  // The nearest event within reach.
  [[nodiscard]] const TDamageEvent* EventAt(const QPointF& position) const;
  [[nodiscard]] QColor InkOf(bool beyond) const;
  void ShowAll();
  void PaintBoundary(QCPPainter& painter);
  void PaintEvents(QCPPainter& painter);
  void PaintSelected(QCPPainter& painter) const;

  std::vector<TDamageEvent> FEvents;
  std::optional<TFragility> FLimits;
  std::optional<std::size_t> FSelected;
  TEventDots FDots;
};
