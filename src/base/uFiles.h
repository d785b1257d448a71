// Paths and files. Text inside the program is UTF-8, also a path that is given as text.
#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

std::filesystem::path PathFromUtf8(std::string_view utf8);
// With the separators that the system itself writes.
std::string Utf8FromPath(std::filesystem::path path);

// True when both paths lead to one file that exists.
bool IsSameFile(const std::filesystem::path& path, const std::filesystem::path& other) noexcept;

// True also for a link that leads nowhere, through which nothing may be written.
bool IsThere(const std::filesystem::path& path) noexcept;

// Renames the file at `path` to the first free name of "a-kept.ini", "a-kept-2.ini" … and returns the new path. Returns
// `path` when nothing is there. Throws std::filesystem::filesystem_error.
std::filesystem::path KeepAside(const std::filesystem::path& path);

// In English, where a system translates its own messages, too.
std::string MessageOf(const std::error_code& error);

// The reason of an error as a sentence, without the file that a std::filesystem::filesystem_error names.
std::string ReasonOf(const std::exception& error);
