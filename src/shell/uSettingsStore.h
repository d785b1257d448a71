// "settings.ini" in the settings folder: read once while the window is created, written once while it closes.
#pragma once

#include <filesystem>
#include <optional>

#include "shell/uSettings.h"

inline constexpr auto kSettingsFile = "settings.ini";

// Nothing when there is no file. A default stands in for what is missing or does not parse. A file that cannot be read,
// is larger than 1 MB, holds a NUL or none of the settings' sections is kept aside under another name; that throws
// std::runtime_error, with the reason and the name.
std::optional<TSettings> ReadSettings(const std::filesystem::path& folder);

// The same without a change to the folder: a file that cannot be read stays, and the exception has the reason alone.
std::optional<TSettings> LoadSettings(const std::filesystem::path& folder);

// What the file holds beyond the settings stays. Throws when the file cannot be written; the older one is then as it
// was.
void WriteSettings(const std::filesystem::path& folder, TSettings settings);
