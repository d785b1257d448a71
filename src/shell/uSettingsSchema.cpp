#include "shell/uSettingsSchema.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "shell/uColourNames.h"

namespace {

using enum TSettingType;

constexpr std::string_view kDate = "Date", kGeneral = "General Settings", kAlarm = "Alarm",
                           kFormats = "Value Decimal Formats", kAnalog = "Analog Settings", kColours = "Colors",
                           kEvents = "Shock Events Chart", kSelected = "Selected Shock Event Chart",
                           kSensors = "Sensors Chart";

constexpr TSetting kSettings[] = {
    {kDate, "Date Format", Index, "0", "cmbSettingsDateTimeFormat"},
    {"Company", "Name", Text, "Korvex", "cxTextEditCompanyName"},
    {kGeneral, "Sync Confirmations", Bool, "1", "chboxDialogConfirmationsSync"},
    {kGeneral, "Shock Chart Point Absorption", Bool, "1", "chboxShockChartPointAbsorption"},
    {"File&Folder", "Default File Filter", Index, "0", "cmbSettingsDefFileFilter"},
    {kAlarm, "Load Acc. from File", Bool, "1", "chboxLoadAccAlarmFromFile"},
    {kAlarm, "Acc. Min", Float, "-6", "dxBarSpinAlarmAccMin"},
    {kAlarm, "Acc. Max", Float, "6", "dxBarSpinAlarmAccMax"},
    {kAlarm, "Temp. Min", Float, "-4", "dxBarSpinAlarmTempMin"},
    {kAlarm, "Temp. Max", Float, "40", "dxBarSpinAlarmTempMax"},
    {kAlarm, "Pressure Min", Float, "0", "dxBarSpinAlarmPresMin"},
    {kAlarm, "Pressure Max", Float, "1000", "dxBarSpinAlarmPresMax"},
    {kAlarm, "A1 Min", Float, "0", "dxBarSpinAlarmA1Min"},
    {kAlarm, "A1 Max", Float, "1000", "dxBarSpinAlarmA1Max"},
    {kAlarm, "A2 Min", Float, "0", "dxBarSpinAlarmA2Min"},
    {kAlarm, "A2 Max", Float, "1000", "dxBarSpinAlarmA2Max"},
    {kAlarm, "A3 Min", Float, "0", "dxBarSpinAlarmA3Min"},
    {kAlarm, "A3 Max", Float, "1000", "dxBarSpinAlarmA3Max"},
    {kAlarm, "A4 Min", Float, "0", "dxBarSpinAlarmA4Min"},
    {kAlarm, "A4 Max", Float, "1000", "dxBarSpinAlarmA4Max"},
    {kAlarm, "RH Min", Float, "30", "dxBarSpinAlarmRHMin"},
    {kAlarm, "RH Max", Float, "60", "dxBarSpinAlarmRHMax"},
    {kAlarm, "Light Min", Float, "0", "dxBarSpinAlarmLiMin"},
    {kAlarm, "Light Max", Float, "1000", "dxBarSpinAlarmLiMax"},
    {kAlarm, "Battery Min", Float, "2.5", "dxBarSpinAlarmBatMin"},
    {kAlarm, "Battery Max", Float, "4.5", "dxBarSpinAlarmBatMax"},
    {kAlarm, "Active", Bool, "0", "barbtnlrgAlarm"},
    {kFormats, "Time", Index, "3", "cmbSettingsTimeDec"},
    {kFormats, "Acceleration", Index, "3", "cmbSettingsAccDec"},
    {kFormats, "DBC", Index, "0", "cmbSettingsDBCDec"},
    {kFormats, "Intesity", Index, "2", "cmbSettingsIntDec"},
    {kFormats, "Temperature", Index, "2", "cmbSettingsTempDec"},
    {kFormats, "Humidity", Index, "2", "cmbSettingsRHDec"},
    {kFormats, "Pressure", Index, "2", "cmbSettingsPresDec"},
    {kFormats, "Light", Index, "0", "cmbSettingsLiDec"},
    {kFormats, "Battery", Index, "2", "cmbSettingsBatDec"},
    {kFormats, "A1", Index, "6", "cmbSettingsA1Dec"},
    {kFormats, "A2", Index, "6", "cmbSettingsA2Dec"},
    {kFormats, "A3", Index, "6", "cmbSettingsA3Dec"},
    {kFormats, "A4", Index, "6", "cmbSettingsA4Dec"},
    {kAnalog, "A1 Name", Text, "A1", "tedA1Name"},
    {kAnalog, "A2 Name", Text, "A2", "tedA2Name"},
    {kAnalog, "A3 Name", Text, "A3", "tedA3Name"},
    {kAnalog, "A4 Name", Text, "A4", "tedA4Name"},
    {kColours, "Acc. X Series", Colour, "clBlue", "ccmbShockX"},
    {kColours, "Acc. Y Series", Colour, "clRed", "ccmbShockY"},
    {kColours, "Acc. Z Series", Colour, "clGreen", "ccmbShockZ"},
    {kColours, "Acc. Total Series", Colour, "clBlack", "ccmbShockTotal"},
    {kColours, "Sensors Left Inner", Colour, "clBlack", "clrgalSensorsLeftAxisI"},
    {kColours, "Sensors Left Outer", Colour, "clRed", "clrgalSensorsLeftAxisII"},
    {kColours, "Sensors Right Inner", Colour, "clBlue", "clrgalSensorsRightAxisI"},
    {kColours, "Sensors Right Outer", Colour, "clGreen", "clrgalSensorsRightAxisII"},
    {kColours, "Temperature", Colour, "clRed", "ccmbSensorsTemp"},
    {kColours, "Temperature P", Colour, "clMaroon", "ccmbSensorsTempP"},
    {kColours, "Temperature RH", Colour, "clFuchsia", "ccmbSensorsTempRH"},
    {kColours, "Humidity", Colour, "clBlue", "ccmbSensorsRH"},
    {kColours, "Pressure", Colour, "clGreen", "ccmbSensorsPressure"},
    {kColours, "Light", Colour, "clOlive", "ccmbSensorsLight"},
    {kColours, "Battery", Colour, "clNavy", "ccmbSensorsBattery"},
    {kColours, "A1", Colour, "clBlack", "ccmbSensorsA1"},
    {kColours, "A2", Colour, "clPurple", "ccmbSensorsA2"},
    {kColours, "A3", Colour, "clGray", "ccmbSensorsA3"},
    {kColours, "A4", Colour, "clSkyBlue", "ccmbSensorsA4"},
    {kEvents, "Indicator Visibility", Bool, "1", "actShockEventsToolsIndicator"},
    {kEvents, "Axis Zoom Lock", Bool, "1", "barbtnShockEventsGAxisLock"},
    {kSelected, "Table Visibility", Bool, "0", "actShockShowTable"},
    {kSelected, "HP Filtering", WriteOnly, "0", "swtHPFilter"},
    {kSelected, "Total Series Visibility", Bool, "0", "dxBarShockShowTotal"},
    {kSelected, "X Series Visibility", Bool, "1", "barbtnShockShowX"},
    {kSelected, "Y Series Visibility", Bool, "1", "barbtnShockShowY"},
    {kSelected, "Z Series Visibility", Bool, "1", "barbtnShockShowZ"},
    {kSelected, "Points Visibility", Bool, "1", "barbtnShockToolsPoints"},
    {kSelected, "Nearest Visibility", Bool, "0", "barbtnShockToolsNearest"},
    {kSelected, "Indicator Visibility", Bool, "1", "actShockToolsIndicator"},
    {kSelected, "Indicator Lock", Bool, "1", "barbtnShockIndicatorMouseLock"},
    {kSelected, "Axis Zoom Lock", Bool, "1", "barbtnShockGAxisLock"},
    {kSensors, "Points Visibility", Bool, "1", "actSensorsToolsPoints"},
    {kSensors, "Nearest Visibility", Bool, "0", "actSensorsToolsNearest"},
    {kSensors, "Indicator Visibility", Bool, "1", "actSensorsToolsIndicator"},
    {kSensors, "Indicator Lock", Bool, "1", "actSensorIndicatorMouseLock"},
    {kSensors, "Right Outer Axis Zoom Lock", Bool, "1", "actSensorsAZoomRightII"},
    {kSensors, "Right Inner Axis Zoom Lock", Bool, "1", "actSensorsAZoomRightI"},
    {kSensors, "Left Outer Axis Zoom Lock", Bool, "1", "actSensorsAZoomLeftII"},
    {kSensors, "Left Inner Axis Zoom Lock", Bool, "1", "actSensorsAZoomLeftI"},
    {"Most Important Events", "Order By", Index, "0", "cmbOrderMostImporantBy"},
};

// Runs of settings, from one control to another, as they are written after each other.
constexpr std::pair<std::string_view, std::string_view> kWrittenRuns[] = {
    {"chboxDialogConfirmationsSync", "chboxShockChartPointAbsorption"},
    {"cmbSettingsDateTimeFormat", "cxTextEditCompanyName"},
    {"cmbSettingsDefFileFilter", "cmbSettingsDefFileFilter"},
    {"barbtnlrgAlarm", "barbtnlrgAlarm"},
    {"chboxLoadAccAlarmFromFile", "dxBarSpinAlarmPresMax"},
    {"dxBarSpinAlarmRHMin", "dxBarSpinAlarmBatMax"},
    {"dxBarSpinAlarmA1Min", "dxBarSpinAlarmA4Max"},
    {"cmbSettingsTimeDec", "cmbSettingsA4Dec"},
    {"ccmbShockX", "ccmbSensorsA4"},
    {"tedA1Name", "tedA4Name"},
    {"actShockEventsToolsIndicator", "barbtnShockEventsGAxisLock"},
    {"swtHPFilter", "swtHPFilter"},
    {"actShockShowTable", "actShockShowTable"},
    {"dxBarShockShowTotal", "barbtnShockGAxisLock"},
    {"actSensorsToolsNearest", "actSensorsToolsNearest"},
    {"actSensorsToolsPoints", "actSensorsToolsPoints"},
    {"actSensorsToolsIndicator", "cmbOrderMostImporantBy"},
};

constexpr std::size_t IndexOf(std::string_view control) {
  const auto* found = std::ranges::find(kSettings, control, &TSetting::control);
  if (found == std::end(kSettings)) throw std::logic_error("there is no setting " + std::string(control));
  return static_cast<std::size_t>(found - kSettings);
}

constexpr auto kWritingOrder = [] {
  std::array<std::size_t, std::size(kSettings)> order{};
  std::size_t count = 0;
  for (const auto& [first, last] : kWrittenRuns) {
    for (std::size_t i = IndexOf(first); i <= IndexOf(last); ++i) order.at(count++) = i;
  }
  if (count != order.size()) throw std::logic_error("a setting is not written");
  return order;
}();

}  // namespace

std::span<const TSetting> Settings() {
  return kSettings;
}

std::span<const std::size_t> WritingOrder() {
  return kWritingOrder;
}

const TSetting& FindSetting(std::string_view control) {
  return kSettings[IndexOf(control)];
}

std::uint32_t DefaultColour(std::string_view control) {
  return ColourFromText(FindSetting(control).def).value();
}
