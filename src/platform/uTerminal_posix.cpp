#include "platform/uTerminal.h"

#include <sys/types.h>
#include <unistd.h>

#include <cstdio>

namespace {

thread_local int SilentDepth = 0;

ssize_t WriteUnlessSilent(void* original, const char* bytes, std::size_t count) {
  if (SilentDepth > 0) return static_cast<ssize_t>(count);
  return static_cast<ssize_t>(std::fwrite(bytes, 1, count, static_cast<std::FILE*>(original)));
}

// Both streams live until the program ends, because another thread may be writing to either. The new one is unbuffered,
// so that the writing thread itself passes its bytes on.
bool ReplaceStandardError() {
  std::FILE* stream = fopencookie(stderr, "w", {nullptr, WriteUnlessSilent, nullptr, nullptr});
  if (stream == nullptr) return false;
  std::setvbuf(stream, nullptr, _IONBF, 0);
  stderr = stream;
  return true;
}

}  // namespace

void UseUtf8Streams() {}

void UseStartersConsole() {}

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

TSilentErrors::TSilentErrors() {
  [[maybe_unused]] static const bool kReplaced = ReplaceStandardError();
  ++SilentDepth;
}

TSilentErrors::~TSilentErrors() {
  --SilentDepth;
}
