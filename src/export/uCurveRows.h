// The five numbers on each line of an event's export: time or frequency, three axes, total.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "analysis/uHighPassFilter.h"
#include "analysis/uResponseSpectrum.h"
#include "analysis/uSpectrum.h"
#include "model/uEvents.h"

using TCurveRow = std::array<double, 5>;
using TCurveTitles = std::array<std::string_view, 5>;

inline constexpr TCurveTitles kTimeTitles = {"Time (msec)", "X (g)", "Y (g)", "Z (g)", "Total (g)"};
inline constexpr TCurveTitles kSpectrumTitles = {"HZ", "X", "Y", "Z", "Total"};

// "Frequency (Hz)", "X (g)" …, "Range".
inline std::array<std::string, 6> ResponseTitles(TResponse response) {
  const std::string unit = response == TResponse::Acceleration ? " (g)" : " (m/s)";
  return {"Frequency (Hz)", "X" + unit, "Y" + unit, "Z" + unit, "Total" + unit, "Range"};
}

// A sample as it is stored; its time in ms from `start`.
inline TCurveRow RowOf(const TEventValue& value, double start) {
  const double x = value.xvalue;
  const double y = value.yvalue;
  const double z = value.zvalue;
  return {value.time - start, x, y, z, std::sqrt(x * x + y * y + z * z)};
}

inline TCurveRow RowOf(const TFilteredValue& value, double start) {
  return {value.time - start, value.x, value.y, value.z, value.total};
}

inline TCurveRow RowOf(const TSpectrumLine& line) {
  return {line.hertz, line.x, line.y, line.z, line.total};
}

// A curve that stands beside the exported one, with the same titles.
struct TBesideCurve {
  std::string name;  // "12 (drop)"
  std::size_t count;
  std::function<TCurveRow(std::size_t row)> rowAt;
};

// Calls use(row) for each sample of an event in stored order, or for each point of its high-passed curves.
template <class TUse>
void ForEachCurveRow(const TEvent& event, bool highPass, const TUse& use) {
  const double start = event.GetStartTime();
  if (highPass) {
    for (const TFilteredValue& value : HighPassFiltered(event.Values())) use(RowOf(value, start));
  } else {
    for (const TEventValue& value : event.Values()) use(RowOf(value, start));
  }
}
