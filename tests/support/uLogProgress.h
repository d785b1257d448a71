// What a long loop tells, as a line of text; cancels when told so.
#pragma once

#include <string>

#include "base/uProgress.h"
#include "model/uExceptions1V0.h"

struct TLogProgress final : IProgress {
  void SetStatus(std::string_view text) override { log += text; }
  void SetPosition(double position) override { log += " @" + std::to_string(static_cast<int>(position)); }
  void SetMaximum(double maximum) override { log += " of " + std::to_string(static_cast<int>(maximum)); }
  void ProcessMessages() override {
    if (most-- == 0) throw EKorvex(kReadCancelled);
  }
  std::string log;
  int most = 1000000;  // calls of ProcessMessages until it cancels
};
