// The acceleration series of the charts: which there are, and their values.
#pragma once

#include <QColor>
#include <QObject>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "analysis/uExtents.h"
#include "analysis/uShockMetrics.h"
#include "analysis/uSpectrum.h"
#include "model/uEvents.h"

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

// Of a line of a spectrum.
inline double ValueOf(const TSpectrumLine& line, TSeries series) {
  constexpr double TSpectrumLine::*kValues[] = {&TSpectrumLine::x, &TSpectrumLine::y, &TSpectrumLine::z,
                                                &TSpectrumLine::total};
  return line.*kValues[Place(series)];
}

// Of each series of an event, in g.
using TSeriesExtents = std::array<TExtents, kSeriesCount>;
// Walks the samples once.
TSeriesExtents MeasureSeries(std::span<const TEventValue> samples);
// The high-passed curves as samples.
std::vector<TEventValue> HighPassedSamples(std::span<const TEventValue> samples);
