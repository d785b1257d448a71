#include <cerrno>
#include <cstdio>
#include <exception>
#include <system_error>

#include "cli/uKshock.h"
#include "platform/uMachineMemory.h"
#include "platform/uProcessLimits.h"
#include "platform/uProgram.h"
#include "platform/uTerminal.h"

int main(int argc, char** argv) try {
  SurviveFileSizeLimit();
  RaiseOpenFileLimit();
  TakeMemoryInLargeSteps();
  UseUtf8Streams();
  const auto toErr = [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
  const auto toOut = [](std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
      throw EOutputLost(std::generic_category().message(errno));
    }
  };
  const TConsole console{toOut, toErr, StandardErrorIsTerminal()};
  const int status = RunKshock(ProgramArguments(argc, argv), console);
  if (status == static_cast<int>(TStatus::CannotWrite) || std::fflush(stdout) == 0) return status;
  toErr("kshock: standard output: " + std::generic_category().message(errno) + "\n");
  return static_cast<int>(TStatus::CannotWrite);
} catch (const std::exception&) {  // no memory for the arguments, or for saying so
  return static_cast<int>(TStatus::CannotRead);
}
