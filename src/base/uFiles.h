// Paths and files, with std::filesystem alone. Text inside the program is UTF-8, so is a path given as text.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string Utf8FromPath(const std::filesystem::path& path);

// Gives what stands at `path`, if anything does, another name beside it that no file has yet, "a.ini" becoming
// "a-kept.ini" or "a-kept-2.ini", and returns it. Throws std::filesystem::filesystem_error when that fails.
std::filesystem::path KeepAside(const std::filesystem::path& path);

// Writes a file beside the wanted one and renames it into place, so that a failure never costs an older file: `write`
// gets the path to write to; whatever it throws leaves nothing behind. A link is followed, the permissions are kept.
// Throws std::filesystem::filesystem_error when the target is something else than a file, write-protected, or cannot be
// replaced.
void WriteBesideAndRename(const std::filesystem::path& target,
                          const std::function<void(const std::filesystem::path&)>& write);
