// The quantities of an event whose histogram and exceedance the statistics show. Main thread only.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "analysis/uAnalysisTable.h"
#include "analysis/uMissionDatasets.h"

// Either of the pulse or of the table of events.
struct TEventQuantity {
  const char* name;
  const char* unit;
  double TPulse::*ofPulse;
  std::string_view ofTable;
};
inline constexpr std::array<TEventQuantity, 4> kEventQuantities = {
    {{"Velocity change", "m/s", &TPulse::velocityChange, {}},
     {"Peak", "g", nullptr, "Acceleration max"},
     {"Duration at 10 %", "ms", &TPulse::durationTenth, {}},
     {"IoT total", "g·ms", nullptr, "IoT total"}}};
// Places in the array.
inline constexpr std::size_t kPeakQuantity = 1;
inline constexpr std::size_t kIotQuantity = 3;

// Of these rows of the event table, in their order; NaN where an event has none. Empty for a quantity of pulses while
// `analysis` is null.
std::vector<double> ValuesOf(const TEventQuantity& quantity, std::span<const std::uint32_t> rows,
                             const TMissionDatasets& tables, const TMissionAnalysis* analysis);

// Of the events with a pulse.
std::vector<TDirection> DirectionsOf(std::span<const std::uint32_t> rows, const TMissionAnalysis& analysis);
