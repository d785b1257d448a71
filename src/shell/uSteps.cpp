#include "shell/uSteps.h"

#include <fmt/format.h>

#include <exception>

#include "base/uFiles.h"
#include "base/uText.h"

void TSteps::Run(const std::filesystem::path& file, const std::function<void()>& step) {
  try {
    step();
  } catch (const std::exception& error) {
    if (!FFailures.empty()) FFailures += '\n';
    FFailures += fmt::format("{}: {}", Printable(Utf8FromPath(file)), Printable(ReasonOf(error)));
  }
}

void TSteps::Tell(IMainScreen& screen, std::string_view text) const {
  if (!FFailures.empty()) screen.ShowMessage(text, FFailures);
}
