#include "gui/charts/uAccelerationChart.h"

#include <utility>

#include "gui/common/uTheme.h"

void TAccelerationChart::SetSeriesVisible(TSeries series, bool visible) {
  bool& now = FVisible[Place(series)];
  if (now == visible) return;
  now = visible;
  SeriesChanged();
  Restyle();
}

void TAccelerationChart::SetColour(TSeries series, const QColor& colour) {
  const std::uint32_t rgb = colour.rgb() & RGB_MASK;
  if (std::exchange(FColours[Place(series)], rgb) != rgb) Restyle();
}

std::vector<TSeries> TAccelerationChart::VisibleSeries() const {
  std::vector<TSeries> visible;
  for (const TSeries series : kAllSeries) {
    if (IsSeriesVisible(series)) visible.push_back(series);
  }
  return visible;
}

QColor TAccelerationChart::InkOf(TSeries series) const {
  return InkOn(palette(), FColours[Place(series)]);
}

void TAccelerationChart::Restyle() {
  TTimeChart::Restyle();
  std::vector<TLegendEntry> entries;
  for (const TSeries series : kAllSeries) {
    entries.push_back({NameOf(series), InkOf(series), IsSeriesVisible(series), Dashes(Place(series))});
  }
  Legend().SetEntries(std::move(entries));
}

void TAccelerationChart::EntryClicked(std::size_t entry) {
  const TSeries series = kAllSeries[entry];
  SetSeriesVisible(series, !IsSeriesVisible(series));
  emit SeriesVisibleChanged(series, IsSeriesVisible(series));
}
