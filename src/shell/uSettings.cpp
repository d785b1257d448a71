#include "shell/uSettings.h"

#include <cmath>

namespace {

template <std::size_t N>
std::string_view EntryOf(const std::array<std::string_view, N>& list, int index) {
  const auto at = static_cast<std::size_t>(index);
  return at < N ? list[at] : list[0];
}

}  // namespace

std::string_view TDisplaySettings::DateFormat() const {
  return EntryOf(kDateFormats, dateFormat);
}

std::string_view TDisplaySettings::FormatOf(TQuantity quantity) const {
  return EntryOf(kDecimalMasks, formats.at(static_cast<std::size_t>(quantity)));
}

const TSettings& DefaultSettings() {
  static const TSettings kDefaults;
  return kDefaults;
}

std::optional<double> TriggerLevel(const TMissionData& mission) {
  const double level = mission.adxl_level_on;
  if (!mission.bValid || !std::isfinite(level) || level <= 0) return std::nullopt;
  return level;
}

TDisplaySettings DisplayInForce(const TDisplaySettings& chosen, const TMissionData& mission) {
  TDisplaySettings display = chosen;
  const std::optional<double> level = TriggerLevel(mission);
  display.fileNamesLimits = level.has_value();
  if (level && display.accelerationFromFile) {
    display.limits[static_cast<std::size_t>(TQuantity::Acceleration)] = {-*level, *level};
  }
  return display;
}
