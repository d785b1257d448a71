// The quantities of a mission, a row each: what a channel is called in a file, in the tables and in the settings, and
// how it is drawn. A new quantity is a new row.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

// Has a decimal format and, for the first kLimitedQuantityCount, alarm limits. Several rows may share one, as all
// temperatures do.
enum class TQuantity {
  Acceleration,
  Temperature,
  Pressure,
  Humidity,
  Light,
  Battery,
  A1,
  A2,
  A3,
  A4,
  Time,
  ToT,
  IoT,
};
inline constexpr std::size_t kLimitedQuantityCount = 10;
inline constexpr std::size_t kQuantityCount = 13;

// By TQuantity: what stands beside its format and its limits, and the controls that show them.
struct TQuantityControls {
  std::string_view caption;
  std::string_view unit;
  std::string_view format, min, max;
  std::string_view hint = {};  // the caption in full, where it is short
};
inline constexpr std::array<TQuantityControls, kQuantityCount> kQuantityControls = {{
    {"Acceleration", "g", "cmbSettingsAccDec", "dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"},
    {"Temperature", "°C", "cmbSettingsTempDec", "dxBarSpinAlarmTempMin", "dxBarSpinAlarmTempMax"},
    {"Pressure", "mbar", "cmbSettingsPresDec", "dxBarSpinAlarmPresMin", "dxBarSpinAlarmPresMax"},
    {"Humidity", "%RH", "cmbSettingsRHDec", "dxBarSpinAlarmRHMin", "dxBarSpinAlarmRHMax"},
    {"Light", "lux", "cmbSettingsLiDec", "dxBarSpinAlarmLiMin", "dxBarSpinAlarmLiMax"},
    {"Battery", "V", "cmbSettingsBatDec", "dxBarSpinAlarmBatMin", "dxBarSpinAlarmBatMax"},
    {"A1", "", "cmbSettingsA1Dec", "dxBarSpinAlarmA1Min", "dxBarSpinAlarmA1Max"},
    {"A2", "", "cmbSettingsA2Dec", "dxBarSpinAlarmA2Min", "dxBarSpinAlarmA2Max"},
    {"A3", "", "cmbSettingsA3Dec", "dxBarSpinAlarmA3Min", "dxBarSpinAlarmA3Max"},
    {"A4", "", "cmbSettingsA4Dec", "dxBarSpinAlarmA4Min", "dxBarSpinAlarmA4Max"},
    {"Time", "ms", "cmbSettingsTimeDec", "", ""},
    {"ToT", "ms", "cmbSettingsDBCDec", "", "", "Time over threshold"},
    {"IoT", "g·ms", "cmbSettingsIntDec", "", "", "Integral over threshold"},
}};

enum class TSensorAxis { LeftInner, LeftOuter, RightInner, RightOuter };

// A field that does not apply is empty. Places count from 1 without gaps; 0: not in that list.
struct TQuantityRow {
  std::string_view nameInFile = {};           // of the channel; empty for what is computed
  std::string_view sensorName = {};           // in the list of sensors; empty for an axis
  std::string_view unit = {};                 // empty where it depends on what is connected
  bool dropsEveryNaN = false;                 // else only the two marks are dropped
  std::string_view field = {};                // the key of its column in the tables
  std::string_view indexKey = {};             // of its pair of indexes
  std::string_view cardField = {};            // its column of the shock cards, and what people call it
  std::uint8_t eventsPlace = 0;               // among the sensor columns of shock events and cards
  std::uint8_t sensorsPlace = 0;              // among the columns of the sensors table
  std::optional<TQuantity> quantity = {};     // whose format and limits count; nothing: shown as the table has it
  bool showsUnit = false;                     // in the cells of grids
  std::uint8_t colourPlace = 0;               // in the list of sensor colours
  std::string_view colourControl = {};        // the setting of its colour
  const char* colourCaption = "";             // with its key
  TSensorAxis axis = TSensorAxis::LeftInner;  // of the sensors chart
  int axisRank = 0;                           // of those that want the left inner axis the lowest gets it
  std::string_view scale = {};                // only series of one scale share an axis; empty: the unit says it
  std::uint8_t namePlace = 0;                 // among those that people name
  std::string_view nameControl = {};          // the setting of that name
};

