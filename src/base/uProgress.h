// How a long loop tells how far it is, without knowing who shows it.
#pragma once

#include <string_view>

class IProgress {
 public:
  virtual ~IProgress() = default;
  virtual void SetStatus(std::string_view text) = 0;
  // From 0 to the maximum, rising within one loop. A load has the fixed maximum 9, an export sets its own.
  virtual void SetPosition(double position) = 0;
  // The position at the end, above 0. A bar whose end is known beforehand leaves it.
  virtual void SetMaximum(double /*maximum*/) {}
  // Lets the user interface handle what is waiting; called from the loop's own thread. May throw: that is how a Cancel
  // or a close ends the loop, which lets it through and leaves behind what its own header says.
  virtual void ProcessMessages() = 0;
};

// For callers that show nothing.
class TNoProgress final : public IProgress {
 public:
  void SetStatus(std::string_view) override {}
  void SetPosition(double) override {}
  void ProcessMessages() override {}
};
