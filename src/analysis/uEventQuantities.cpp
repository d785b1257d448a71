#include "analysis/uEventQuantities.h"

#include <cmath>

std::vector<double> ValuesOf(const TEventQuantity& quantity, std::span<const std::uint32_t> rows,
                             const TMissionDatasets& tables, const TMissionAnalysis* analysis) {
  std::vector<double> values;
  const bool isOfPulse = quantity.ofTable.empty();
  if (isOfPulse && analysis == nullptr) return values;
  const auto field = tables.Events.FindField(quantity.ofTable);
  values.reserve(rows.size());
  for (const std::uint32_t row : rows) {
    if (!isOfPulse) {
      values.push_back(field ? double{tables.Events.Singles(*field)[row]} : std::nan(""));
      continue;
    }
    const TPulse& pulse = analysis->Pulses[row];
    values.push_back(pulse.problem == TPulseProblem::None ? pulse.*quantity.ofPulse : std::nan(""));
  }
  return values;
}

std::vector<TDirection> DirectionsOf(std::span<const std::uint32_t> rows, const TMissionAnalysis& analysis) {
  std::vector<TDirection> directions;
  for (const std::uint32_t row : rows) {
    const TPulse& pulse = analysis.Pulses[row];
    if (pulse.problem == TPulseProblem::None) directions.push_back(pulse.direction);
  }
  return directions;
}
