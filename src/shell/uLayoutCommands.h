// The commands that save and load the layout: the arrangement of dock panels and splitters.
#pragma once

#include "shell/uIMissionViews.h"
#include "shell/uStartUp.h"
#include "shell/uViewSwitch.h"

inline constexpr std::string_view kDefaultLayoutFile = "default-layout.ini";
inline constexpr std::string_view kUserLayoutFile = "user-layout.ini";

// Saves the user layout, which the next start loads, with the mission's reference if that is to be kept. A failure
// shows a message.
void SaveUserLayout(const TProgram& program, const TShownMission& mission, IControls& controls, IDialogs& dialogs);
// Takes the reference of the file, if it has one. Shows the view's panels if the layout was saved with all closed.
// Shows a message when there is no user layout, or when it cannot be used; then the designed layout is in force, unless
// only the reference cannot.
void LoadUserLayout(const TProgram& program, TView view, TShownMission& mission, IControls& controls, IDialogs& dialogs,
                    IMissionViews& views);
// Loads the default layout of the settings folder, or the designed one when that cannot be used. Shows the view's
// panels.
void LoadDefaultLayout(const TProgram& program, TView view, IControls& controls);
