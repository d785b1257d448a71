// This program, run again.
#pragma once

#include <string>
#include <vector>

// Runs this program's own file with these arguments, in UTF-8, and waits until it ends. Its standard input is
// empty, its standard output is dropped, errors go where those of this program go. Returns its exit status, or -1 when
// it was killed. Throws std::system_error when it cannot be started. Any thread.
int RunThisProgram(const std::vector<std::string>& arguments);
