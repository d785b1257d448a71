// How each slow sensor looks in a chart: its colour, its value axis and what it may share that axis with.
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <array>
#include <cstddef>
#include <string_view>

enum class TSensorAxis { LeftInner, LeftOuter, RightInner, RightOuter };
inline constexpr std::size_t kSensorAxisCount = 4;

struct TSensorLook {
  QColor colour;  // on light ground
  TSensorAxis axis;
  int rank;       // of those that want the left inner axis the lowest gets it
  QString unit;   // empty where it depends on what is connected
  QString scale;  // only series of one scale share an axis
};

TSensorLook LookOf(std::string_view sensorName);

// The colour as it is drawn on this palette; dark and bright ones of one hue stay apart on dark ground.
QColor InkOf(const QPalette& palette, const TSensorLook& look);
