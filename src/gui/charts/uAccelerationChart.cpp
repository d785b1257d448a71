#include "gui/charts/uAccelerationChart.h"

#include <utility>

#include "gui/charts/uChartPaint.h"
#include "gui/charts/uPinLooks.h"
#include "gui/common/uTheme.h"

void TSeriesChart::SetSeriesVisible(TSeries series, bool visible) {
  if (std::exchange(FVisible[Place(series)], visible) == visible) return;
  SeriesChanged();
  Restyle();
}

bool TSeriesChart::ShowsChangeFrom(const TDisplaySettings& before) const {
  return TTimeChart::ShowsChangeFrom(before) || Differ(before, Display(), &TDisplaySettings::accelerationColours);
}

void TSeriesChart::EntryClicked(std::size_t entry) {
  const TSeries series = kAllSeries[entry];
  SetSeriesVisible(series, !IsSeriesVisible(series));
  emit SeriesVisibleChanged(series, IsSeriesVisible(series));
}

QColor TSeriesChart::InkOf(TSeries series) const {
  return InkOn(palette(), Display().accelerationColours[Place(series)]);
}

std::vector<TSeries> TAccelerationChart::VisibleSeries() const {
  std::vector<TSeries> visible;
  for (const TSeries series : kAllSeries) {
    if (IsSeriesVisible(series)) visible.push_back(series);
  }
  return visible;
}

std::vector<TLegendEntry> TAccelerationChart::LegendEntries() const {
  std::vector<TLegendEntry> entries;
  for (const TSeries series : kAllSeries) {
    entries.push_back({NameOf(series), InkOf(series), IsSeriesVisible(series), Dashes(Place(series))});
  }
  for (std::size_t i = 0; i < FPins.items.size(); ++i) {
    const TPin& pin = FPins.items[i];
    entries.push_back({PinTitle(pin) + PinWords(i), PinInk(palette(), pin.slot), pin.visible, PinDashes(pin.slot)});
  }
  return entries;
}

void TAccelerationChart::SetPins(const TPins& pins) {
  FPins = pins;
  PinsChanged();
  Restyle();
}

QPen TAccelerationChart::PenOf(const TPin& pin) const {
  return DashedPen(PinInk(palette(), pin.slot), kCurveWidth, PinDashes(pin.slot));
}

QString TAccelerationChart::CurveName(const TPin& pin, TSeries series) {
  return QString("%1 %2").arg(PinTitle(pin), NameOf(series));
}

void TAccelerationChart::EntryClicked(std::size_t entry) {
  if (entry < kSeriesCount) return TSeriesChart::EntryClicked(entry);
  const TPin& pin = FPins.items[entry - kSeriesCount];
  emit PinVisibleChanged(pin.slot, !pin.visible);
}
