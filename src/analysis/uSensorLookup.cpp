#include "analysis/uSensorLookup.h"

#include <algorithm>
#include <cmath>

#include "base/uDateTime.h"

TSensorLookup::TSensorLookup(const TSensorList& sensors, double startTime)
    : FSensors(sensors), FStartTime(startTime), FRising(sensors.Count()) {}

double TSensorLookup::DateTimeAt(std::span<const TSensorValue> values, std::size_t sample) const {
  return DateTimeOf(FStartTime, values[sample].time);
}

const TSensorLookup::TRisingSamples& TSensorLookup::RisingSamplesOf(std::size_t index) const {
  TRisingSamples& rising = FRising[index];
  if (rising.found) return rising;
  rising.found = true;
  const auto values = FSensors.GetItem(index).Values();
  std::size_t count = 0;
  double latest = 0;
  for (std::size_t j = 0; j < values.size(); ++j) {
    const double time = DateTimeAt(values, j);
    const bool rises = !std::isnan(time) && (count == 0 || time > latest);
    if (!rises && rising.everySample) {
      rising.everySample = false;
      for (std::size_t before = 0; before < j; ++before) rising.listed.push_back(static_cast<std::uint32_t>(before));
    }
    if (!rises) continue;
    latest = time;
    ++count;
    if (!rising.everySample) rising.listed.push_back(static_cast<std::uint32_t>(j));
  }
  return rising;
}

float TSensorLookup::SensorValueAt(std::size_t index, double dateTime) const {
  const auto values = FSensors.GetItem(index).Values();
  const TRisingSamples& rising = RisingSamplesOf(index);
  const auto sampleAt = [&rising](std::size_t k) { return rising.everySample ? k : rising.listed[k]; };
  const std::size_t count = rising.everySample ? values.size() : rising.listed.size();
  const auto isBefore = [&](std::size_t k) { return !(DateTimeAt(values, sampleAt(k)) >= dateTime); };  // also NaN
  // Callers mostly ask for later and later moments: from the last answer on in steps that double, then by halves.
  std::size_t& last = FRising[index].lastAnswer;
  std::size_t k = last > 0 && isBefore(last - 1) ? last : 0;
  std::size_t end = k;
  for (std::size_t step = 1; end < count && isBefore(end); step *= 2) {
    k = end + 1;
    end = std::min(end + step, count);
  }
  while (k < end) {
    const std::size_t middle = k + (end - k) / 2;
    if (isBefore(middle)) {
      k = middle + 1;
    } else {
      end = middle;
    }
  }
  last = k;
  if (k == count) return FSensors.GetItem(index).GetItem(values.size() - 1).xvalue;
  const std::size_t j = sampleAt(k);
  const double time = DateTimeAt(values, j);
  if (time == dateTime || j == 0) return values[j].xvalue;
  // A tie goes to the later sample.
  const bool earlierIsNearer = std::fabs(dateTime - time) > std::fabs(dateTime - DateTimeAt(values, j - 1));
  return values[earlierIsNearer ? j - 1 : j].xvalue;
}