// The channels come first, the axes before the others. Kept on purpose: only the analog inputs drop every NaN.
// A field a line would be three screens.
// clang-format off
inline constexpr TQuantityRow kQuantities[] = {
    {.nameInFile = "ACC x", .unit = "g"},
    {.nameInFile = "ACC y", .unit = "g"},
    {.nameInFile = "ACC z", .unit = "g"},
    {.nameInFile = "T", .sensorName = "Temperature", .unit = "°C", .field = "Temp.", .indexKey = "Temp.",
     .cardField = "Temperature", .eventsPlace = 1, .sensorsPlace = 1, .quantity = TQuantity::Temperature,
     .colourPlace = 1, .colourControl = "ccmbSensorsTemp", .colourCaption = "&Temperature",
     .axis = TSensorAxis::LeftOuter},
    {.nameInFile = "T(RH)", .sensorName = "Temperature RH", .unit = "°C", .field = "Temp. RH", .indexKey = "Temp. RH",
     .cardField = "Temperature (Humidity)", .eventsPlace = 3, .sensorsPlace = 3, .quantity = TQuantity::Temperature,
     .colourPlace = 3, .colourControl = "ccmbSensorsTempRH", .colourCaption = "Temperature (Humidit&y)",
     .axis = TSensorAxis::LeftOuter},
    {.nameInFile = "T(p)", .sensorName = "Temperature p", .unit = "°C", .field = "Temp. P", .indexKey = "Temp. P",
     .cardField = "Temperature (Pressure)", .eventsPlace = 2, .sensorsPlace = 2, .quantity = TQuantity::Temperature,
     .colourPlace = 2, .colourControl = "ccmbSensorsTempP", .colourCaption = "Temperature (&Pressure)",
     .axis = TSensorAxis::LeftOuter},
    {.nameInFile = "RH", .sensorName = "RH", .unit = "%RH", .field = "Humidity", .indexKey = "Humidity",
     .cardField = "Humidity", .eventsPlace = 4, .sensorsPlace = 4, .quantity = TQuantity::Humidity, .showsUnit = true,
     .colourPlace = 4, .colourControl = "ccmbSensorsRH", .colourCaption = "&Humidity", .axis = TSensorAxis::RightInner},
    {.nameInFile = "L", .sensorName = "L", .unit = "lux", .field = "Light", .indexKey = "Light", .cardField = "Light",
     .eventsPlace = 6, .sensorsPlace = 7, .quantity = TQuantity::Light, .showsUnit = true, .colourPlace = 6,
     .colourControl = "ccmbSensorsLight", .colourCaption = "&Light", .axisRank = 1},
    {.nameInFile = "p", .sensorName = "Pressure", .unit = "mbar", .field = "Pressure", .indexKey = "Pressure",
     .cardField = "Pressure", .eventsPlace = 7, .sensorsPlace = 6, .quantity = TQuantity::Pressure, .showsUnit = true,
     .colourPlace = 5, .colourControl = "ccmbSensorsPressure", .colourCaption = "P&ressure",
     .axis = TSensorAxis::RightOuter},
    {.nameInFile = "BAT", .sensorName = "Battery", .unit = "V", .field = "Battery", .indexKey = "Battery",
     .cardField = "Battery", .eventsPlace = 8, .quantity = TQuantity::Battery, .showsUnit = true, .colourPlace = 7,
     .colourControl = "ccmbSensorsBattery", .colourCaption = "&Battery", .axisRank = 3},
    {.nameInFile = "Marker", .sensorName = "Marker", .axisRank = 4, .scale = "marker"},
    {.nameInFile = "A1", .sensorName = "A1", .dropsEveryNaN = true, .field = "A1", .indexKey = "A1", .eventsPlace = 9,
     .sensorsPlace = 8, .quantity = TQuantity::A1, .colourPlace = 8, .colourControl = "ccmbSensorsA1",
     .colourCaption = "A&1", .axisRank = 2, .scale = "analog", .namePlace = 1, .nameControl = "tedA1Name"},
    {.nameInFile = "A2", .sensorName = "A2", .dropsEveryNaN = true, .field = "A2", .indexKey = "A2", .eventsPlace = 10,
     .sensorsPlace = 9, .quantity = TQuantity::A2, .colourPlace = 9, .colourControl = "ccmbSensorsA2",
     .colourCaption = "A&2", .axisRank = 2, .scale = "analog", .namePlace = 2, .nameControl = "tedA2Name"},
    {.nameInFile = "A3", .sensorName = "A3", .dropsEveryNaN = true, .field = "A3", .indexKey = "A3", .eventsPlace = 11,
     .sensorsPlace = 10, .quantity = TQuantity::A3, .colourPlace = 10, .colourControl = "ccmbSensorsA3",
     .colourCaption = "A&3", .axisRank = 2, .scale = "analog", .namePlace = 3, .nameControl = "tedA3Name"},
    {.nameInFile = "A4", .sensorName = "A4", .dropsEveryNaN = true, .field = "A4", .indexKey = "A4", .eventsPlace = 12,
     .sensorsPlace = 11, .quantity = TQuantity::A4, .colourPlace = 11, .colourControl = "ccmbSensorsA4",
     .colourCaption = "A&4", .axisRank = 2, .scale = "analog", .namePlace = 4, .nameControl = "tedA4Name"},
    {.field = "Dew Point", .indexKey = "DewPoint", .cardField = "Dew Point", .eventsPlace = 5, .sensorsPlace = 5,
     .quantity = TQuantity::Temperature},
    {.unit = "g", .field = "Acceleration max", .indexKey = "MaxAcc", .quantity = TQuantity::Acceleration},
    {.unit = "msec", .field = "ToT total", .indexKey = "DBC", .quantity = TQuantity::ToT, .showsUnit = true},
    {.unit = "msec", .field = "ToT max", .indexKey = "DBCSM", .quantity = TQuantity::ToT, .showsUnit = true},
    {.unit = "g·ms", .field = "IoT total", .indexKey = "Int", .quantity = TQuantity::IoT},
    {.unit = "g·ms", .field = "IoT max", .indexKey = "IntSM", .quantity = TQuantity::IoT},
};
// clang-format on
inline constexpr std::size_t kAxisCount = 3;
inline constexpr std::size_t kChannelCount = static_cast<std::size_t>(
    std::ranges::find_if(kQuantities, [](const TQuantityRow& row) { return row.nameInFile.empty(); }) - kQuantities);
