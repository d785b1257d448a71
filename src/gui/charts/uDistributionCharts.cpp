#include "gui/charts/uDistributionCharts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uCountChart.h"
#include "gui/charts/uExceedanceChart.h"

namespace {

constexpr std::size_t kHistogramSteps = 30;

}  // namespace

void ShowDistribution(const TEventQuantity& quantity, std::span<const double> values, const QString& reference,
                      const TDistribution& there, TCountChart& histogram, TExceedanceChart& exceedance) {
  const bool isAny = std::ranges::any_of(values, [](double value) { return std::isfinite(value); });
  const TDistribution beside = isAny ? there : TDistribution();
  const QString name = beside.empty() ? QString() : reference;
  const TRoundHistogram steps = HistogramInRoundSteps(values, kHistogramSteps, beside);
  const QString unit = quantity.unit;
  std::vector<TCountBar> bars;
  for (std::size_t i = 0; i < steps.counts.size(); ++i) {
    const double from = steps.first + static_cast<double>(i) * steps.step;
    const double to = from + steps.step;
    bars.push_back({from, to, steps.counts[i], QObject::tr("%1 to %2 %3").arg(Digits(from), Digits(to), unit),
                    steps.referenceCounts[i]});
  }
  const QString title = QObject::tr(quantity.name);
  histogram.SetBars(std::move(bars), QObject::tr("%1 (%2)").arg(title, unit), name);
  exceedance.SetValues(TExceedance(values), title, unit, {name, TExceedance::Of(beside)});
}
