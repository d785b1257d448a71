#include "gui/charts/uChartDisplay.h"

#include <map>
#include <string>
#include <utility>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"

namespace {

TAlarmLimits AccelerationLimits(const TDisplaySettings& display) {
  return display.alarmActive ? TAlarmLimits(display.LimitsOf(TQuantity::Acceleration)) : std::nullopt;
}

TValueMasks MasksOf(const TDisplaySettings& display) {
  return {std::string(display.FormatOf(TQuantity::Time)), std::string(display.FormatOf(TQuantity::Acceleration))};
}

template <class TChart>
void ApplySeriesColours(const TDisplaySettings& display, TChart& chart) {
  for (std::size_t i = 0; i < kSeriesCount; ++i) chart.SetColour(kAllSeries[i], QColor(display.accelerationColours[i]));
}

}  // namespace

void ApplyDisplay(const TDisplaySettings& display, TEventsChart& chart) {
  ApplySeriesColours(display, chart);
  chart.SetAlarmLimits(AccelerationLimits(display));
  chart.SetPointAbsorption(display.pointAbsorption);
  chart.SetMasks(MasksOf(display));
}

void ApplyColours(const TDisplaySettings& display, TAccelerationChart& chart) {
  ApplySeriesColours(display, chart);
}

void ApplyDisplay(const TDisplaySettings& display, TSelectedEventChart& chart) {
  ApplySeriesColours(display, chart);
  chart.SetAlarmLimits(AccelerationLimits(display));
  chart.SetMasks(MasksOf(display));
}

void ApplyDisplay(const TDisplaySettings& display, TSensorsChart& chart) {
  std::map<std::string, TLimits> limits;
  for (std::size_t i = 0; i < kColouredSensors.size(); ++i) {
    const TQuantityRow& row = *kColouredSensors[i];
    chart.SetSensorColour(row.sensorName, QColor(display.sensorColours[i]));
    if (display.alarmActive && row.quantity) limits.emplace(row.sensorName, display.LimitsOf(*row.quantity));
  }
  chart.SetAlarmLimits(std::move(limits));
  std::array<std::string, kQuantityCount> masks;
  for (std::size_t i = 0; i < masks.size(); ++i) masks[i] = display.FormatOf(static_cast<TQuantity>(i));
  chart.SetMasks(std::move(masks));
  for (std::size_t i = 0; i < kSensorAxisCount; ++i) {
    chart.SetAxisColour(static_cast<TSensorAxis>(i), QColor(display.axisColours[i]));
  }
  std::map<std::string, std::string> names;
  for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
    names.emplace(kAnalogInputs[i]->sensorName, display.analogNames[i]);
  }
  chart.SetSensorNames(std::move(names));
}
