// The mission header as four short lines of text. Dates follow the short date format.
#pragma once

#include <string>

#include "model/uGlobalSharedVariables.h"

// How the recording starts and stops.
std::string StartStopText(const TMissionData& Data);
// The trigger level in g and the shock sampling rate in Hz, "?" when the period gives no rate.
std::string LimitText(const TMissionData& Data);
// The slow channels that are on and their interval in s; "-" when none is.
std::string StdChannelsText(const TMissionData& Data);
// The options that are on; empty when none is.
std::string OptionsText(const TMissionData& Data);
