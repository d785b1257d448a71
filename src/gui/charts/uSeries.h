// The acceleration series of the charts: which there are, their colours, and how their values read.
#pragma once

#include <QColor>
#include <QObject>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "analysis/uShockMetrics.h"
#include "model/uEvents.h"
#include "shell/uSettings.h"

enum class TSeries { X, Y, Z, Total };
inline constexpr std::size_t kSeriesCount = 4;
inline constexpr std::array<TSeries, kSeriesCount> kAllSeries = {TSeries::X, TSeries::Y, TSeries::Z, TSeries::Total};

inline QString NameOf(TSeries series) {
  const std::array names = {QObject::tr("X"), QObject::tr("Y"), QObject::tr("Z"), QObject::tr("Total")};
  return names[static_cast<std::size_t>(series)];
}

// g of one sample; the total is the vector magnitude.
inline float ValueOf(const TEventValue& sample, TSeries series) {
  switch (series) {
    case TSeries::X:
      return sample.xvalue;
    case TSeries::Y:
      return sample.yvalue;
    case TSeries::Z:
      return sample.zvalue;
    case TSeries::Total:
      break;
  }
  return static_cast<float>(Magnitude(sample));
}

// 0xRRGGBB on light ground, by TSeries; InkOn makes them readable on dark.
using TSeriesColours = std::array<std::uint32_t, kSeriesCount>;

inline const QColor kAlarmColour(0xC24A00U);

// Masks of MaskFloat for cursor texts and the value table.
struct TValueMasks {
  std::string time = "0.####";  // ms
  std::string acceleration = "0.####";
};

// The lower and the upper limit of a quantity, in its unit; nothing while there is no alarm.
using TAlarmLimits = std::optional<std::pair<double, double>>;
