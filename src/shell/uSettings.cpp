#include "shell/uSettings.h"

#include <cmath>

namespace {

template <std::size_t N>
std::string_view AtOrFirst(const std::array<std::string_view, N>& list, int index) {
  const auto at = static_cast<std::size_t>(index);
  return at < N ? list[at] : list[0];
}

}  // namespace

std::string_view TDisplaySettings::DateFormat() const {
  return AtOrFirst(kDateFormats, dateFormat);
}

std::string_view TDisplaySettings::FormatOf(TQuantity quantity) const {
  return AtOrFirst(kDecimalMasks, formats.at(static_cast<std::size_t>(quantity)));
}

const TSettings& DefaultSettings() {
  static const TSettings kDefaults;
  return kDefaults;
}

void UseProfile(const TLimitProfile& profile, TDisplaySettings& display) {
  display.profile = profile;
  display.accelerationFromFile = profile.accelerationFromFile;
  for (std::size_t i = 0; i < display.limits.size(); ++i) display.limits[i] = profile.limits[i].values;
}

void UpdateProfile(TDisplaySettings& display) {
  if (!display.profile) return;
  display.profile->accelerationFromFile = display.accelerationFromFile;
  for (std::size_t i = 0; i < display.limits.size(); ++i) {
    const TLimits& byDefault = DefaultSettings().display.limits[i];
    TJudgedLimits& limits = display.profile->limits[i];
    limits.values = display.limits[i];
    if (limits.values.min != byDefault.min) limits.minSource = TLimitSource::User;
    if (limits.values.max != byDefault.max) limits.maxSource = TLimitSource::User;
  }
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
