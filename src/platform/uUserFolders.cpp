#include "platform/uUserFolders.h"

#include <exception>
#include <system_error>

#include "base/uFiles.h"

std::filesystem::path SettingsFolderPath() noexcept {
  try {
    const std::filesystem::path documents = DocumentsFolder();
    return documents.empty() ? documents : documents / "Korvex" / "settings" / "";
  } catch (const std::exception&) {  // no memory for a path
    return {};
  }
}

std::string SettingsFolder() noexcept {
  try {
    std::filesystem::path folder = SettingsFolderPath();
    if (folder.empty()) return {};
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return std::filesystem::is_directory(folder, error) ? Utf8FromPath(folder.make_preferred()) : std::string();
  } catch (const std::exception&) {  // no memory for a path
    return {};
  }
}
