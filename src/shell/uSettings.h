// What the user sets. uSettingsSchema says where each value stands in "settings.ini" and which control shows it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/uAlarmLimits.h"
#include "analysis/uLimitProfile.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uQuantities.h"

// The entries of the lists, by index.
inline constexpr std::array<std::string_view, 12> kDateFormats = {"yy-mm-dd", "yyyy-mm-dd", "mm-dd-yy", "mm-dd-yyyy",
                                                                  "dd-mm-yy", "dd-mm-yyyy", "yy.mm.dd", "yyyy.mm.dd",
                                                                  "mm.dd.yy", "mm.dd.yyyy", "dd.mm.yy", "dd.mm.yyyy"};
inline constexpr std::array<std::string_view, 12> kDecimalMasks = {
    "0.#", "0.##", "0.###", "0.####", "0.#####", "0.######", "0.0", "0.00", "0.000", "0.0000", "0.00000", "0.000000"};
inline constexpr std::array<std::string_view, 2> kFileFilters = {"*.kshock", "*.kshock & *.korvex"};

// What decides how a mission is shown. Colours are 0xRRGGBB.
struct TDisplaySettings {
  int dateFormat = 0;                                   // in kDateFormats
  std::array<int, kQuantityCount> formats{};            // in kDecimalMasks, by TQuantity
  std::array<TLimits, kLimitedQuantityCount> limits{};  // by TQuantity
  bool accelerationFromFile = false;  // the acceleration limits are those of the recording, if it has them
  bool fileNamesLimits = false;       // not a setting: the shown recording has them
  bool alarmActive = false;
  // The limits are those of a profile, which is kept in a file of its own. While the alarm is off it judges nothing.
  std::optional<TLimitProfile> profile;
  bool pointAbsorption = false;
  std::string company;
  std::array<std::string, kAnalogInputs.size()> analogNames;
  std::array<std::uint32_t, 4> accelerationColours{};  // x, y, z, total
  std::array<std::uint32_t, 4> axisColours{};          // by TSensorAxis
  std::array<std::uint32_t, kColouredSensors.size()> sensorColours{};

  // An index outside its list counts as the first entry.
  [[nodiscard]] std::string_view DateFormat() const;
  // A mask of MaskFloat.
  [[nodiscard]] std::string_view FormatOf(TQuantity quantity) const;
  // The quantity has limits: it is one of the first kLimitedQuantityCount.
  [[nodiscard]] const TLimits& LimitsOf(TQuantity quantity) const {
    return limits.at(static_cast<std::size_t>(quantity));
  }
  bool operator==(const TDisplaySettings&) const = default;
};

struct TSettings {
  // Every setting has its default.
  TSettings();

  TDisplaySettings display;
  bool syncConfirmations = false;
  int fileFilter = 0;  // in kFileFilters
  int orderBy = 0;     // in the list of the most important events
  // The events charts.
  bool eventsIndicator = false, eventsAxisLock = false;
  // The chart of the selected event.
  bool shockX = false, shockY = false, shockZ = false, shockTotal = false, shockTable = false, highPass = false;
  bool shockPoints = false, shockNearest = false, shockIndicator = false, shockIndicatorLock = false,
       shockAxisLock = false;
  // The sensors chart.
  bool sensorsPoints = false, sensorsNearest = false, sensorsIndicator = false, sensorsIndicatorLock = false;
  std::array<bool, 4> sensorsAxisLocks{};  // by TSensorAxis

  bool operator==(const TSettings&) const = default;
};

const TSettings& DefaultSettings();

// Puts a profile in force: its limits become those of the settings. The alarm stays as it is.
void UseProfile(const TLimitProfile& profile, TDisplaySettings& display);
// After the limits changed: they are those of the profile in force, too. One that differs from its default is chosen.
void UpdateProfile(TDisplaySettings& display);

// The level that opens an event, in g, of a valid mission. Nothing when it is no number above 0.
std::optional<double> TriggerLevel(const TMissionData& mission);

// The chosen display settings with the limits in force. When the settings say so, the acceleration limits are ± the
// trigger level, if there is one.
TDisplaySettings DisplayInForce(const TDisplaySettings& chosen, const TMissionData& mission);
