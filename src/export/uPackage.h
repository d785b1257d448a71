// The look through a finished workbook before it takes the place of an older one. Any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <stop_token>

// Unpacks every part: its checksum is right, and its text ends with the closing tag of its root. Sheet i holds rows[i]
// rows, and there are no other sheets. Throws std::system_error, that of a full disk, when something is missing.
// Stopped, it returns early.
void CheckPackage(const std::filesystem::path& file, std::span<const std::size_t> rows, const std::stop_token& stop);
