#include "shell/uSettingsSchema.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace {

using enum TQuantity;
using enum TSensorAxis;
using D = TDisplaySettings;
using S = TSettings;

constexpr std::string_view kDate = "Date", kGeneral = "General Settings", kAlarmPage = "Alarm",
                           kFormats = "Value Decimal Formats", kAnalog = "Analog Settings", kColours = "Colors",
                           kEvents = "Shock Events Chart", kSelected = "Selected Shock Event Chart",
                           kSensors = "Sensors Chart";

// The fields: a member, an element of a member, the same of the display settings.
template <auto Member>
constexpr auto kOwn = +[](TSettings& settings) -> auto& {
  return settings.*Member;
};
template <auto Member, auto Index>
constexpr auto kOwnAt = +[](TSettings& settings) -> auto& {
  return (settings.*Member)[static_cast<std::size_t>(Index)];
};
template <auto Member>
constexpr auto kShown = +[](TSettings& settings) -> auto& {
  return settings.display.*Member;
};
template <auto Member, auto Index>
constexpr auto kShownAt = +[](TSettings& settings) -> auto& {
  return (settings.display.*Member)[static_cast<std::size_t>(Index)];
};
template <auto End, auto Index>
constexpr auto kLimit = +[](TSettings& settings) -> auto& {
  return settings.display.limits[static_cast<std::size_t>(Index)].*End;
};

// The rows whose controls are those of a quantity.
constexpr const TQuantityControls& ControlsOf(TQuantity quantity) {
  return kQuantityControls[static_cast<std::size_t>(quantity)];
}
template <TQuantity Quantity>
constexpr TSetting Min(std::string_view key, std::string_view def) {
  return {kAlarmPage, key, def, ControlsOf(Quantity).min, kLimit<&TLimits::min, Quantity>};
}
template <TQuantity Quantity>
constexpr TSetting Max(std::string_view key, std::string_view def) {
  return {kAlarmPage, key, def, ControlsOf(Quantity).max, kLimit<&TLimits::max, Quantity>};
}
template <TQuantity Quantity>
constexpr TSetting Format(std::string_view key, std::string_view def) {
  return {kFormats, key, def, ControlsOf(Quantity).format, kShownAt<&D::formats, Quantity>};
}
template <std::size_t Input>
constexpr TSetting AnalogName(std::string_view key) {
  constexpr const TQuantityRow& kRow = *kAnalogInputs[Input];
  return {kAnalog, key, kRow.sensorName, kRow.nameControl, kShownAt<&D::analogNames, Input>};
}
template <std::size_t Sensor>
constexpr TSetting SensorColour(std::string_view key, std::string_view def) {
  return {kColours, key, def, kColouredSensors[Sensor]->colourControl, kShownAt<&D::sensorColours, Sensor>};
}

