// Which part of the events exceeds a value of a quantity, on a logarithmic axis. Main thread only.
#pragma once

#include <span>
#include <string>

#include "analysis/uEventQuantities.h"
#include "analysis/uShockStatistics.h"
#include "gui/charts/uAnalysisChart.h"

class TCountChart;

struct TReferenceCurve {
  QString name = {};
  TExceedance values{{}};
};

class TExceedanceChart final : public TAnalysisChart {
  Q_OBJECT

 public:
  TExceedanceChart(const QString& name, const QString& title, QWidget* parent);

  void Clear() override { SetValues(TExceedance({}), {}, {}); }
  // `reference` is drawn beside the values unless it has no name.
  void SetValues(TExceedance values, const QString& quantity, const QString& unit, TReferenceCurve reference = {});

  [[nodiscard]] TDataset Table() const override;
  [[nodiscard]] TRangeTable VisibleStatistics() const override;

 protected:
  void ScaleValues() override;
  void PaintData(QCPPainter& painter) override;
  [[nodiscard]] std::vector<TLegendEntry> LegendEntries() const override;
  [[nodiscard]] QString MomentText(double value) const override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;

 private:
  // % of the events.
  [[nodiscard]] double ExceededBy(std::size_t value) const { return 100 * FValues.ExceededPart(value); }
  [[nodiscard]] QPointF PlaceOf(const TExceedance& of, std::size_t value) const;
  [[nodiscard]] bool HasReference() const { return !FReference.name.isEmpty(); }
  // "P50 6.5", beside a reference with the difference.
  [[nodiscard]] QString PercentileText(int percentile) const;
  // The last value that is drawn at or left of a position, else the first.
  [[nodiscard]] std::size_t ValueAt(double x) const;

  TExceedance FValues{{}};
  TReferenceCurve FReference;
  QString FQuantity, FUnit;
};

// How a quantity is distributed over events, in both of its charts. `values` are those of the events, NaN where one has
// none. `there` is that of the reference of that name; it is left out where one of both is empty.
void ShowDistribution(const TEventQuantity& quantity, std::span<const double> values, const QString& reference,
                      const TDistribution& there, TCountChart& histogram, TExceedanceChart& exceedance);
