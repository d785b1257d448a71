#include "gui/charts/uSensorLooks.h"

#include <algorithm>
#include <utility>

#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "model/uBlockTypes.h"

namespace {

struct TRow {
  std::string_view name;
  QRgb colour;
  TSensorAxis axis;
  std::string_view scale;  // where the unit does not say it
};

// In the order in which sensors get the left inner axis.
constexpr TRow kRows[] = {
    {"Temperature", 0xFF0000, TSensorAxis::LeftOuter, ""},   {"Temperature RH", 0xFF00FF, TSensorAxis::LeftOuter, ""},
    {"Temperature p", 0x800000, TSensorAxis::LeftOuter, ""}, {"RH", 0x0000FF, TSensorAxis::RightInner, ""},
    {"Pressure", 0x008000, TSensorAxis::RightOuter, ""},     {"L", 0x808000, TSensorAxis::LeftInner, ""},
    {"A1", 0x000000, TSensorAxis::LeftInner, "analog"},      {"A2", 0x800080, TSensorAxis::LeftInner, "analog"},
    {"A3", 0x808080, TSensorAxis::LeftInner, "analog"},      {"A4", 0xA6CAF0, TSensorAxis::LeftInner, "analog"},
    {"Battery", 0x000080, TSensorAxis::LeftInner, ""},       {"Marker", 0x606060, TSensorAxis::LeftInner, "marker"},
};
constexpr int kDarkShade = 160;  // HSV value of the dark twin of a bright colour
constexpr int kLighter = 135;    // percent
constexpr qsizetype kLongestName = 60;
constexpr TRow kUnknown = {"", 0x808080, TSensorAxis::LeftInner, "unknown"};

}  // namespace

TSensorLook LookOf(std::string_view sensorName) {
  const auto* found = std::ranges::find(kRows, sensorName, &TRow::name);
  const TRow& row = found == std::end(kRows) ? kUnknown : *found;
  const auto* channel = std::ranges::find(kKnownChannels, sensorName, &TKnownChannel::sensorName);
  const QString unit = channel == std::end(kKnownChannels) ? QString() : QtText(channel->unit);
  return {QColor(row.colour), row.axis, static_cast<int>(found - kRows), unit,
          row.scale.empty() ? unit : QtText(row.scale)};
}

bool TSensorChoices::SetColour(std::string_view sensor, const QColor& colour) {
  return std::exchange(FColours[std::string(sensor)], colour) != colour;
}

bool TSensorChoices::SetNames(std::map<std::string, std::string> names) {
  if (names == FNames) return false;
  FNames = std::move(names);
  return true;
}

QColor TSensorChoices::ColourOf(const std::string& sensor) const {
  const auto found = FColours.find(sensor);
  return found == FColours.end() ? LookOf(sensor).colour : found->second;
}

QString TSensorChoices::NameOf(const std::string& sensor) const {
  const auto found = FNames.find(sensor);
  const QString name = found == FNames.end() ? QString() : ShownText(found->second, kLongestName).trimmed();
  return name.isEmpty() ? ShownText(sensor, kLongestName) : name;
}

QColor SensorInk(const QPalette& palette, const QColor& colour) {
  const QColor ink = InkOn(palette, colour);
  return IsDark(palette) && colour.value() < kDarkShade ? ink.lighter(kLighter) : ink;
}
