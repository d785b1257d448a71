// The program's standard streams.
#pragma once

// Standard error is shown to somebody, not kept in a file.
bool StandardErrorIsTerminal();

// While one exists, its thread's output to the C library's stderr is discarded: for a library that prints its errors
// besides returning them. Other threads, std::cerr and the descriptor itself are not affected. Destroy it on the thread
// that made it. The first one permanently replaces the stream behind stderr by one without a descriptor.
class TSilentErrors {
 public:
  TSilentErrors();
  ~TSilentErrors();
  TSilentErrors(const TSilentErrors&) = delete;
  TSilentErrors& operator=(const TSilentErrors&) = delete;
};
