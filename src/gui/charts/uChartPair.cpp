#include "gui/charts/uChartPair.h"

#include "gui/charts/uTimeChart.h"

namespace {

void SharePointer(TTimeChart& from, TTimeChart& to) {
  QObject::connect(&from, &TChartPlot::PointerMoved, &to,
                   [&to](std::optional<double> time) { to.Marks().SetShared(time); });
}

}  // namespace

void PairCharts(TTimeChart& upper, TTimeChart& lower) {
  // Dates need no title, and the charts need the height.
  for (TTimeChart* chart : {&upper, &lower}) chart->SetTimeTitle({});
  SharePointer(upper, lower);
  SharePointer(lower, upper);
  for (TTimeChart* chart : {&upper, &lower}) {
    QObject::connect(chart, &TChartPlot::NeededMarginsChanged, &upper, [&] { AlignMargins(upper, lower); });
    QObject::connect(chart, &QCustomPlot::beforeReplot, &upper, [&] {
      upper.SetTimeLabelsVisible(!lower.HasData() || upper.Range().Times() != lower.Range().Times());
    });
  }
}
