#include "analysis/uReference.h"

#include <algorithm>
#include <numeric>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "model/uQuantities.h"

namespace {

std::vector<std::uint32_t> AllRows(const TMissionDatasets& tables) {
  std::vector<std::uint32_t> rows(tables.Events.RowCount());
  std::iota(rows.begin(), rows.end(), 0U);
  return rows;
}

}  // namespace

TReference MakeReference(const TEventList& events, const TMissionDatasets& tables, const TMissionSummary& summary,
                         const std::string& file) {
  TReference reference;
  reference.file = Printable(file);
  reference.events = events.Count();
  const double days = summary.firstTime ? *summary.lastTime - *summary.firstTime : 0;
  if (days <= kMaxReferenceDays) reference.days = days;
  std::vector<double> times;
  times.reserve(events.Count());
  for (std::size_t i = 0; i < events.Count(); ++i) {
    times.push_back(DateTimeOf(events.StartTime, events.GetItem(i).GetStartTime()));
  }
  reference.hours = CountByHour(times);
  const std::vector<std::uint32_t> rows = AllRows(tables);
  for (std::size_t i = 0; i < kEventQuantities.size(); ++i) {
    reference.distributions[i] = DistributionOf(ValuesOf(kEventQuantities[i], rows, tables, nullptr));
  }
  for (const TSensorSummary& sensor : summary.sensors) {
    const auto* known = FindQuantity(&TQuantityRow::sensorName, sensor.name);
    const bool isThere = std::ranges::count(reference.sensors, sensor.name, &TReferenceSensor::name) > 0;
    if (known == nullptr || !known->quantity || !sensor.minimum || isThere) continue;
    reference.sensors.push_back({sensor.name, *sensor.minimum, *sensor.maximum});
  }
  return reference;
}

void AddPulses(const TMissionAnalysis& analysis, const TMissionDatasets& tables, TReference& reference) {
  const std::vector<std::uint32_t> rows = AllRows(tables);
  reference.hasPulses = true;
  reference.directions = CountByDirection(DirectionsOf(rows, analysis));
  for (std::size_t i = 0; i < kEventQuantities.size(); ++i) {
    if (!kEventQuantities[i].ofTable.empty()) continue;
    reference.distributions[i] = DistributionOf(ValuesOf(kEventQuantities[i], rows, tables, &analysis));
  }
}

std::string ReferenceName(const TReference& reference) {
  return Utf8FromPath(PathFromUtf8(reference.file).stem());
}

std::optional<double> MaxOf(const TDistribution& distribution) {
  if (distribution.empty()) return std::nullopt;
  return double{distribution.back().value};
}

std::optional<double> PartOutside(const TDistribution& peaks, const TLimits& limits) {
  if (peaks.empty()) return std::nullopt;
  std::size_t all = 0;
  std::size_t outside = 0;
  for (const auto& [value, count] : peaks) {
    all += count;
    if (IsOutside(limits, value)) outside += count;
  }
  return static_cast<double>(outside) / static_cast<double>(all);
}
