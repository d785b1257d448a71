// Checks a finished workbook before it replaces an older one. Any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <stop_token>

// Unpacks every part and requires that its checksum is right, that it ends with the closing tag of its root, that sheet
// i has rows[i] rows and that there are no other sheets. Else throws std::system_error with no_space_on_device. Returns
// early when stopped.
void CheckPackage(const std::filesystem::path& file, std::span<const std::size_t> rows, const std::stop_token& stop);
