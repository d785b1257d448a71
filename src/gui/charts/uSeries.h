// The acceleration series of the charts: which there are, their colours, and how their values read.
#pragma once

#include <QColor>
#include <QObject>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uExtents.h"
#include "analysis/uShockMetrics.h"
#include "model/uEvents.h"
#include "shell/uSettings.h"

enum class TSeries { X, Y, Z, Total };
inline constexpr std::size_t kSeriesCount = 4;
inline constexpr std::array<TSeries, kSeriesCount> kAllSeries = {TSeries::X, TSeries::Y, TSeries::Z, TSeries::Total};

// Its place in an array of all series.
inline std::size_t Place(TSeries series) {
  return static_cast<std::size_t>(series);
}

inline QString NameOf(TSeries series) {
  const std::array names = {QObject::tr("X"), QObject::tr("Y"), QObject::tr("Z"), QObject::tr("Total")};
  return names[Place(series)];
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

// Masks of MaskFloat for cursor texts and the value table.
struct TValueMasks {
  std::string time = "0.####";  // ms
  std::string acceleration = "0.####";
};

// Of a quantity, in its unit; nothing while there is no alarm.
using TAlarmLimits = std::optional<TLimits>;

// Of each series of an event, in g.
using TSeriesExtents = std::array<TExtents, kSeriesCount>;
// Walks the samples once.
TSeriesExtents MeasureSeries(std::span<const TEventValue> samples);
// The high-passed curves as samples.
std::vector<TEventValue> HighPassedSamples(std::span<const TEventValue> samples);