inline constexpr std::size_t kMetricCount = 5;
// The channels that the reader knows, and the columns that every event table has.
inline constexpr std::span<const TQuantityRow> kKnownChannels{kQuantities, kChannelCount};
inline constexpr auto kMetrics = std::span(kQuantities).last<kMetricCount>();
// In labels and sentences; the cells of grids keep their own "msec".
constexpr std::string_view UnitInWords(const TQuantityRow& metric) {
  return kQuantityControls[static_cast<std::size_t>(metric.quantity.value())].unit;
}

// The rows that have a place, in its order. A place that two rows have, or none, does not compile.
template <std::uint8_t TQuantityRow::*Place>
inline constexpr auto kQuantitiesBy = [] {
  constexpr auto count = std::ranges::count_if(kQuantities, [](const TQuantityRow& row) { return row.*Place != 0; });
  std::array<const TQuantityRow*, count> rows{};
  std::array<bool, count> taken{};
  for (const TQuantityRow& row : kQuantities) {
    if (row.*Place == 0) continue;
    const std::size_t place = row.*Place - 1U;
    if (std::exchange(taken.at(place), true)) throw std::logic_error("two quantities have one place");
    rows[place] = &row;
  }
  return rows;
}();
inline constexpr auto kColouredSensors = kQuantitiesBy<&TQuantityRow::colourPlace>;
inline constexpr auto kAnalogInputs = kQuantitiesBy<&TQuantityRow::namePlace>;

// Null where there is no such quantity; an empty name is none.
constexpr const TQuantityRow* FindQuantity(std::string_view TQuantityRow::*column, std::string_view name) {
  const auto* found = std::ranges::find(kQuantities, name, column);
  return name.empty() || found == std::end(kQuantities) ? nullptr : found;
}
