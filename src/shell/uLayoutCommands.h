// The commands that save and load the layout: the arrangement of dock panels and splitters.
#pragma once

#include "shell/uStartUp.h"
#include "shell/uViewSwitch.h"

inline constexpr std::string_view kDefaultLayoutFile = "default-layout.ini";
inline constexpr std::string_view kUserLayoutFile = "user-layout.ini";

// Saves the user layout, which the next start loads. A failure shows a message.
void SaveUserLayout(const TProgram& program, IControls& controls, IDialogs& dialogs);
// Shows the view's panels if the layout was saved with all closed. Shows a message when there is no user layout, or
// when it cannot be used; then the designed layout is in force.
void LoadUserLayout(const TProgram& program, TView view, IControls& controls, IDialogs& dialogs);
// Loads the default layout of the settings folder, or the designed one when that cannot be used. Shows the view's
// panels.
void LoadDefaultLayout(const TProgram& program, TView view, IControls& controls);
