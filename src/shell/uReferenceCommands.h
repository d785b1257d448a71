// The reference: what of one mission others are compared with. Main thread only.
#pragma once

#include <filesystem>
#include <string>

#include "shell/uIMissionViews.h"

// Makes the shown mission the reference; `file` is its recording. Its pulses follow with the shock analysis, which is
// begun. Returns what was done, for a notice.
std::string UseAsReference(TShownMission& mission, const std::string& file, IMissionViews& views);
void ClearReference(TShownMission& mission, IMissionViews& views);
// Whether the user layout has the reference when it is saved.
void KeepReference(TShownMission& mission, bool keep, IMissionViews& views);

// Makes the reference of a layout file the one in force; a file without one changes nothing. Throws as ReadReference.
void TakeKeptReference(const std::filesystem::path& layout, TShownMission& mission, IMissionViews& views);
