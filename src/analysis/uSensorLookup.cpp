#include "analysis/uSensorLookup.h"

#include <cmath>

#include "analysis/uEnvelope.h"
#include "base/uDateTime.h"

TSensorLookup::TSensorLookup(const TSensorList& sensors, double startTime)
    : FSensors(sensors), FStartTime(startTime), FRising(sensors.Count()) {}

double TSensorLookup::DateTimeAt(std::span<const TSensorValue> values, std::size_t sample) const {
  return DateTimeOf(FStartTime, values[sample].time);
}

TSensorLookup::TRisingSamples& TSensorLookup::RisingSamplesOf(std::size_t index) const {
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
  TRisingSamples& rising = RisingSamplesOf(index);
  const auto sampleAt = [&rising](std::size_t k) { return rising.everySample ? k : rising.listed[k]; };
  const std::size_t count = rising.everySample ? values.size() : rising.listed.size();
  const auto timeAt = [&](std::size_t k) { return DateTimeAt(values, sampleAt(k)); };
  // Callers mostly ask for later and later moments.
  const std::size_t k = FirstAtOrAfterNear(rising.lastAnswer, 0, count, timeAt, dateTime);
  rising.lastAnswer = k;
  if (k == count) return FSensors.GetItem(index).GetItem(values.size() - 1).xvalue;
  const std::size_t j = sampleAt(k);
  const double time = DateTimeAt(values, j);
  if (time == dateTime || j == 0) return values[j].xvalue;
  // A tie goes to the later sample.
  const bool earlierIsNearer = std::fabs(dateTime - time) > std::fabs(dateTime - DateTimeAt(values, j - 1));
  return values[earlierIsNearer ? j - 1 : j].xvalue;
}
