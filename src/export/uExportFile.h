// How every export writes its file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

// Has `write` write beside the wanted file and renames; an older file stays whole until then, and whatever is thrown
// leaves nothing behind. A std::system_error becomes a std::filesystem::filesystem_error that names the wanted file.
void WriteExport(const std::filesystem::path& file, const std::function<void(const std::filesystem::path&)>& write);

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
