#include <windows.h>
// The shell's header needs the one above.
#include <fmt/format.h>
#include <shellapi.h>

#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "base/uFiles.h"
#include "platform/uProgram.h"

const char* const kKshockFile = "kshock.exe";
const char* const kPlatformForPictures = nullptr;

// Those of `main` lost what the user's code page cannot express.
std::vector<std::string> ProgramArguments(int /*count*/, const char* const* /*values*/) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; words && i < count; ++i) arguments.push_back(Utf8FromPath(words.get()[i]));
  return arguments;
}

std::string ProgramFileVersion() {
  std::array<wchar_t, 32768> program{};
  GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
  std::vector<char> resource(GetFileVersionInfoSizeW(program.data(), nullptr));
  void* found = nullptr;
  UINT size = 0;
  if (resource.empty() ||
      GetFileVersionInfoW(program.data(), 0, static_cast<DWORD>(resource.size()), resource.data()) == 0 ||
      VerQueryValueW(resource.data(), L"\\", &found, &size) == 0) {
    throw std::runtime_error("The program file has no version.");
  }
  const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
  return fmt::format("{}.{}.{}.{}", HIWORD(version.dwFileVersionMS), LOWORD(version.dwFileVersionMS),
                     HIWORD(version.dwFileVersionLS), LOWORD(version.dwFileVersionLS));
}

bool HasDisplay() {
  return true;
}
