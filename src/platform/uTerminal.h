// The program's standard streams.
#pragma once

// Makes the C library write text to the standard streams as it is, in UTF-8. Called once, at the start.
void UseUtf8Streams();

// Makes a standard stream that leads nowhere write to the console of the process that started this one: on Windows a
// program with a window has no console. Called once, after the above, and only when no window will be shown, because
// a console that is closed ends the programs that write to it.
void UseStartersConsole();

// False when standard error goes to a file or a pipe.
bool StandardErrorIsTerminal();

// While one lives, its thread's output to the C library's stderr is dropped: for a library that prints errors besides
// returning them. Other threads, std::cerr and writes to the descriptor are not affected. Create and destroy it on the
// same thread. The first one replaces the stream behind stderr for good, by one without a descriptor. Does nothing
// where the library prints nothing.
class TSilentErrors {
 public:
  TSilentErrors();
  ~TSilentErrors();
  TSilentErrors(const TSilentErrors&) = delete;
  TSilentErrors& operator=(const TSilentErrors&) = delete;
};
