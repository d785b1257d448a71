#include "gui/charts/uSensorLooks.h"

#include <algorithm>
#include <iterator>

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

TSensorLook LookOf(std::string_view sensor, const TDisplaySettings& display) {
  const TQuantityRow* row = FindQuantity(&TQuantityRow::sensorName, sensor);
  const QString own = ShownText(sensor, kMaxName);
  if (row == nullptr) return {own, QColor(kUnknownColour), TSensorAxis::LeftInner, kUnknownRank, {}, "unknown", true};
  // People say "Humidity", the recording "RH".
  QString name = row->cardField.empty() ? own : QtText(row->cardField);
  if (row->namePlace != 0) {
    const QString chosen = ShownText(display.analogNames[row->namePlace - 1U], kMaxName).trimmed();
    if (!chosen.isEmpty()) name = chosen;
  }
  const QColor colour(row->colourPlace == 0 ? kFixedColour : display.sensorColours[row->colourPlace - 1U]);
  // Light, humidity and pressure are never negative.
  constexpr std::string_view kNeverNegative[] = {"lux", "%RH", "mbar"};
  const bool negative = std::ranges::find(kNeverNegative, row->unit) == std::end(kNeverNegative);
  const QString unit = QtText(row->unit);
  return {name,     colour,       row->axis, row->axisRank, unit, row->scale.empty() ? unit : QtText(row->scale),
          negative, row->quantity};
}

QColor SensorInk(const QPalette& palette, const QColor& colour) {
  const QColor ink = InkOn(palette, colour);
  return IsDark(palette) && colour.value() < kDarkShade ? ink.lighter(kLighter) : ink;
}
