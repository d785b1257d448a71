// A temporary file beside the file that it will replace: ".shockscope-", eight hexadecimal digits and ".part". It is
// locked until it is renamed or removed, so an unlocked one was left by a killed run.
#pragma once

#include <cstdint>
#include <filesystem>

class TPartFile {
 public:
  // Makes an empty file in the folder; an empty path is the current one. Throws std::system_error.
  explicit TPartFile(const std::filesystem::path& folder);
  // Removes the file unless it was renamed.
  ~TPartFile();
  TPartFile(TPartFile&& other) noexcept;
  TPartFile& operator=(TPartFile&&) = delete;

  // The path to open for writing.
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // The same number for files of the same file system.
  [[nodiscard]] std::uint64_t FileSystem() const;
  // Wait until the disk has the file, or all of its file system. Throw std::system_error if writing fails; do nothing
  // on a file system without sync. Any thread.
  void Sync() const;
  void SyncFileSystem() const;
  // Throws std::system_error.
  void RenameTo(const std::filesystem::path& target);

 private:
  std::filesystem::path FPath;  // empty once it is renamed or moved from
  int FDescriptor = -1;
};

// A folder ".shockscope-", eight hexadecimal digits and ".tmp" for a library that creates temporary files and unlinks
// them. Locked like a TPartFile.
class TScratchFolder {
 public:
  // Throws std::system_error.
  explicit TScratchFolder(const std::filesystem::path& folder);
  // Removes the folder and the empty files in it, and closes what the library left open.
  ~TScratchFolder();
  TScratchFolder(const TScratchFolder&) = delete;
  TScratchFolder& operator=(const TScratchFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // Truncates all open files of the folder, also unlinked ones: readers reach the end, writers start at the beginning.
  // Has no effect if the system cannot do that. Any thread.
  void Cut() const noexcept;

 private:
  std::filesystem::path FPath;
  int FDescriptor = -1;
};

// Locks a folder against other processes. Waits at most half a second and then continues without the lock: a hanging
// program must not block another's close.
class TFolderLock {
 public:
  explicit TFolderLock(const std::filesystem::path& folder) noexcept;
  ~TFolderLock();
  TFolderLock(const TFolderLock&) = delete;
  TFolderLock& operator=(const TFolderLock&) = delete;

 private:
  int FDescriptor;
};

// Waits until the disk has the folder's entries, if its file system supports that.
void SyncFolder(const std::filesystem::path& folder) noexcept;

// Removes only what killed runs left in the folder: no locked file, no link, no other name, and temporary folders only
// if they hold nothing but empty files. Ignores what cannot be removed.
void RemoveAbandonedParts(const std::filesystem::path& folder) noexcept;
