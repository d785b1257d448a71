// Runs kshock inside the test, on files of a folder that goes with it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "cli/uKshock.h"
#include "tests/support/uTestRecording.h"

struct TRun {
  int status;
  std::string out, err;
};

inline TRun Kshock(const std::vector<std::string>& arguments) {
  TRun run{};
  const TConsole console{[&run](std::string_view text) { run.out += text; },
                         [&run](std::string_view text) { run.err += text; }, false};
  run.status = RunKshock(arguments, console);
  return run;
}

class TKshockTest : public testing::Test {
 protected:
  [[nodiscard]] std::string File(std::string_view name) const { return (Folder / name).string(); }
  std::string Save(std::string_view name, const TBytes& bytes) const {
    WriteFile(Folder / name, bytes);
    return File(name);
  }
  std::string SaveText(std::string_view name, std::string_view text) const {
    return Save(name, TBytes(text.begin(), text.end()));
  }
  TTempFolder Folder;
};
