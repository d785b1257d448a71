// The SHA-256 checksum of a file, by which a report names the recording that it was made from.
#pragma once

#include <filesystem>
#include <string>

#include "base/uProgress.h"

// 64 hexadecimal digits. The progress has the file's size in MB as maximum and processes messages every MB. Throws
// std::filesystem::filesystem_error when the file cannot be read, and what `progress` throws.
std::string Sha256Of(const std::filesystem::path& file, IProgress& progress);
