// What the shown recording is compared with: pinned events, copies that are drawn beside the selected event, and the
// reference, what of one mission others are compared with. Main thread only.
#pragma once

#include <cstddef>
#include <filesystem>
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

// Makes the shown mission the reference; `file` is its recording. Its pulses follow with the shock analysis, which is
// begun. Returns what was done, for a notice.
std::string UseAsReference(TShownMission& mission, const std::string& file, IMissionViews& views);
void ClearReference(TShownMission& mission, IMissionViews& views);
// Whether the user layout has the reference when it is saved.
void KeepReference(TShownMission& mission, bool keep, IMissionViews& views);

// Makes the reference of a layout file the one in force; a file without one changes nothing. Throws as ReadReference.
void TakeKeptReference(const std::filesystem::path& layout, TShownMission& mission, IMissionViews& views);
