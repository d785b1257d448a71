#include "analysis/uPointAbsorption.h"

std::vector<TEnvelopePoint> Envelope(std::span<const double> keys, std::span<const float> values, double from,
                                     double to, std::size_t columns) {
  std::vector<TEnvelopePoint> points;
  Envelope(
      keys.size(), [keys](std::size_t i) { return keys[i]; }, [values](std::size_t i) { return values[i]; }, {},
      {from, to, columns}, points);
  return points;
}

std::vector<std::size_t> ColumnPeaks(std::span<const double> keys, std::span<const float> values, double from,
                                     double to, std::size_t columns) {
  std::vector<std::size_t> peaks;
  ColumnPeaks(
      keys.size(), [keys](std::size_t i) { return keys[i]; }, [values](std::size_t i) { return values[i]; }, {},
      {from, to, columns}, peaks);
  return peaks;
}
