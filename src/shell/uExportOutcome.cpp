#include "shell/uExportOutcome.h"

#include <fmt/format.h>

#include <new>

#include "base/uFiles.h"
#include "base/uText.h"

namespace fs = std::filesystem;

std::string ExportFailure(const std::exception& error, const fs::path& place) {
  const auto lines = [](const fs::path& path, std::string_view reason) {
    return fmt::format("{}\n{}", Printable(Utf8FromPath(path)), Printable(reason));
  };
  if (const auto* failure = dynamic_cast<const fs::filesystem_error*>(&error)) {
    return lines(failure->path1(), failure->code().message() + ".");
  }
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return lines(place, "There is not enough memory.");
  return lines(place, error.what());
}

void TellWritten(IMainScreen& screen, const fs::path& place) {
  screen.SetText("lblStatusValue", fmt::format("Written: {}", Printable(Utf8FromPath(place))));
}
