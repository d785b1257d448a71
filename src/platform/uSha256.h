// The SHA-256 checksum of a file, by which a report names the recording that it was made from.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <span>
#include <string>

#include "base/uProgress.h"

// 64 hexadecimal digits. The progress has the file's size in MB as maximum and processes messages every MB. Throws
// std::filesystem::filesystem_error when the file cannot be read, and what `progress` throws.
std::string Sha256Of(const std::filesystem::path& file, IProgress& progress);

// By the system's library, of bytes that come piece by piece; an empty piece ends them. Throws std::bad_alloc when the
// library has no room, and what `next` throws.
using TSha256Sum = std::array<unsigned char, 32>;
using TNextPiece = std::function<std::span<const unsigned char>()>;
TSha256Sum Sha256OfPieces(const TNextPiece& next);
