// Goes to what the user types: an event by its ID, or a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/uIMissionViews.h"

// A date in the program's format or as yyyy-mm-dd, a time of day hh:nn[:ss[.zzz]], or both with a space between. A date
// alone is its midnight, a time of day alone the first one at or after `from`. Nothing for any other text.
std::optional<double> TypedTime(std::string_view typed, double from);

// Selects the event and moves the band to it where it is out of sight, or moves the band around the time. Returns why
// nothing was done, else an empty text.
[[nodiscard]] std::string GoTo(TShownMission& mission, std::string_view typed, IMissionViews& views);
