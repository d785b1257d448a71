// How many files the program may hold open at a time.
#pragma once

#include <cstddef>

// As many as the system lets this process have. Called once, at the start; where the system refuses, all stays as it
// is.
void RaiseOpenFileLimit();

// How many more files can be opened. Any thread.
std::size_t OpenFilesLeft();
