// Pinned events: copies that are drawn beside the selected event. Main thread only.
#pragma once

#include <cstddef>
#include <string>

#include "shell/uIMissionViews.h"

// Pins the selected event of this recording, or unpins it where it is pinned. Returns what was done, or why nothing
// was, for a notice.
std::string SwitchPin(TShownMission& mission, const std::string& file, IMissionViews& views);

// By the slot of a pinned event; any other slot changes nothing.
void SetPinVisible(TShownMission& mission, std::size_t slot, bool visible, IMissionViews& views);
void Unpin(TShownMission& mission, std::size_t slot, IMissionViews& views);

void UnpinAll(TShownMission& mission, IMissionViews& views);
void AlignPins(TShownMission& mission, TAlignment alignment, IMissionViews& views);