constexpr TSetting kSettings[] = {
    {kDate, "Date Format", "0", "cmbSettingsDateTimeFormat", kShown<&D::dateFormat>},
    {"Company", "Name", "Korvex", "cxTextEditCompanyName", kShown<&D::company>},
    {kGeneral, "Sync Confirmations", "1", "chboxDialogConfirmationsSync", kOwn<&S::syncConfirmations>},
    {kGeneral, "Shock Chart Point Absorption", "1", "chboxShockChartPointAbsorption", kShown<&D::pointAbsorption>},
    {"File&Folder", "Default File Filter", "0", "cmbSettingsDefFileFilter", kOwn<&S::fileFilter>},
    {kAlarmPage, "Load Acc. from File", "1", "chboxLoadAccAlarmFromFile", kShown<&D::accelerationFromFile>},
    Min<Acceleration>("Acc. Min", "-6"),
    Max<Acceleration>("Acc. Max", "6"),
    Min<Temperature>("Temp. Min", "-4"),
    Max<Temperature>("Temp. Max", "40"),
    Min<Pressure>("Pressure Min", "0"),
    Max<Pressure>("Pressure Max", "1000"),
    Min<A1>("A1 Min", "0"),
    Max<A1>("A1 Max", "1000"),
    Min<A2>("A2 Min", "0"),
    Max<A2>("A2 Max", "1000"),
    Min<A3>("A3 Min", "0"),
    Max<A3>("A3 Max", "1000"),
    Min<A4>("A4 Min", "0"),
    Max<A4>("A4 Max", "1000"),
    Min<Humidity>("RH Min", "30"),
    Max<Humidity>("RH Max", "60"),
    Min<Light>("Light Min", "0"),
    Max<Light>("Light Max", "1000"),
    Min<Battery>("Battery Min", "2.5"),
    Max<Battery>("Battery Max", "4.5"),
    {kAlarmPage, "Active", "0", "barbtnlrgAlarm", kShown<&D::alarmActive>},
    Format<Time>("Time", "3"),
    Format<Acceleration>("Acceleration", "3"),
    Format<ToT>("DBC", "0"),
    Format<IoT>("Intesity", "2"),
    Format<Temperature>("Temperature", "2"),
    Format<Humidity>("Humidity", "2"),
    Format<Pressure>("Pressure", "2"),
    Format<Light>("Light", "0"),
    Format<Battery>("Battery", "2"),
    Format<A1>("A1", "6"),
    Format<A2>("A2", "6"),
    Format<A3>("A3", "6"),
    Format<A4>("A4", "6"),
    AnalogName<0>("A1 Name"),
    AnalogName<1>("A2 Name"),
    AnalogName<2>("A3 Name"),
    AnalogName<3>("A4 Name"),
    {kColours, "Acc. X Series", "clBlue", "ccmbShockX", kShownAt<&D::accelerationColours, 0>},
    {kColours, "Acc. Y Series", "clRed", "ccmbShockY", kShownAt<&D::accelerationColours, 1>},
    {kColours, "Acc. Z Series", "clGreen", "ccmbShockZ", kShownAt<&D::accelerationColours, 2>},
    {kColours, "Acc. Total Series", "clBlack", "ccmbShockTotal", kShownAt<&D::accelerationColours, 3>},
    {kColours, "Sensors Left Inner", "clBlack", "clrgalSensorsLeftAxisI", kShownAt<&D::axisColours, LeftInner>},
    {kColours, "Sensors Left Outer", "clRed", "clrgalSensorsLeftAxisII", kShownAt<&D::axisColours, LeftOuter>},
    {kColours, "Sensors Right Inner", "clBlue", "clrgalSensorsRightAxisI", kShownAt<&D::axisColours, RightInner>},
    {kColours, "Sensors Right Outer", "clGreen", "clrgalSensorsRightAxisII", kShownAt<&D::axisColours, RightOuter>},
    SensorColour<0>("Temperature", "clRed"),
    SensorColour<1>("Temperature P", "clMaroon"),
    SensorColour<2>("Temperature RH", "clFuchsia"),
    SensorColour<3>("Humidity", "clBlue"),
    SensorColour<4>("Pressure", "clGreen"),
    SensorColour<5>("Light", "clOlive"),
    SensorColour<6>("Battery", "clNavy"),
    SensorColour<7>("A1", "clBlack"),
    SensorColour<8>("A2", "clPurple"),
    SensorColour<9>("A3", "clGray"),
    SensorColour<10>("A4", "clSkyBlue"),
    {kEvents, "Indicator Visibility", "1", "actShockEventsToolsIndicator", kOwn<&S::eventsIndicator>},
    {kEvents, "Axis Zoom Lock", "1", "barbtnShockEventsGAxisLock", kOwn<&S::eventsAxisLock>},
    {kSelected, "Table Visibility", "0", "actShockShowTable", kOwn<&S::shockTable>},
    {kSelected, "HP Filtering", "0", "swtHPFilter", kOwn<&S::highPass>, false},
    {kSelected, "Total Series Visibility", "0", "dxBarShockShowTotal", kOwn<&S::shockTotal>},
    {kSelected, "X Series Visibility", "1", "barbtnShockShowX", kOwn<&S::shockX>},
    {kSelected, "Y Series Visibility", "1", "barbtnShockShowY", kOwn<&S::shockY>},
    {kSelected, "Z Series Visibility", "1", "barbtnShockShowZ", kOwn<&S::shockZ>},
    {kSelected, "Points Visibility", "1", "barbtnShockToolsPoints", kOwn<&S::shockPoints>},
    {kSelected, "Nearest Visibility", "0", "barbtnShockToolsNearest", kOwn<&S::shockNearest>},
    {kSelected, "Indicator Visibility", "1", "actShockToolsIndicator", kOwn<&S::shockIndicator>},
    {kSelected, "Indicator Lock", "1", "barbtnShockIndicatorMouseLock", kOwn<&S::shockIndicatorLock>},
    {kSelected, "Axis Zoom Lock", "1", "barbtnShockGAxisLock", kOwn<&S::shockAxisLock>},
    {kSensors, "Points Visibility", "1", "actSensorsToolsPoints", kOwn<&S::sensorsPoints>},
    {kSensors, "Nearest Visibility", "0", "actSensorsToolsNearest", kOwn<&S::sensorsNearest>},
    {kSensors, "Indicator Visibility", "1", "actSensorsToolsIndicator", kOwn<&S::sensorsIndicator>},
    {kSensors, "Indicator Lock", "1", "actSensorIndicatorMouseLock", kOwn<&S::sensorsIndicatorLock>},
    {kSensors, "Right Outer Axis Zoom Lock", "1", "actSensorsAZoomRightII", kOwnAt<&S::sensorsAxisLocks, RightOuter>},
    {kSensors, "Right Inner Axis Zoom Lock", "1", "actSensorsAZoomRightI", kOwnAt<&S::sensorsAxisLocks, RightInner>},
    {kSensors, "Left Outer Axis Zoom Lock", "1", "actSensorsAZoomLeftII", kOwnAt<&S::sensorsAxisLocks, LeftOuter>},
    {kSensors, "Left Inner Axis Zoom Lock", "1", "actSensorsAZoomLeftI", kOwnAt<&S::sensorsAxisLocks, LeftInner>},
    {"Most Important Events", "Order By", "0", "cmbOrderMostImporantBy", kOwn<&S::orderBy>},
};

// The writing order: runs of settings, each from one control to another.
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
  if (found == std::end(kSettings)) throw std::logic_error("there is no such setting");
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
