// The first and the last steps of the main window, in their order.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "shell/uMainScreen.h"

// What the program knows of itself and of how it was started.
struct TProgram {
  std::filesystem::path folder;  // of the running executable; "doc_shock" and "data" stand below it
  std::string version;           // four dotted numbers
  std::string dataFolder;        // where the open dialog starts; empty: the system's choice
  std::string firstArgument;     // the recording to open, or empty
  // Finds and makes the settings folder, with its trailing delimiter; empty: unusable, nothing is read or written.
  std::function<std::string()> findSettingsFolder = [] { return std::string(); };
};

inline constexpr std::string_view kApplicationTitle = "Korvex165 ShockScope ";

// The window's caption while no file is shown.
std::string StartCaption(const TProgram& program);
// The folder of the demo recording, with its trailing delimiter.
std::string DemoFolder(const TProgram& program);

// The window is constructed: title, manual, cards, open dialog, welcome state, axes, and what the settings folder
// holds: settings, logos, layouts, recent documents.
void FormCreate(const TProgram& program, TRecentDocuments& recent, IMainScreen& screen);
// The window is shown for the first time. The recording of the first argument is the caller's to open, afterwards.
void FormShow(const TProgram& program, IMainScreen& screen);
// The window closes; no file is being read any more. Settings, logos and recent documents are saved, the user layout is
// not. A file that cannot be written costs neither the others nor the close.
void FormClose(const TProgram& program, const TSettings& settings, TRecentDocuments& recent, IMainScreen& screen);
