// The program's standard streams.
#pragma once

// Standard error is shown to somebody, not kept in a file.
bool StandardErrorIsTerminal();

// While one lives, what its thread writes to the C library's stderr goes nowhere: for a library that prints its
// complaints besides returning them. Other threads write as before, and so do std::cerr and whoever writes to the
// descriptor itself. On any thread, which destroys it, too. The first one replaces the stream behind stderr for good,
// by one that has no descriptor.
class TSilentErrors {
 public:
  TSilentErrors();
  ~TSilentErrors();
  TSilentErrors(const TSilentErrors&) = delete;
  TSilentErrors& operator=(const TSilentErrors&) = delete;
};
