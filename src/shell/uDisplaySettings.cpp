#include "shell/uDisplaySettings.h"

#include <cmath>

#include "shell/uColourNames.h"
#include "shell/uIControls.h"
#include "shell/uSettingsSchema.h"

namespace {

constexpr std::array<std::string_view, 4> kAccelerationControls = {"ccmbShockX", "ccmbShockY", "ccmbShockZ",
                                                                   "ccmbShockTotal"};
constexpr std::array<std::string_view, 4> kAxisControls = {"clrgalSensorsLeftAxisI", "clrgalSensorsLeftAxisII",
                                                           "clrgalSensorsRightAxisI", "clrgalSensorsRightAxisII"};
// A list without a choice counts as its first entry.
template <std::size_t N>
std::string_view Entry(const std::array<std::string_view, N>& entries, const TControlValue& index) {
  const auto at = static_cast<std::size_t>(std::get<int>(index));
  return at < N ? entries[at] : entries[0];
}

std::uint32_t ReadColour(std::string_view control, const IControls& screen) {
  return ColourFromText(std::get<std::string>(screen.Value(control))).value_or(0);
}

template <std::size_t N>
void ReadColours(const std::array<std::string_view, N>& controls, const IControls& screen,
                 std::array<std::uint32_t, N>& colours) {
  for (std::size_t i = 0; i < N; ++i) {
    colours[i] = ReadColour(controls[i], screen);
  }
}

}  // namespace

TDisplaySettings ReadDisplaySettings(const TMissionData& mission, const IControls& screen) {
  TDisplaySettings settings;
  settings.DateFormat = Entry(kDateFormats, screen.Value("cmbSettingsDateTimeFormat"));
  for (std::size_t i = 0; i < kQuantityCount; ++i) {
    settings.Formats[i] = Entry(kDecimalMasks, screen.Value(kQuantityControls[i].format));
  }
  for (std::size_t i = 0; i < kLimitedQuantityCount; ++i) {
    settings.Limits[i] = {std::get<double>(screen.Value(kQuantityControls[i].min)),
                          std::get<double>(screen.Value(kQuantityControls[i].max))};
  }
  const double level = mission.adxl_level_on;
  const bool wanted = mission.bValid && std::get<bool>(screen.Value("chboxLoadAccAlarmFromFile"));
  const bool usable = std::isfinite(level) && level > 0;
  settings.AccelerationFromFile = wanted && usable;
  settings.NoLevelInFile = wanted && !usable;
  if (settings.AccelerationFromFile) {
    settings.Limits[static_cast<std::size_t>(TQuantity::Acceleration)] = {-level, level};
  }
  settings.AlarmActive = std::get<bool>(screen.Value("barbtnlrgAlarm"));
  settings.Company = std::get<std::string>(screen.Value("cxTextEditCompanyName"));
  settings.PointAbsorption = std::get<bool>(screen.Value("chboxShockChartPointAbsorption"));
  for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
    settings.AnalogNames[i] = std::get<std::string>(screen.Value(kAnalogInputs[i]->nameControl));
  }
  ReadColours(kAccelerationControls, screen, settings.AccelerationColours);
  ReadColours(kAxisControls, screen, settings.AxisColours);
  for (std::size_t i = 0; i < kColouredSensors.size(); ++i) {
    settings.SensorColours[i] = ReadColour(kColouredSensors[i]->colourControl, screen);
  }
  return settings;
}
