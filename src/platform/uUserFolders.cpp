#include "platform/uUserFolders.h"

#include <exception>
#include <system_error>

#include "base/uFiles.h"

namespace {

std::string FindSettingsFolder(bool create) noexcept {
  try {
    const std::filesystem::path documents = DocumentsFolder();
    if (documents.empty()) return {};
    std::filesystem::path folder = documents / "Korvex" / "settings" / "";
    std::error_code error;
    if (create) std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error) ? Utf8FromPath(folder.make_preferred()) : std::string();
  } catch (const std::exception&) {  // no memory for a path
    return {};
  }
}

}  // namespace

std::string SettingsFolder() noexcept {
  return FindSettingsFolder(true);
}

std::string ExistingSettingsFolder() noexcept {
  return FindSettingsFolder(false);
}
