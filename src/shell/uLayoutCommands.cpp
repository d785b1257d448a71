#include "shell/uLayoutCommands.h"

#include <system_error>

#include "base/uFiles.h"
#include "shell/uSteps.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kNoSettingsFolder =
    "There is no settings folder: the documents folder is missing or cannot be written.";

}  // namespace

void SaveUserLayout(const TProgram& program, IMainScreen& screen) {
  constexpr std::string_view kNotSaved = "The layout is not saved.";
  const std::string folder = program.findSettingsFolder();
  if (folder.empty()) {
    screen.ShowMessage(kNotSaved, kNoSettingsFolder);
    return;
  }
  TSteps steps;
  const fs::path file = PathFromUtf8(folder) / kUserLayoutFile;
  steps.Run(file, [&] { screen.SaveLayout(file); });
  steps.Tell(screen, kNotSaved);
}

void LoadUserLayout(const TProgram& program, TView view, IMainScreen& screen) {
  const std::string folder = program.findSettingsFolder();
  const fs::path file = PathFromUtf8(folder) / kUserLayoutFile;
  std::error_code unknown;
  if (folder.empty() || !fs::exists(file, unknown)) {
    screen.ShowMessage("There is no user layout yet.", folder.empty() ? kNoSettingsFolder : "Save one first.");
    return;
  }
  TSteps steps;
  steps.Run(file, [&] { screen.LoadLayout(file); });
  if (AllDockPanelsAreClosed(screen)) ShowDockPanels(screen, view);
  steps.Tell(screen, "The user layout cannot be used.");
}

void LoadDefaultLayout(const TProgram& program, TView view, IMainScreen& screen) {
  const std::string folder = program.findSettingsFolder();
  screen.RestoreDesignedLayout();
  std::error_code unknown;
  const fs::path file = PathFromUtf8(folder) / kDefaultLayoutFile;
  TSteps untold;  // a file that is of no use leaves the designed arrangement
  if (!folder.empty() && fs::exists(file, unknown)) untold.Run(file, [&] { screen.LoadLayout(file); });
  ShowDockPanels(screen, view);
}
