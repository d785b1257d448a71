#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "cli/uKshock.h"

int main(int argc, char** argv) {
  bool written = true;
  const auto sinkTo = [&written](std::FILE* stream) {
    return [&written, stream](std::string_view text) {
      written = std::fwrite(text.data(), 1, text.size(), stream) == text.size() && written;
    };
  };
  const TConsole console{sinkTo(stdout), sinkTo(stderr), isatty(STDERR_FILENO) != 0};
  const int status = RunKshock(std::vector<std::string>(argv + 1, argv + argc), console);
  written = std::fflush(stdout) == 0 && written;
  return written ? status : static_cast<int>(TStatus::CannotWrite);
}
