#include <cstdio>
#include <string>
#include <vector>

#include "cli/uKshock.h"
#include "platform/uTerminal.h"

int main(int argc, char** argv) {
  bool written = true;
  const auto toOut = [&written](std::string_view text) {
    written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && written;
  };
  const auto toErr = [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
  const TConsole console{toOut, toErr, StandardErrorIsTerminal()};
  const int status = RunKshock(std::vector<std::string>(argv + 1, argv + argc), console);
  written = std::fflush(stdout) == 0 && written;
  return written ? status : static_cast<int>(TStatus::CannotWrite);
}
