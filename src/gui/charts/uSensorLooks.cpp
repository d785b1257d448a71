#include "gui/charts/uSensorLooks.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr int kDarkShade = 160;  // HSV value; darker colours are lightened on dark ground
constexpr int kLighter = 135;    // percent
constexpr qsizetype kMaxName = 60;
constexpr QRgb kUnknownColour = 0x808080;
constexpr QRgb kFixedColour = 0x606060;  // of a known sensor without a setting
constexpr int kUnknownRank = 100;        // after every known sensor

}  // namespace

TSensorLook LookOf(std::string_view sensorName) {
  const TQuantityRow* row = FindQuantity(&TQuantityRow::sensorName, sensorName);
  if (row == nullptr) return {QColor(kUnknownColour), TSensorAxis::LeftInner, kUnknownRank, {}, "unknown", true};
  const QColor colour(row->colourPlace == 0 ? kFixedColour
                                            : DefaultSettings().display.sensorColours[row->colourPlace - 1U]);
  // Light, humidity and pressure are never negative.
  constexpr std::string_view kNeverNegative[] = {"lux", "%RH", "mbar"};
  const bool negative = std::ranges::find(kNeverNegative, row->unit) == std::end(kNeverNegative);
  return {colour,   row->axis,    row->axisRank, QtText(row->unit), QtText(row->scale.empty() ? row->unit : row->scale),
          negative, row->quantity};
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
  const QString name = found == FNames.end() ? QString() : ShownText(found->second, kMaxName).trimmed();
  if (!name.isEmpty()) return name;
  // People say "Humidity", the recording "RH".
  const TQuantityRow* row = FindQuantity(&TQuantityRow::sensorName, sensor);
  return row == nullptr || row->cardField.empty() ? ShownText(sensor, kMaxName) : QtText(row->cardField);
}

QColor SensorInk(const QPalette& palette, const QColor& colour) {
  const QColor ink = InkOn(palette, colour);
  return IsDark(palette) && colour.value() < kDarkShade ? ink.lighter(kLighter) : ink;
}
