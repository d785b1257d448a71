// Paths and files, with std::filesystem alone. Text inside the program is UTF-8, so is a path given as text.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string Utf8FromPath(const std::filesystem::path& path);

// Writes a file beside the wanted one and renames it into place, so that a failure never costs an older file: `write`
// gets the path to write to; whatever it throws leaves nothing behind. A link is followed, the permissions are kept.
// Throws std::filesystem::filesystem_error when the target is something else than a file, write-protected, or cannot be
// replaced.
void WriteBesideAndRename(const std::filesystem::path& target,
                          const std::function<void(const std::filesystem::path&)>& write);

// Gives a file another name beside its own, so that a new one can take its place; the new name, or nothing when it
// cannot be renamed.
std::optional<std::filesystem::path> KeepAside(const std::filesystem::path& path);
