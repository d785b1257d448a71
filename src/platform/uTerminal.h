// The program's standard streams.
#pragma once

// False when standard error goes to a file or a pipe.
bool StandardErrorIsTerminal();

// While one lives, its thread's output to the C library's stderr is dropped: for a library that prints errors besides
// returning them. Other threads, std::cerr and writes to the descriptor are not affected. Create and destroy it on the
// same thread. The first one replaces the stream behind stderr for good, by one without a descriptor.
class TSilentErrors {
 public:
  TSilentErrors();
  ~TSilentErrors();
  TSilentErrors(const TSilentErrors&) = delete;
  TSilentErrors& operator=(const TSilentErrors&) = delete;
};
