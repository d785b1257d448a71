// The limits that the system sets for this program.
#pragma once

#include <cstddef>

// A write past the limit on the size of files (ulimit -f) fails with errc::file_too_large instead of ending the
// program. Programs that this one starts keep the system's default. Called once, at the start.
void SurviveFileSizeLimit();

// Raises the limit of open files to what the system allows; where the system refuses, it stays as it is. Called once,
// at the start.
void RaiseOpenFileLimit();

// How many more files can be opened. Any thread.
std::size_t OpenFilesLeft();
