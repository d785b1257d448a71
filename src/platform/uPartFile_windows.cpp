#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>

#include <array>
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

// No locks are needed here: a file that somebody has open cannot be opened by those who share it with nobody. So
// "locked" means open.
namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = ".shockscope-";
constexpr std::string_view kFileSuffix = ".part";
constexpr std::string_view kFolderSuffix = ".tmp";
constexpr const wchar_t* kLockName = L".shockscope.lock";
constexpr std::size_t kDigits = 8;
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kPause = std::chrono::milliseconds(5);

// The C library's numbers, which the rest of the program compares and prints.
int ErrnoOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return EACCES;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_FILENAME_EXCED_RANGE:
      return ENAMETOOLONG;
    case ERROR_INVALID_NAME:
      return EINVAL;
    case ERROR_TOO_MANY_OPEN_FILES:
      return EMFILE;
    default:
      return EIO;
  }
}

[[noreturn]] void ThrowLastError() {
  throw std::system_error(ErrnoOf(GetLastError()), std::generic_category());
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

HANDLE HandleOf(int descriptor) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

// A descriptor, or -1 with the reason in GetLastError.
int Open(const fs::path& path, DWORD access, DWORD share, DWORD creation, DWORD flags) {
  const HANDLE handle = CreateFileW(path.c_str(), access, share, nullptr, creation, flags, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return -1;
  const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
  if (descriptor < 0) {
    CloseHandle(handle);
    SetLastError(ERROR_TOO_MANY_OPEN_FILES);
  }
  return descriptor;
}

// Deletes a file, or an empty folder, that nobody has open.
void RemoveUnlessOpen(const fs::path& path) noexcept {
  const DWORD flags = FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS;
  const HANDLE handle = CreateFileW(path.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, flags, nullptr);
  if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
}

void RemoveScratchFolder(const fs::path& folder) noexcept {
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      if (fs::is_regular_file(entry.symlink_status()) && entry.file_size() == 0) RemoveUnlessOpen(entry.path());
    }
  } catch (const std::exception&) {  // it is gone
  }
  RemoveUnlessOpen(folder);
}

bool IsFileIn(const std::wstring& folder, HANDLE file) {
  std::array<wchar_t, 32768> path;  // the system's limit
  const DWORD length = GetFinalPathNameByHandleW(file, path.data(), path.size(), FILE_NAME_NORMALIZED);
  return length > 0 && length < path.size() && fs::path(std::wstring(path.data(), length)).parent_path() == folder;
}

// Calls act(folder, descriptor) for this program's open files of the folder.
template <class TAct>
void ForEachOpenFile(int folder, const TAct& act) noexcept {
  try {
    std::array<wchar_t, 32768> path;
    const DWORD length = GetFinalPathNameByHandleW(HandleOf(folder), path.data(), path.size(), FILE_NAME_NORMALIZED);
    const std::wstring real(path.data(), length < path.size() ? length : 0);
    for (int descriptor = 3; !real.empty() && descriptor < _getmaxstdio(); ++descriptor) {
      const HANDLE file = HandleOf(descriptor);
      if (file != INVALID_HANDLE_VALUE && GetFileType(file) == FILE_TYPE_DISK && IsFileIn(real, file)) {
        act(real, descriptor);
      }
    }
  } catch (const std::exception&) {  // no memory for the paths
  }
}

// A virus scanner or an indexer may have the new file or the target open for a moment.
bool Replace(const fs::path& from, const fs::path& to) {
  for (auto left = kPatience; left.count() > 0; left -= kPause) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return true;
    if (GetLastError() != ERROR_SHARING_VIOLATION && GetLastError() != ERROR_ACCESS_DENIED) return false;
    std::this_thread::sleep_for(kPause);
  }
  return false;
}

}  // namespace

