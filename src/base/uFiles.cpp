#include "base/uFiles.h"

#include <fmt/format.h>

#include <new>

namespace fs = std::filesystem;

fs::path PathFromUtf8(std::string_view utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8FromPath(fs::path path) {
  const std::u8string utf8 = path.make_preferred().u8string();
  return {utf8.begin(), utf8.end()};
}

bool IsSameFile(const fs::path& path, const fs::path& other) noexcept {
  std::error_code unknown;
  return fs::equivalent(path, other, unknown);
}

bool IsThere(const fs::path& path) noexcept {
  std::error_code unknown;
  return fs::exists(fs::symlink_status(path, unknown));
}

fs::path KeepAside(const fs::path& path) {
  if (!IsThere(path)) return path;
  fs::path other = path;
  other.replace_filename(path.stem().concat("-kept").concat(path.extension().native()));
  for (int number = 2; IsThere(other); ++number) {
    other.replace_filename(path.stem().concat(fmt::format("-kept-{}", number)).concat(path.extension().native()));
  }
  fs::rename(path, other);
  return other;
}

std::string MessageOf(const std::error_code& error) {
  return error.default_error_condition().message();
}

std::string ReasonOf(const std::exception& error) {
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return "There is not enough memory.";
  const auto* failure = dynamic_cast<const fs::filesystem_error*>(&error);
  return failure == nullptr ? error.what() : MessageOf(failure->code()) + ".";
}
