// What the settings say of how a mission is shown, gathered from the window's controls.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/uAlarmLimits.h"
#include "analysis/uMissionDatasets.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uQuantities.h"

class IControls;

// The decimal format of each quantity, a mask of MaskFloat.
using TCellFormats = std::array<std::string_view, kQuantityCount>;

struct TDisplaySettings {
  std::string DateFormat;
  TCellFormats Formats = {"0.####", "0.###", "0.###", "0.###",  "0.#", "0.###", "0.0",
                          "0.0",    "0.0",   "0.0",   "0.####", "0.#", "0.###"};
  std::array<TLimits, kLimitedQuantityCount> Limits{};  // in force
  bool AccelerationFromFile = false;                    // the limits in force are the recording's
  bool NoLevelInFile = false;                           // they would be, but the recording names no level
  bool AlarmActive = false;
  bool PointAbsorption = true;
  std::string Company;
  std::array<std::string, kAnalogInputs.size()> AnalogNames;
  // Colours as 0xRRGGBB: x, y, z, total; left inner and outer, right inner and outer axis; kColouredSensors.
  std::array<std::uint32_t, 4> AccelerationColours{};
  std::array<std::uint32_t, 4> AxisColours{};
  std::array<std::uint32_t, kColouredSensors.size()> SensorColours{};

  [[nodiscard]] const TLimits& LimitsOf(TQuantity quantity) const {
    return Limits.at(static_cast<std::size_t>(quantity));
  }
  bool operator==(const TDisplaySettings&) const = default;
};

// The acceleration limits are those of a shown mission when the settings say so: ± the level that opens an event. Where
// that is no number above 0, the user's limits are in force.
TDisplaySettings ReadDisplaySettings(const TMissionData& mission, const IControls& screen);
