#include "platform/uProgram.h"

#include <cstdlib>
#include <string_view>

const char* const kKshockFile = "kshock";
const char* const kPlatformForPictures = "offscreen";

std::vector<std::string> ProgramArguments(int count, const char* const* values) {
  return count > 0 ? std::vector<std::string>(values + 1, values + count) : std::vector<std::string>();
}

std::string ProgramFileVersion() {
  return SHOCKSCOPE_FILE_VERSION;
}

bool HasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && !std::string_view(value).empty()) return true;
  }
  return false;
}
