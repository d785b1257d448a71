// A temporary file ".shockscope-01234abc.part" beside the file that it will replace. It is locked until it is renamed
// or removed, so such a file without a lock was left by a run that was killed.
#pragma once

#include <cstdint>
#include <filesystem>

class TPartFile {
 public:
  // Creates an empty file in the folder; an empty path is the current folder. Throws std::system_error.
  explicit TPartFile(const std::filesystem::path& folder);
  // Removes the file unless it was renamed.
  ~TPartFile();
  TPartFile(TPartFile&& other) noexcept;
  TPartFile& operator=(TPartFile&&) = delete;

  // Open it by this path to write.
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // The same number for files of the same file system.
  [[nodiscard]] std::uint64_t FileSystem() const;
  // Wait until the disk has the file, or everything that was written to its file system. Throw std::system_error when
  // that fails, but not when the file system cannot sync. Any thread.
  void Sync() const;
  void SyncFileSystem() const;
  // Throws std::system_error.
  void RenameTo(const std::filesystem::path& target);

 private:
  std::filesystem::path FPath;  // empty once it is renamed or moved from
  int FDescriptor = -1;
};

// A folder ".shockscope-01234abc.tmp" for a library that creates temporary files and then unlinks them. Locked like a
// TPartFile.
class TScratchFolder {
 public:
  // Throws std::system_error.
  explicit TScratchFolder(const std::filesystem::path& folder);
  // Closes the files that the library left open there, and removes the folder with its empty files.
  ~TScratchFolder();
  TScratchFolder(const TScratchFolder&) = delete;
  TScratchFolder& operator=(const TScratchFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }
  // Truncates the files of the folder that this program has open, also unlinked ones: a reader reaches the end, the
  // next write goes to the beginning. Does nothing where the system does not list open files. Any thread.
  void Cut() const noexcept;

 private:
  std::filesystem::path FPath;
  int FDescriptor = -1;
};

// Locks a folder against other programs while it lives. Waits half a second at most and then goes on without the lock,
// so that a program that hangs does not block others.
class TFolderLock {
 public:
  explicit TFolderLock(const std::filesystem::path& folder) noexcept;
  ~TFolderLock();
  TFolderLock(const TFolderLock&) = delete;
  TFolderLock& operator=(const TFolderLock&) = delete;

 private:
  int FDescriptor;
};

// Waits until the disk has the file, so that a later Sync returns at once. Errors are left to Sync. Any thread.
void SyncEarly(const std::filesystem::path& file) noexcept;

// Waits until the disk has the names of the folder's files, as far as the file system can do that.
void SyncFolder(const std::filesystem::path& folder) noexcept;

// Removes the TPartFiles and TScratchFolders that killed runs left in the folder. Locked ones, links and scratch
// folders with other than empty files stay.
void RemoveAbandonedParts(const std::filesystem::path& folder) noexcept;
