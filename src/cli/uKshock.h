// The command line of kshock: what the words mean and which command runs.
#pragma once

#include <string>
#include <vector>

#include "cli/uConsole.h"

// The arguments without the program's name, in UTF-8. Never throws; returns the exit status.
int RunKshock(const std::vector<std::string>& arguments, const TConsole& console);
