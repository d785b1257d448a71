// The conditions of the event filter in words. Main thread only.
#pragma once

#include <string>
#include <string_view>

#include "analysis/uEventFilter.h"
#include "shell/uSettings.h"

// "Acceleration max from 6 g · peak on X-pos or Y-neg · start from 26-03-02 00:00:00 · above alarm"; empty without a
// condition. Limits stand as they were typed.
std::string FilterWords(const TEventFilter& filter, const TDisplaySettings& settings);

// "start from 26-03-02 00:00:00 to 26-03-03 00:00:00", with the given name in front.
std::string TimeWords(std::string_view name, const TRange& time, const TDisplaySettings& settings);
