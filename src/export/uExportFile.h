// How every export writes its file.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "base/uProgress.h"
#include "platform/uSafeFile.h"

// As WriteBesideAndRename; while the disk takes the file, `progress` processes messages, and what that throws leaves
// the older file.
void WriteExport(const std::filesystem::path& file, IProgress& progress, const TFileWriter& write);
// Waits for the disk as above, and puts the files of the set in place.
void PutInPlace(TFileSet& files, IProgress& progress);

// Text that goes to a file in large pieces. Throws std::system_error.
class TTextFile {
 public:
  explicit TTextFile(const std::filesystem::path& path);
  // Add to the text at its end, then call Written.
  [[nodiscard]] std::string& Text() { return FText; }
  void Written();
  // Writes the rest; without this the file is cut short.
  void Close();

 private:
  void Flush();

  std::ofstream FFile;
  std::string FText;
};
