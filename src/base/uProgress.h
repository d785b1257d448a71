// How a long loop reports its progress.
#pragma once

#include <string_view>

class IProgress {
 public:
  virtual ~IProgress() = default;
  virtual void SetStatus(std::string_view text) = 0;
  // From 0 to the maximum, rising within one loop. A load has the fixed maximum 9, an export sets its own.
  virtual void SetPosition(double position) = 0;
  // The position at the end, above 0. A bar with a fixed maximum ignores it.
  virtual void SetMaximum(double /*maximum*/) {}
  // Lets the user interface handle its events; called on the loop's own thread. Throws to end the loop, for a Cancel or
  // when the window closes. The header of the loop says what is left behind then.
  virtual void ProcessMessages() = 0;
};

// Shows nothing.
class TNoProgress final : public IProgress {
 public:
  void SetStatus(std::string_view) override {}
  void SetPosition(double) override {}
  void ProcessMessages() override {}
};
