// Why an export could not be written, for a message to the user.
#pragma once

#include <exception>
#include <filesystem>
#include <string>

// The file or folder and the reason, each on a line. Where the error does not name a place it is `place`.
std::string ExportFailure(const std::exception& error, const std::filesystem::path& place);
