// How each slow sensor looks in a chart: its colour, its value axis and what it may share that axis with.
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "model/uQuantities.h"
#include "shell/uSettings.h"

inline constexpr std::size_t kSensorAxisCount = 4;

struct TSensorLook {
  QColor colour;  // on light ground
  TSensorAxis axis;
  int rank;                                // of those that want the left inner axis the lowest gets it
  QString unit;                            // empty where it depends on what is connected
  QString scale;                           // only series of one scale share an axis
  bool negative;                           // readings can be below 0
  std::optional<TQuantity> quantity = {};  // whose decimal format its readings have

  // A reading can be beyond the limit on both of its sides.
  [[nodiscard]] bool CanCross(double limit) const { return negative || limit > 0; }
};

TSensorLook LookOf(std::string_view sensorName);

// What people chose for sensors, by the names in a recording; it stays from recording to recording.
class TSensorChoices {
 public:
  // False when it is the choice already.
  bool SetColour(std::string_view sensor, const QColor& colour);
  // UTF-8; a sensor without a name, or with an empty one, goes by its own.
  bool SetNames(std::map<std::string, std::string> names);

  [[nodiscard]] QColor ColourOf(const std::string& sensor) const;
  [[nodiscard]] QString NameOf(const std::string& sensor) const;

 private:
  std::map<std::string, QColor> FColours;
  std::map<std::string, std::string> FNames;
};

// A colour as it is drawn on this palette; dark and bright ones of one hue stay apart on dark ground.
QColor SensorInk(const QPalette& palette, const QColor& colour);
