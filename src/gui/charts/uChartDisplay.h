// Applies the display settings to charts: colours, limits, names, formats. Main thread only.
#pragma once

#include "shell/uSettings.h"

class TAccelerationChart;
class TEventsChart;
class TSelectedEventChart;
class TSensorsChart;

void ApplyDisplay(const TDisplaySettings& display, TEventsChart& chart);
void ApplyDisplay(const TDisplaySettings& display, TSelectedEventChart& chart);
void ApplyDisplay(const TDisplaySettings& display, TSensorsChart& chart);
void ApplyColours(const TDisplaySettings& display, TAccelerationChart& chart);
