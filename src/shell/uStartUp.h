// What the main window does first and last, in this order.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/uIControls.h"
#include "shell/uIDialogs.h"
#include "shell/uIMissionViews.h"

// What the program knows of itself and of how it was started.
struct TProgram {
  std::filesystem::path folder;  // of the running executable; "doc_shock" and "data" stand below it
  std::string version;           // four dotted numbers
  std::string dataFolder;        // where the open dialog starts; empty: the system's choice
  std::string firstArgument;     // the recording to open, or empty
  // Finds or makes the settings folder and ends it with a delimiter. Empty: there is none, nothing is read or written.
  std::function<std::string()> findSettingsFolder = [] { return std::string(); };
};

// In the settings folder, by their index among the window's pictures.
inline constexpr std::string_view kLogoFiles[] = {"Company-Logo.png", "Report-Logo.png"};

inline constexpr std::string_view kApplicationTitle = "Korvex165 ShockScope ";

inline constexpr std::string_view kNoSettingsFolder =
    "There is no settings folder: the documents folder is missing or cannot be written.";

// The window's caption while no file is shown.
std::string StartCaption(const TProgram& program);
// The folder of the demo recording, with its trailing delimiter.
std::string DemoFolder(const TProgram& program);

// A document of the user manual, for an icon on the welcome panel.
struct TManualDocument {
  std::string iconName;
  std::string caption;
  std::string file;
};

// The files in "doc_shock" by name, hidden ones excepted; none without that folder.
std::vector<TManualDocument> UserManual(const TProgram& program);

// What a document of the manual is about.
enum class TManualTopic { QuickStart, Charts, Metrics, Output };
// The file of that document, whether or not it is there.
std::filesystem::path ManualDocument(const TProgram& program, TManualTopic topic);

// The window is constructed. Sets caption, cards and welcome state, then loads what the settings folder holds:
// settings, logos, layouts with the reference, recent documents.
void FormCreate(const TProgram& program, TShownMission& mission, TRecentDocuments& recent, IControls& controls,
                IDialogs& dialogs, IMissionViews& views);
// The window is shown for the first time. The caller then opens the recording of the first argument.
void FormShow(const TProgram& program, IControls& controls);
// The window closes; no file is being read any more. Saves logos, settings and recent documents, but not the layout. A
// file that cannot be written stops neither the others nor the close.
void FormClose(const TProgram& program, const TSettings& settings, TRecentDocuments& recent, IControls& controls,
               IDialogs& dialogs);
