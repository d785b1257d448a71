// Files that are replaced whole or not at all: a new file is written beside the target, synced to the disk and renamed,
// so neither a failure nor a loss of power costs the older file. Links are followed, permissions are kept. The first
// file for a folder removes what killed runs left there (uPartFile).
//
// A std::system_error becomes a std::filesystem::filesystem_error with the target as path1; so does a target that is a
// folder or write-protected. Other exceptions of `write` pass through. Nothing of the new file is left in either case.
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/uPartFile.h"

// Writes a file to the given path.
using TFileWriter = std::function<void(const std::filesystem::path&)>;

void WriteBesideAndRename(const std::filesystem::path& target, const TFileWriter& write);
void SaveFile(const std::filesystem::path& target, std::string_view bytes);

// Files that are synced together, which is faster than one by one: Write, …, Sync, PutInPlace. Each stays open until it
// is put in place. The destructor removes those that are not.
class TFileSet {
 public:
  void Write(const std::filesystem::path& target, const TFileWriter& write);
  // How many files wait to be put in place.
  [[nodiscard]] std::size_t Count() const { return FWaiting.size(); }
  // Waits for the disk. Any thread, while nobody else uses the set.
  void Sync() const;
  // Renames the files in the order of Write. A file that fails is dropped; call again to go on with the next.
  void PutInPlace();

 private:
  struct TWaiting {
    TPartFile part;
    std::filesystem::path target;
    std::filesystem::path real;  // behind the links
  };
  std::deque<TWaiting> FWaiting;
  std::optional<std::filesystem::path> FCleaned;  // the folder of the last file
};
