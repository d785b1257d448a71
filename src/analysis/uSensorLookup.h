// The reading of a slow sensor at a moment. Borrows the list, which must stay as it is meanwhile; one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/uOtherSensors.h"

class TSensorLookup {
 public:
  // startTime: the mission's start, a date-time.
  TSensorLookup(const TSensorList& sensors, double startTime);

  // The reading of sensor `index` that is nearest to a date-time: with j the first sample at or after it, sample j, or
  // j − 1 when that is strictly nearer; the last sample when there is no j. Times need not be in order: the result is
  // that of a search from the first sample on, at the cost of a binary search, or less if the moments rise from call to
  // call.
  // Throws std::out_of_range for an index past the list and for a sensor without samples.
  [[nodiscard]] float SensorValueAt(std::size_t index, double dateTime) const;

 private:
  // The first sample at or after any moment is always one that is later than all before it. These samples, in order;
  // none are listed while every sample is one.
  struct TRisingSamples {
    bool found = false;
    bool everySample = true;
    std::size_t lastAnswer = 0;  // of SensorValueAt, among these samples
    std::vector<std::uint32_t> listed;
  };

  [[nodiscard]] double DateTimeAt(std::span<const TSensorValue> values, std::size_t sample) const;
  [[nodiscard]] const TRisingSamples& RisingSamplesOf(std::size_t index) const;

  const TSensorList& FSensors;
  double FStartTime;
  mutable std::vector<TRisingSamples> FRising;  // of each sensor, found when it is first asked for
};
