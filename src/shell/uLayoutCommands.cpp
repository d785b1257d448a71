#include "shell/uLayoutCommands.h"

#include <fmt/format.h>

#include <system_error>

#include "base/uFiles.h"
#include "shell/uCompareCommands.h"
#include "shell/uFailureList.h"
#include "shell/uReferenceFile.h"

namespace fs = std::filesystem;

void SaveUserLayout(const TProgram& program, const TShownMission& mission, IControls& controls, IDialogs& dialogs) {
  constexpr std::string_view kNotSaved = "The layout is not saved.";
  const std::string folder = program.findSettingsFolder();
  if (folder.empty()) {
    dialogs.ShowMessage(kNotSaved, kNoSettingsFolder);
    return;
  }
  TFailureList failures;
  const fs::path file = PathFromUtf8(folder) / kUserLayoutFile;
  const bool keepsReference = mission.Reference && mission.ReferenceIsKept;
  failures.Run(file, [&] { controls.SaveLayout(file, keepsReference ? ReferenceSections(*mission.Reference) : ""); });
  if (failures.Empty()) controls.ShowNotice(fmt::format("Layout saved: {}", Utf8FromPath(file)), file.parent_path());
  failures.Show(dialogs, kNotSaved);
}

void LoadUserLayout(const TProgram& program, TView view, TShownMission& mission, IControls& controls, IDialogs& dialogs,
                    IMissionViews& views) {
  const std::string folder = program.findSettingsFolder();
  const fs::path file = PathFromUtf8(folder) / kUserLayoutFile;
  std::error_code unknown;
  if (folder.empty() || !fs::exists(file, unknown)) {
    dialogs.ShowMessage("There is no user layout yet.", folder.empty() ? kNoSettingsFolder : "Save one first.");
    return;
  }
  TFailureList failures;
  failures.Run(file, [&] {
    controls.LoadLayout(file);
    TakeKeptReference(file, mission, views);
  });
  if (AllDockPanelsAreClosed(controls)) ShowDockPanels(controls, view);
  failures.Show(dialogs, "The user layout cannot be used.");
}

void LoadDefaultLayout(const TProgram& program, TView view, IControls& controls) {
  const std::string folder = program.findSettingsFolder();
  controls.RestoreDesignedLayout();
  std::error_code unknown;
  const fs::path file = PathFromUtf8(folder) / kDefaultLayoutFile;
  TFailureList ignored;  // the designed layout stays then
  if (!folder.empty() && fs::exists(file, unknown)) ignored.Run(file, [&] { controls.LoadLayout(file); });
  ShowDockPanels(controls, view);
}
