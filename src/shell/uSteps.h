// Steps that do not depend on each other: what one of them throws is kept, the others run, and the user is told once.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "shell/uMainScreen.h"

class TSteps {
 public:
  // Runs a step that reads or writes `file`.
  void Run(const std::filesystem::path& file, const std::function<void()>& step);
  // One message that names every file that failed, with its reason; none when all went well.
  void Tell(IMainScreen& screen, std::string_view text) const;

 private:
  std::string FFailures;
};
