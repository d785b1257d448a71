// The conditions of the event filter in words. Main thread only.
#pragma once

#include <string>

#include "analysis/uEventFilter.h"
#include "shell/uSettings.h"

// "Acceleration max from 6 g · peak on X-pos or Y-neg · start from 26-03-02 00:00:00 · above alarm"; empty without a
// condition. Limits stand as they were typed.
std::string FilterWords(const TEventFilter& filter, const TDisplaySettings& settings);
