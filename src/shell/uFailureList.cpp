#include "shell/uFailureList.h"

#include <fmt/format.h>

#include <exception>

#include "base/uFiles.h"
#include "base/uText.h"

void TFailureList::Run(const std::filesystem::path& file, const std::function<void()>& step) {
  try {
    step();
  } catch (const std::exception& error) {
    const std::string failure = fmt::format("{}: {}", Printable(Utf8FromPath(file)), Printable(ReasonOf(error)));
    AppendListItem(FFailures, failure, "\n");
  }
}

void TFailureList::Show(IDialogs& dialogs, std::string_view text) const {
  if (!FFailures.empty()) dialogs.ShowMessage(text, FFailures);
}
