// What a change of a setting does at once.
#pragma once

#include "shell/uMainScreen.h"

// Gathers the display settings from the controls and, where one changed, lets everything that shows the mission follow;
// the recording is not read again.
void ApplySettings(TShownMission& mission, IMainScreen& screen);
