// Paths and files, with std::filesystem alone. Text inside the program is UTF-8, so is a path given as text.
#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string Utf8FromPath(const std::filesystem::path& path);

// Gives what stands at `path`, if anything does, another name beside it that no file has yet, "a.ini" becoming
// "a-kept.ini" or "a-kept-2.ini", and returns it. Throws std::filesystem::filesystem_error when that fails.
std::filesystem::path KeepAside(const std::filesystem::path& path);

// What went wrong, without the file that a std::filesystem::filesystem_error names.
std::string ReasonOf(const std::exception& error);
