#include "analysis/uSensorLookup.h"

#include <algorithm>
#include <cmath>

#include "base/uDateTime.h"

TSensorLookup::TSensorLookup(const TSensorList& sensors, double startTime) : FSensors(sensors), FStartTime(startTime) {
  FRising.resize(sensors.Count());
  for (std::size_t i = 0; i < sensors.Count(); ++i) {
    const auto values = sensors.GetItem(i).Values();
    double latest = 0;
    for (std::size_t j = 0; j < values.size(); ++j) {
      const double time = DateTimeAt(values, j);
      if (std::isnan(time) || (!FRising[i].empty() && time <= latest)) continue;
      latest = time;
      FRising[i].push_back(static_cast<std::uint32_t>(j));
    }
  }
}

double TSensorLookup::DateTimeAt(std::span<const TSensorValue> values, std::size_t sample) const {
  return DateTimeOf(FStartTime, values[sample].time);
}

float TSensorLookup::SensorValueAt(std::size_t index, double dateTime) const {
  const auto values = FSensors.GetItem(index).Values();
  const TRisingSamples& rising = FRising[index];
  const auto found = std::partition_point(
      rising.begin(), rising.end(), [&](std::uint32_t sample) { return !(DateTimeAt(values, sample) >= dateTime); });
  if (found == rising.end()) return FSensors.GetItem(index).GetItem(values.size() - 1).xvalue;
  const std::size_t j = *found;
  const double time = DateTimeAt(values, j);
  if (time == dateTime || j == 0) return values[j].xvalue;
  // A tie goes to the later sample.
  const bool earlierIsNearer = std::fabs(dateTime - time) > std::fabs(dateTime - DateTimeAt(values, j - 1));
  return values[earlierIsNearer ? j - 1 : j].xvalue;
}
