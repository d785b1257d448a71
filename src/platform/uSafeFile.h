// Files that are replaced whole or not at all: each is written beside its target, synced and renamed, so neither a
// failure nor a power loss destroys the old file. Links are followed, permissions are kept. The first file in a folder
// removes what killed runs left there (uPartFile).
//
// A std::system_error is rethrown as std::filesystem::filesystem_error with the target as path1, also if the target is
// a folder or write-protected. Other exceptions of `write` pass unchanged. In both cases nothing new is left on the
// disk.
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/uPartFile.h"

// Gets the path to write to.
using TFileWriter = std::function<void(const std::filesystem::path&)>;

void WriteBesideAndRename(const std::filesystem::path& target, const TFileWriter& write);
void SaveFile(const std::filesystem::path& target, std::string_view bytes);

// Files that are synced together, which is faster than one by one: Write, …, Sync, PutInPlace. Each holds a file open
// until then. What is not put in place is removed with the set.
class TFileSet {
 public:
  void Write(const std::filesystem::path& target, const TFileWriter& write);
  // How many files wait to be put in place.
  [[nodiscard]] std::size_t Count() const { return FWaiting.size(); }
  // Takes as long as the disk needs. Any thread, while nobody else uses the set.
  void Sync() const;
  // In the order in which they were written. When one fails it is given up, and another call goes on with the next.
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
