// What the system knows of this program: its arguments, its version, its display. Main thread only.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8. Takes those of `main`.
std::vector<std::string> ProgramArguments(int count, const char* const* values);

// The file of the command-line program, which stands beside the window's.
extern const char* const kKshockFile;

// The four dotted numbers of the program file's version.
std::string ProgramFileVersion();

// False when a window cannot be shown.
bool HasDisplay();

// Qt's name of the platform that draws windows without a display; null where the desktop's own does.
extern const char* const kPlatformForPictures;
