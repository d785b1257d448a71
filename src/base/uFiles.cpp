#include "base/uFiles.h"

#include <fmt/format.h>

#include <random>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr int kMaxLinks = 40;

}  // namespace

fs::path PathFromUtf8(std::string_view utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8FromPath(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

fs::path KeepAside(const fs::path& path) {
  if (!fs::exists(fs::symlink_status(path))) return path;
  fs::path other = path;
  other.replace_filename(path.stem().concat("-kept").concat(path.extension().native()));
  for (int number = 2; fs::exists(fs::symlink_status(other)); ++number) {
    other.replace_filename(path.stem().concat(fmt::format("-kept-{}", number)).concat(path.extension().native()));
  }
  fs::rename(path, other);
  return other;
}

void WriteBesideAndRename(const fs::path& target, const std::function<void(const fs::path&)>& write) {
  fs::path real = target;
  for (int links = 0; fs::is_symlink(real) && links < kMaxLinks; ++links) {
    real = real.parent_path() / fs::read_symlink(real);
  }
  if (fs::exists(real) && !fs::is_regular_file(real)) {
    const std::errc reason = fs::is_directory(real) ? std::errc::is_a_directory : std::errc::invalid_argument;
    throw fs::filesystem_error("not a file that can be replaced", real, std::make_error_code(reason));
  }
  const bool replaces = fs::exists(real);
  const fs::perms mode = replaces ? fs::status(real).permissions() : fs::perms::unknown;
  if (replaces && (mode & fs::perms::owner_write) == fs::perms::none) {
    throw fs::filesystem_error("write-protected", real, std::make_error_code(std::errc::permission_denied));
  }
  const fs::path beside = real.parent_path() / fmt::format(".shockscope-{:08x}.part", std::random_device{}());
  try {
    write(beside);
    if (replaces) fs::permissions(beside, mode);
    fs::rename(beside, real);
  } catch (...) {
    std::error_code ignored;
    fs::remove(beside, ignored);
    throw;
  }
}
