// The look through a package of XML parts, such as a spreadsheet file is, before it takes the place of an older one.
// Any thread.
#pragma once

#include <filesystem>
#include <stop_token>

// Unpacks every part: its sum is right, and its text goes to the closing tag of its root. Throws std::system_error,
// that of a full disk, when one is not whole. Ends early, without a word, when it is stopped.
void CheckPackage(const std::filesystem::path& file, const std::stop_token& stop);
