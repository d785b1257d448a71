// How each slow sensor looks in a chart: its colour, its value axis and what it may share that axis with.
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "model/uQuantities.h"
#include "shell/uSettings.h"

inline constexpr std::size_t kSensorAxisCount = 4;

struct TSensorLook {
  QString name;   // what people call it
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

// By its name in a recording, and what the settings say of it.
TSensorLook LookOf(std::string_view sensor, const TDisplaySettings& display);

// A colour as it is drawn on this palette; dark and bright ones of one hue stay apart on dark ground.
QColor SensorInk(const QPalette& palette, const QColor& colour);
