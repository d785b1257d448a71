// "settings.ini" in the settings folder: read once while the window is created, written once while it closes.
#pragma once

#include <filesystem>

#include "shell/uIControls.h"
#include "shell/uSettingsSchema.h"

inline constexpr auto kSettingsFile = "settings.ini";

// The state in which a control is designed.
TControlValue DefaultOf(const TSetting& setting);

// Sets the window's controls. Without a file they stay as they were designed. A file that cannot be read, is larger
// than 1 MB, holds a NUL or none of the settings' sections is kept aside under another name; that throws
// std::runtime_error, with the reason and the name.
void ReadSettings(const std::filesystem::path& folder, IControls& screen);

// Writes the controls' states. What the file holds beyond them stays. Throws when the file cannot be written; the older
// one is then as it was.
void WriteSettings(const std::filesystem::path& folder, const IControls& screen);
