// A part of the shown mission, for exports: everything, what the filter lets through, or what lies in the navigator's
// band. Main thread only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/uShownMission.h"

enum class TPartChoice { All, Filtered, Band };

struct TMissionPart {
  std::vector<std::uint32_t> events;  // in the order of the grids
  // Companions of the mission's tables, in their orders.
  TDataset shocks, sensors, battery;

  [[nodiscard]] bool IsEmpty() const {
    return events.empty() && sensors.RecordCount() == 0 && battery.RecordCount() == 0;
  }
};

// Events begin in the band. Of the filter only its time applies to readings.
TMissionPart PartOf(const TShownMission& mission, TPartChoice choice);

// "12 events, 340 rows of sensors, 20 of the battery"
std::string PartSizeText(const TMissionPart& part);
