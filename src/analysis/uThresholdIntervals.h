// Where an event lies over its levels. Pure function; any thread.
#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "analysis/uShockMetrics.h"
#include "model/uEvents.h"

// The intervals that CalcTimeOverThreshold sums, as the numbers of their first sample and of the sample that ends them.
// One that begins at the last sample has no length and is left out.
std::vector<std::pair<std::size_t, std::size_t>> ThresholdIntervals(std::span<const TEventValue> samples,
                                                                    const TThresholds& levels);
