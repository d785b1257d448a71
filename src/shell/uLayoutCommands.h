// The commands that save and load the arrangement of the dock panels.
#pragma once

#include "shell/uStartUp.h"
#include "shell/uViewSwitch.h"

inline constexpr std::string_view kDefaultLayoutFile = "default-layout.ini";
inline constexpr std::string_view kUserLayoutFile = "user-layout.ini";

// Saves the arrangement as the user layout, which the next start loads. One message when that fails.
void SaveUserLayout(const TProgram& program, IControls& controls, IDialogs& dialogs);
// A layout that was saved with every panel closed comes with the view's panels, in their places. One message when there
// is no user layout, or when it is of no use and the designed arrangement stands instead.
void LoadUserLayout(const TProgram& program, TView view, IControls& controls, IDialogs& dialogs);
// The default layout of the settings folder, or the designed one where that is missing or of no use, with every panel
// that belongs to the view.
void LoadDefaultLayout(const TProgram& program, TView view, IControls& controls);
