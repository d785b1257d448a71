// How many files the program may hold open at a time.
#pragma once

#include <cstddef>

// Raises the limit to the maximum for this process. Called once at the start; has no effect if the system refuses.
void RaiseOpenFileLimit();

// How many more files can be opened. Any thread.
std::size_t OpenFilesLeft();
