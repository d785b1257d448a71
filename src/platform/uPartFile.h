// A file in work, beside the file that it will replace: ".shockscope-", eight hexadecimal digits and ".part". It is
// locked until it is renamed or removed, so a file of that name without a lock was left by a run that was killed.
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

  // Whoever writes opens it by this path.
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // The same number for files of the same file system.
  [[nodiscard]] std::uint64_t FileSystem() const;
  // Wait until the disk has the file, or everything written to its file system since the file was made. Throw
  // std::system_error when the disk does not take it; a file system that knows no such wait is left alone. Any thread.
  void Sync() const;
  void SyncFileSystem() const;
  // Throws std::system_error.
  void RenameTo(const std::filesystem::path& target);

 private:
  std::filesystem::path FPath;  // empty once it is renamed or moved from
  int FDescriptor = -1;
};

// A folder ".shockscope-", eight hexadecimal digits and ".tmp" for a library whose files have a name for a moment
// before they become nameless. Locked like a file in work.
class TScratchFolder {
 public:
  // Throws std::system_error.
  explicit TScratchFolder(const std::filesystem::path& folder);
  // Removes the folder and the empty files in it, and closes what the library left open.
  ~TScratchFolder();
  TScratchFolder(const TScratchFolder&) = delete;
  TScratchFolder& operator=(const TScratchFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // Takes away what stands in the files that are open there, with or without a name: who reads one comes to its end,
  // what is written then goes to its beginning. As far as the system can do that. Any thread.
  void Cut() const noexcept;

 private:
  std::filesystem::path FPath;
  int FDescriptor = -1;
};

// Keeps everybody else who locks the folder waiting while it lives. It waits for half a second itself and then goes
// on without the lock: a program that hangs must not keep another from its end.
class TFolderLock {
 public:
  explicit TFolderLock(const std::filesystem::path& folder) noexcept;
  ~TFolderLock();
  TFolderLock(const TFolderLock&) = delete;
  TFolderLock& operator=(const TFolderLock&) = delete;

 private:
  int FDescriptor;
};

// Has the disk take a file now, so that Sync waits less; that one also says what goes wrong. Any thread.
void SyncEarly(const std::filesystem::path& file) noexcept;

// Waits until the disk has the names of the folder's files, as far as its file system can tell.
void SyncFolder(const std::filesystem::path& folder) noexcept;

// Removes what killed runs left in the folder, and nothing else: nothing that is locked, no link, no other name, and of
// the scratch folders only those that hold empty files alone. What cannot be removed stays.
void RemoveAbandonedParts(const std::filesystem::path& folder) noexcept;
