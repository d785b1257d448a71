// Independent steps: a step that throws does not stop the others, and the user gets one message for all failures.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "shell/uIDialogs.h"

class TFailureList {
 public:
  // Runs a step that reads or writes `file`.
  void Run(const std::filesystem::path& file, const std::function<void()>& step);
  [[nodiscard]] bool Empty() const { return FFailures.empty(); }
  // Names each file that failed, with the reason. No message when there is none.
  void Show(IDialogs& dialogs, std::string_view text) const;

 private:
  std::string FFailures;
};
