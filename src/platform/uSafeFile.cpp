#include "platform/uSafeFile.h"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <set>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int kMaxLinks = 40;

template <class TDo>
void Named(const fs::path& target, const TDo& act) {
  try {
    act();
  } catch (const std::system_error& error) {
    throw fs::filesystem_error("The file cannot be written", target, error.code());
  }
}

fs::path BehindLinks(const fs::path& target) {
  fs::path real = target;
  for (int links = 0; fs::is_symlink(real) && links < kMaxLinks; ++links) {
    real = real.parent_path() / fs::read_symlink(real);
  }
  return real;
}

// The permissions of the file that is replaced; nothing when there is none.
std::optional<fs::perms> PermissionsToKeep(const fs::path& real) {
  if (!fs::exists(real)) return std::nullopt;
  if (!fs::is_regular_file(real)) {
    throw std::system_error(
        std::make_error_code(fs::is_directory(real) ? std::errc::is_a_directory : std::errc::invalid_argument));
  }
  const fs::perms mode = fs::status(real).permissions();
  if ((mode & fs::perms::owner_write) == fs::perms::none) {
    throw std::system_error(std::make_error_code(std::errc::permission_denied));
  }
  return mode;
}

}  // namespace

void TFileSet::Write(const fs::path& target, const TFileWriter& write) {
  Named(target, [&] {
    const fs::path real = BehindLinks(target);
    const std::optional<fs::perms> mode = PermissionsToKeep(real);
    if (FCleaned != real.parent_path()) RemoveAbandonedParts(FCleaned.emplace(real.parent_path()));
    TPartFile part(real.parent_path());
    if (mode) fs::permissions(part.Path(), *mode);
    write(part.Path());
    FWaiting.push_back({std::move(part), target, real});
  });
}

void TFileSet::Sync() const {
  std::set<std::uint64_t> synced;
  for (const TWaiting& waiting : FWaiting) {
    Named(waiting.target, [&] {
      if (FWaiting.size() == 1) {
        waiting.part.Sync();
      } else if (synced.insert(waiting.part.FileSystem()).second) {
        waiting.part.SyncFileSystem();
      }
    });
  }
}

void TFileSet::PutInPlace() {
  while (!FWaiting.empty()) {
    TWaiting waiting = std::move(FWaiting.front());
    FWaiting.pop_front();
    Named(waiting.target, [&] { waiting.part.RenameTo(waiting.real); });
    const fs::path folder = waiting.real.parent_path();
    if (FWaiting.empty() || FWaiting.front().real.parent_path() != folder) SyncFolder(folder);
  }
}

void WriteBesideAndRename(const fs::path& target, const TFileWriter& write) {
  TFileSet files;
  files.Write(target, write);
  files.Sync();
  files.PutInPlace();
}

void SaveFile(const fs::path& target, std::string_view bytes) {
  WriteBesideAndRename(target, [bytes](const fs::path& beside) {
    errno = 0;
    std::ofstream file(beside, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
  });
}
