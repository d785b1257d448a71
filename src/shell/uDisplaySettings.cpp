#include "shell/uDisplaySettings.h"

#include <cmath>

#include "shell/uColourNames.h"
#include "shell/uMainScreen.h"
#include "shell/uSettingsSchema.h"

namespace {

// By TQuantity.
constexpr std::array<std::string_view, kQuantityCount> kFormatControls = {
    "cmbSettingsAccDec",  "cmbSettingsTempDec", "cmbSettingsPresDec", "cmbSettingsRHDec", "cmbSettingsLiDec",
    "cmbSettingsBatDec",  "cmbSettingsA1Dec",   "cmbSettingsA2Dec",   "cmbSettingsA3Dec", "cmbSettingsA4Dec",
    "cmbSettingsTimeDec", "cmbSettingsDBCDec",  "cmbSettingsIntDec"};
struct TLimitControls {
  std::string_view least;
  std::string_view largest;
};
constexpr std::array<TLimitControls, kLimitedQuantityCount> kLimitControls = {{
    {"dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"},
    {"dxBarSpinAlarmTempMin", "dxBarSpinAlarmTempMax"},
    {"dxBarSpinAlarmPresMin", "dxBarSpinAlarmPresMax"},
    {"dxBarSpinAlarmRHMin", "dxBarSpinAlarmRHMax"},
    {"dxBarSpinAlarmLiMin", "dxBarSpinAlarmLiMax"},
    {"dxBarSpinAlarmBatMin", "dxBarSpinAlarmBatMax"},
    {"dxBarSpinAlarmA1Min", "dxBarSpinAlarmA1Max"},
    {"dxBarSpinAlarmA2Min", "dxBarSpinAlarmA2Max"},
    {"dxBarSpinAlarmA3Min", "dxBarSpinAlarmA3Max"},
    {"dxBarSpinAlarmA4Min", "dxBarSpinAlarmA4Max"},
}};
constexpr std::array<std::string_view, kAnalogInputs.size()> kNameControls = {"tedA1Name", "tedA2Name", "tedA3Name",
                                                                              "tedA4Name"};
constexpr std::array<std::string_view, 4> kAccelerationControls = {"ccmbShockX", "ccmbShockY", "ccmbShockZ",
                                                                   "ccmbShockTotal"};
constexpr std::array<std::string_view, 4> kAxisControls = {"clrgalSensorsLeftAxisI", "clrgalSensorsLeftAxisII",
                                                           "clrgalSensorsRightAxisI", "clrgalSensorsRightAxisII"};
constexpr std::array<std::string_view, kColouredSensors.size()> kSensorControls = {
    "ccmbSensorsTemp",     "ccmbSensorsTempP", "ccmbSensorsTempRH",  "ccmbSensorsRH",
    "ccmbSensorsPressure", "ccmbSensorsLight", "ccmbSensorsBattery", "ccmbSensorsA1",
    "ccmbSensorsA2",       "ccmbSensorsA3",    "ccmbSensorsA4"};

// A list without a choice counts as its first entry.
template <std::size_t N>
std::string_view Entry(const std::array<std::string_view, N>& entries, const TControlValue& index) {
  const auto at = static_cast<std::size_t>(std::get<int>(index));
  return at < N ? entries[at] : entries[0];
}

template <std::size_t N>
void ReadColours(const std::array<std::string_view, N>& controls, const IMainScreen& screen,
                 std::array<std::uint32_t, N>& colours) {
  for (std::size_t i = 0; i < N; ++i) {
    colours[i] = ColourFromText(std::get<std::string>(screen.Value(controls[i]))).value_or(0);
  }
}

}  // namespace

TDisplaySettings ReadDisplaySettings(const TMissionData& mission, const IMainScreen& screen) {
  TDisplaySettings settings;
  settings.DateFormat = Entry(kDateFormats, screen.Value("cmbSettingsDateTimeFormat"));
  for (std::size_t i = 0; i < kQuantityCount; ++i) {
    settings.Formats[i] = Entry(kDecimalMasks, screen.Value(kFormatControls[i]));
  }
  for (std::size_t i = 0; i < kLimitedQuantityCount; ++i) {
    settings.Limits[i] = {std::get<double>(screen.Value(kLimitControls[i].least)),
                          std::get<double>(screen.Value(kLimitControls[i].largest))};
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
    settings.AnalogNames[i] = std::get<std::string>(screen.Value(kNameControls[i]));
  }
  ReadColours(kAccelerationControls, screen, settings.AccelerationColours);
  ReadColours(kAxisControls, screen, settings.AxisColours);
  ReadColours(kSensorControls, screen, settings.SensorColours);
  return settings;
}
