#include "shell/uExportOutcome.h"

#include <fmt/format.h>

#include "base/uFiles.h"
#include "base/uText.h"

namespace fs = std::filesystem;

std::string ExportFailure(const std::exception& error, const fs::path& place) {
  const auto* failure = dynamic_cast<const fs::filesystem_error*>(&error);
  const fs::path& named = failure == nullptr ? place : failure->path1();
  return fmt::format("{}\n{}", Printable(Utf8FromPath(named)), Printable(ReasonOf(error)));
}

void TellWritten(IMainScreen& screen, const fs::path& place) {
  screen.SetText("lblStatusValue", fmt::format("Written: {}", Printable(Utf8FromPath(place))));
}
