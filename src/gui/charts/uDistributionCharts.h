// The two charts of how a quantity is distributed over events. Main thread only.
#pragma once

#include <QString>
#include <span>

#include "analysis/uEventQuantities.h"
#include "analysis/uShockStatistics.h"

class TCountChart;
class TExceedanceChart;

// `values` are those of the events, NaN where one has none. `there` is that of the reference of that name; it is left
// out where one of both is empty.
void ShowDistribution(const TEventQuantity& quantity, std::span<const double> values, const QString& reference,
                      const TDistribution& there, TCountChart& histogram, TExceedanceChart& exceedance);
