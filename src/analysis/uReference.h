// What is kept of a mission so that others can be compared with it: figures and distributions, of bounded size whatever
// the mission's. A copy, so it outlives its recording. Main thread only.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uEventQuantities.h"
#include "analysis/uMissionSummary.h"
#include "analysis/uShockStatistics.h"

inline constexpr double kMaxReferenceDays = 1e9;

struct TReferenceSensor {
  std::string name;  // TSensor::Name
  float min, max;    // over the readings that are numbers
};

struct TReference {
  std::string file;  // the recording, with its folder, in one line; UTF-8
  std::size_t events = 0;
  double days = 0;  // from the first to the last time; 0 when there is none, or more than kMaxReferenceDays
  std::array<std::size_t, 24> hours{};
  bool hasPulses = false;  // else directions, and the distributions of pulses, are empty
  std::vector<TDirectionCount> directions;
  std::array<TDistribution, kEventQuantities.size()> distributions;  // by place in kEventQuantities
  std::vector<TReferenceSensor> sensors;                             // of known quantities, each name once
};

// Without pulses.
TReference MakeReference(const TEventList& events, const TMissionDatasets& tables, const TMissionSummary& summary,
                         const std::string& file);
// `analysis` is that of the same mission.
void AddPulses(const TMissionAnalysis& analysis, const TMissionDatasets& tables, TReference& reference);

// "demo": the name of the recording without folder and extension.
std::string ReferenceName(const TReference& reference);

// Nothing without events.
std::optional<double> MaxOf(const TDistribution& distribution);
// The part of the events outside the limits, 0 … 1; nothing without events.
std::optional<double> PartOutside(const TDistribution& peaks, const TLimits& limits);
