// Other programs, and this one again.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

// What runs this program again; on Linux also after another file was put in its place.
std::filesystem::path ThisProgram();

// Runs a program with these arguments, in UTF-8, and waits until it ends. Its standard input is empty, its standard
// output is dropped, errors go where those of this program go; it opens no window. Asked to stop it is killed. Returns
// its exit status, or -1 when it was killed. Throws std::system_error when it cannot be started. Any thread.
int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::stop_token& stop = {});
