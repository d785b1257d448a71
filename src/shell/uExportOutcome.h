// What the user is told of an export: where it is, or why it could not be written.
#pragma once

#include <exception>
#include <filesystem>
#include <string>

#include "shell/uMainScreen.h"

// The file or folder and the reason, each on a line. Where the error does not name a place it is `place`.
std::string ExportFailure(const std::exception& error, const std::filesystem::path& place);

// In the status bar.
void TellWritten(IMainScreen& screen, const std::filesystem::path& place);
