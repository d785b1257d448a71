// The high-pass filter of the selected event's curves. Pure function; any thread.
#pragma once

#include <span>
#include <vector>

#include "model/uEvents.h"

struct TFilteredValue {
  double time;     // ms, that of the sample
  double x, y, z;  // g
  double total;    // g, sqrt(x² + y² + z²) of the filtered axes
};

// Takes the constant part and the slowest oscillation out of each axis: transforms the first N = SpectrumSizeFor(n)
// samples, padded with zeros, sets spectral lines 1 and 2 to 0 and transforms back. One value for each transformed
// sample, min(n, N) in all; none for the padding. Times are passed on as they are. An axis with a sample that is not
// finite becomes NaN as a whole, and so does the total.
//
// Kept on purpose: only lines 1 and 2 go. The mirror image of line 2, line N, stays and with it half of the slowest
// oscillation; a padded event keeps a step at its end, so a constant goes to zero only when n is at least N.
std::vector<TFilteredValue> HighPassFiltered(std::span<const TEventValue> samples);
