#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <exception>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/uPartFile.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = ".shockscope-";
constexpr std::string_view kFileSuffix = ".part";
constexpr std::string_view kFolderSuffix = ".tmp";
constexpr std::size_t kDigits = 8;
constexpr mode_t kForAll = 0666;  // less what the user's mask takes
constexpr mode_t kForOwner = 0700;

[[noreturn]] void ThrowLastError() {
  throw std::system_error(errno, std::generic_category());
}

fs::path NewName(std::string_view suffix) {
  return fmt::format("{}{:0{}x}{}", kPrefix, std::random_device{}(), kDigits, suffix);
}

bool IsName(std::string_view name, std::string_view suffix) {
  if (name.size() != kPrefix.size() + kDigits + suffix.size()) return false;
  const std::string_view digits = name.substr(kPrefix.size(), kDigits);
  return name.starts_with(kPrefix) && name.ends_with(suffix) &&
         digits.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// False when another program removed the new file before it was locked. Where the file system has no locks nothing is
// ever removed.
bool LockNew(int file) {
  if (flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  struct stat status {};
  return fstat(file, &status) == 0 && status.st_nlink > 0;
}

void RequireSynced(int result) {
  if (result != 0 && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) ThrowLastError();
}

// The owner renames or removes its file before it unlocks it; so once we have the lock, the name is abandoned or gone.
template <class TRemove>
void IfUnlocked(const fs::path& path, int flags, const TRemove& remove) {
  const int descriptor = open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) remove();
  close(descriptor);
}

void RemoveScratchFolder(const fs::path& folder) noexcept {
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      if (fs::is_regular_file(entry.symlink_status()) && entry.file_size() == 0) unlink(entry.path().c_str());
    }
  } catch (const std::exception&) {  // it is gone
  }
  rmdir(folder.c_str());
}

constexpr const char* kDescriptors = "/dev/fd";

bool IsFileIn(const fs::path& folder, const fs::path& descriptor) {
  std::error_code error;
  return fs::read_symlink(descriptor, error).parent_path() == folder;
}

// Calls act(folder, descriptor) for this program's open files of the folder, also unlinked ones.
template <class TAct>
void ForEachOpenFile(const fs::path& folder, const TAct& act) noexcept {
  try {
    const fs::path real = fs::canonical(folder);
    for (const fs::directory_entry& entry : fs::directory_iterator(kDescriptors)) {
      if (IsFileIn(real, entry.path())) act(real, std::stoi(entry.path().filename()));
    }
  } catch (const std::exception&) {  // no /dev/fd
  }
}

}  // namespace

TPartFile::TPartFile(const fs::path& folder) {
  while (true) {
    FPath = folder / NewName(kFileSuffix);
    FDescriptor = open(FPath.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kForAll);
    if (FDescriptor < 0 && errno != EEXIST) ThrowLastError();
    if (FDescriptor >= 0 && LockNew(FDescriptor)) return;
    if (FDescriptor >= 0) close(FDescriptor);
  }
}

TPartFile::~TPartFile() {
  if (!FPath.empty()) unlink(FPath.c_str());
  if (FDescriptor >= 0) close(FDescriptor);
}

TPartFile::TPartFile(TPartFile&& other) noexcept
    : FPath(std::exchange(other.FPath, {})), FDescriptor(std::exchange(other.FDescriptor, -1)) {}

std::uint64_t TPartFile::FileSystem() const {
  struct stat status {};
  if (fstat(FDescriptor, &status) != 0) ThrowLastError();
  return status.st_dev;
}

void TPartFile::Sync() const {
  RequireSynced(fsync(FDescriptor));
}

void TPartFile::SyncFileSystem() const {
  RequireSynced(syncfs(FDescriptor));
}

void TPartFile::RenameTo(const fs::path& target) {
  if (std::rename(FPath.c_str(), target.c_str()) != 0) ThrowLastError();
  FPath.clear();
}

TScratchFolder::TScratchFolder(const fs::path& folder) {
  while (true) {
    FPath = folder / NewName(kFolderSuffix);
    if (mkdir(FPath.c_str(), kForOwner) != 0) {
      if (errno == EEXIST) continue;
      ThrowLastError();
    }
    FDescriptor = open(FPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (FDescriptor >= 0 && LockNew(FDescriptor)) return;
    if (FDescriptor < 0 && errno != ENOENT) {
      const int reason = errno;
      rmdir(FPath.c_str());
      throw std::system_error(reason, std::generic_category());
    }
    if (FDescriptor >= 0) close(FDescriptor);
  }
}

// The streams of these files stay, and what they have not yet written would go to the next file with the number of
// theirs. So they write it to nowhere first.
TScratchFolder::~TScratchFolder() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  std::vector<int> left;
  ForEachOpenFile(FPath, [&left, nowhere](const fs::path&, int descriptor) {
    left.push_back(descriptor);
    dup2(nowhere, descriptor);
  });
  if (!left.empty()) std::fflush(nullptr);
  for (const int descriptor : left) close(descriptor);
  if (nowhere >= 0) close(nowhere);
  RemoveScratchFolder(FPath);
  close(FDescriptor);
}

TFolderLock::TFolderLock(const fs::path& folder) noexcept
    : FDescriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  constexpr auto kPause = std::chrono::milliseconds(5);
  for (auto left = std::chrono::milliseconds(500); left.count() > 0; left -= kPause) {
    if (FDescriptor < 0 || flock(FDescriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
    std::this_thread::sleep_for(kPause);
  }
}

TFolderLock::~TFolderLock() {
  if (FDescriptor >= 0) close(FDescriptor);
}

// The owner may close a descriptor at any time, and its number may then belong to another file. So the file is reopened
// and checked again before it is truncated.
void TScratchFolder::Cut() const noexcept {
  ForEachOpenFile(FPath, [](const fs::path& folder, int descriptor) {
    const std::string name = fmt::format("{}/{}", kDescriptors, descriptor);
    const int again = open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (again < 0) return;
    if (IsFileIn(folder, fmt::format("{}/{}", kDescriptors, again))) {
      fcntl(descriptor, F_SETFL, O_APPEND);  // else the next write leaves a hole as long as the old file
      [[maybe_unused]] const int uncut = ftruncate(again, 0);
    }
    close(again);
  });
}

void SyncEarly(const fs::path& file) noexcept {
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

void SyncFolder(const fs::path& folder) noexcept {
  SyncEarly(folder.empty() ? fs::path(".") : folder);
}

void RemoveAbandonedParts(const fs::path& folder) noexcept {
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.empty() ? fs::path(".") : folder)) {
      const fs::path& path = entry.path();
      const std::string name = path.filename();
      if (IsName(name, kFileSuffix) && fs::is_regular_file(entry.symlink_status())) {
        IfUnlocked(path, O_RDWR, [&path] { unlink(path.c_str()); });
      } else if (IsName(name, kFolderSuffix) && fs::is_directory(entry.symlink_status())) {
        IfUnlocked(path, O_RDONLY | O_DIRECTORY, [&path] { RemoveScratchFolder(path); });
      }
    }
  } catch (const std::exception&) {  // a folder that cannot be listed
  }
}