TPartFile::TPartFile(const fs::path& folder) {
  do {
    FPath = folder / NewName(kFileSuffix);
    FDescriptor = Open(FPath, GENERIC_READ | GENERIC_WRITE, kShared, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
  } while (FDescriptor < 0 && GetLastError() == ERROR_FILE_EXISTS);
  if (FDescriptor < 0) ThrowLastError();
}

TPartFile::~TPartFile() {
  if (FDescriptor >= 0) _close(FDescriptor);
  if (!FPath.empty()) DeleteFileW(FPath.c_str());
}

TPartFile::TPartFile(TPartFile&& other) noexcept
    : FPath(std::exchange(other.FPath, {})), FDescriptor(std::exchange(other.FDescriptor, -1)) {}

// Only an administrator may wait for a whole volume. So each file counts as one of its own.
std::uint64_t TPartFile::FileSystem() const {
  return static_cast<std::uint64_t>(FDescriptor);
}

void TPartFile::Sync() const {
  if (FlushFileBuffers(HandleOf(FDescriptor)) == 0) ThrowLastError();
}

void TPartFile::SyncFileSystem() const {
  Sync();
}

void TPartFile::RenameTo(const fs::path& target) {
  if (!Replace(FPath, target)) ThrowLastError();
  FPath.clear();
}

// The folder is not shared for deletion, so others cannot remove it.
TScratchFolder::TScratchFolder(const fs::path& folder) {
  do {
    FPath = folder / NewName(kFolderSuffix);
  } while (CreateDirectoryW(FPath.c_str(), nullptr) == 0 && GetLastError() == ERROR_ALREADY_EXISTS);
  FDescriptor =
      Open(FPath, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  if (FDescriptor < 0) ThrowLastError();
}

// The streams of these files stay, and what they have not yet written would go to the next file with the number of
// theirs. So they write it to nowhere first.
TScratchFolder::~TScratchFolder() {
  const int nowhere = _open("NUL", _O_WRONLY | _O_NOINHERIT);
  std::vector<int> left;
  ForEachOpenFile(FDescriptor, [&left, nowhere](const std::wstring&, int descriptor) {
    left.push_back(descriptor);
    _dup2(nowhere, descriptor);
  });
  if (!left.empty()) std::fflush(nullptr);
  for (const int descriptor : left) _close(descriptor);
  if (nowhere >= 0) _close(nowhere);
  _close(FDescriptor);
  RemoveScratchFolder(FPath);
}

// A file of that name, which nobody else may open: a folder itself cannot be locked.
TFolderLock::TFolderLock(const fs::path& folder) noexcept : FDescriptor(-1) {
  try {
    const fs::path name = folder / kLockName;
    for (auto left = kPatience; left.count() > 0; left -= kPause) {
      FDescriptor = Open(name, GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE);
      if (FDescriptor >= 0 || GetLastError() != ERROR_SHARING_VIOLATION) return;
      std::this_thread::sleep_for(kPause);
    }
  } catch (const std::exception&) {  // no memory for the name
  }
}

TFolderLock::~TFolderLock() {
  if (FDescriptor >= 0) _close(FDescriptor);
}

// The owner may close a descriptor at any time, and its number may then belong to another file. So the file is checked
// again behind a handle of our own, which shares the position.
void TScratchFolder::Cut() const noexcept {
  ForEachOpenFile(FDescriptor, [](const std::wstring& folder, int descriptor) {
    HANDLE again = nullptr;
    const HANDLE self = GetCurrentProcess();
    if (DuplicateHandle(self, HandleOf(descriptor), self, &again, 0, FALSE, DUPLICATE_SAME_ACCESS) == 0) return;
    if (IsFileIn(folder, again)) {
      SetFilePointer(again, 0, nullptr, FILE_BEGIN);
      SetEndOfFile(again);
    }
    CloseHandle(again);
  });
}

void SyncEarly(const fs::path& file) noexcept {
  const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return;
  FlushFileBuffers(handle);
  CloseHandle(handle);
}

// The file system's journal keeps names in order.
void SyncFolder(const fs::path& /*folder*/) noexcept {}

void RemoveAbandonedParts(const fs::path& folder) noexcept {
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.empty() ? fs::path(".") : folder)) {
      const std::string name = entry.path().filename().string();
      if (IsName(name, kFileSuffix) && fs::is_regular_file(entry.symlink_status())) {
        RemoveUnlessOpen(entry.path());
      } else if (IsName(name, kFolderSuffix) && fs::is_directory(entry.symlink_status())) {
        RemoveScratchFolder(entry.path());
      }
    }
  } catch (const std::exception&) {  // a folder that cannot be listed
  }
}
