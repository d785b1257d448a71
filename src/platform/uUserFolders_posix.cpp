#include <cstdlib>
#include <exception>
#include <fstream>
#include <optional>
#include <string_view>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "platform/uUserFolders.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kMaxBytes = 100'000;  // bytes of a list of folders that is read

// The absolute path in a variable, else empty.
fs::path FolderIn(const char* variable) {
  const char* value = std::getenv(variable);
  const fs::path folder = value == nullptr ? fs::path() : fs::path(value);
  return folder.is_absolute() ? folder : fs::path();
}

fs::path ConfigurationFolder() {
  if (fs::path folder = FolderIn("XDG_CONFIG_HOME"); !folder.empty()) return folder;
  const fs::path home = FolderIn("HOME");
  return home.empty() ? home : home / ".config";
}

// Parses a line like `XDG_DOCUMENTS_DIR="$HOME/Documents"`: the path is quoted and absolute or below $HOME; a backslash
// escapes the next character.
std::optional<fs::path> DocumentsOfLine(std::string_view line) {
  constexpr std::string_view kName = "XDG_DOCUMENTS_DIR=\"";
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(kName)) return std::nullopt;
  line.remove_prefix(kName.size());
  constexpr std::string_view kHome = "$HOME";
  fs::path folder;
  if (line.starts_with(kHome)) {
    folder = FolderIn("HOME");
    if (folder.empty()) return std::nullopt;
    line.remove_prefix(kHome.size());
  }
  std::string path;
  while (!line.empty() && line.front() != '"') {
    if (line.front() == '\\' && line.size() > 1) line.remove_prefix(1);
    path += line.front();
    line.remove_prefix(1);
  }
  if (line.empty() || !path.starts_with('/')) return std::nullopt;
  return folder.empty() ? fs::path(path) : folder / fs::path(path).relative_path();
}

}  // namespace

fs::path DocumentsFolder() noexcept {
  try {
    const fs::path list = ConfigurationFolder() / "user-dirs.dirs";
    std::error_code error;
    std::optional<fs::path> documents;
    if (fs::is_regular_file(list, error) && fs::file_size(list, error) <= kMaxBytes && !error) {
      std::ifstream lines(list);
      for (std::string line; std::getline(lines, line);) {
        if (auto named = DocumentsOfLine(line)) documents = std::move(named);
      }
    }
    if (documents) return *documents;
    const fs::path home = FolderIn("HOME");
    return home.empty() ? home : home / "Documents";
  } catch (const std::exception&) {
    return {};
  }
}

std::string RegistryFileDir() noexcept {
  try {
    const fs::path configuration = ConfigurationFolder();
    if (configuration.empty()) return {};
    return TIniFile::Load(configuration / "Halvorn" / "Korvex.ini").ReadString("General", "FileDir", {});
  } catch (const std::exception&) {  // absent or unreadable
    return {};
  }
}
