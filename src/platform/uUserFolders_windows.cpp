#include <shlobj.h>
#include <windows.h>

#include <array>
#include <exception>

#include "base/uFiles.h"
#include "platform/uUserFolders.h"

namespace fs = std::filesystem;

fs::path DocumentsFolder() noexcept {
  try {
    std::array<wchar_t, MAX_PATH> path{};
    const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path.data());
    return result == S_OK ? fs::path(path.data()) : fs::path();
  } catch (const std::exception&) {
    return {};
  }
}

std::string RegistryFileDir() noexcept {
  try {
    std::array<wchar_t, 32768> value{};
    DWORD bytes = sizeof value;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, L"Software\\Halvorn\\Korvex\\", L"FileDir", RRF_RT_REG_SZ,
                                        nullptr, value.data(), &bytes);
    return status == ERROR_SUCCESS ? Utf8FromPath(fs::path(value.data())) : std::string();
  } catch (const std::exception&) {  // no memory
    return {};
  }
}
