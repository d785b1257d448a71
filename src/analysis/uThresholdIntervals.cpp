#include "analysis/uThresholdIntervals.h"

std::vector<std::pair<std::size_t, std::size_t>> ThresholdIntervals(std::span<const TEventValue> samples,
                                                                    const TThresholds& levels) {
  std::vector<std::pair<std::size_t, std::size_t>> intervals;
  bool above = false;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double magnitude = Magnitude(samples[i]);
    if (!above) {
      // The sample that begins an interval is not tested for its end.
      above = magnitude >= levels.totOn;
      begin = i;
    } else if (magnitude < levels.totOff || i + 1 == samples.size()) {
      intervals.emplace_back(begin, i);
      above = false;
    }
  }
  return intervals;
}
