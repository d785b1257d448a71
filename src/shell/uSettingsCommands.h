// What a change of a setting does at once.
#pragma once

#include <vector>

#include "analysis/uMissionFigures.h"
#include "shell/uMainScreen.h"

// The figures of the sensors under the names that people gave the analog inputs.
std::vector<TFigure> NamedSensorFigures(const TShownMission& mission);

// Gathers the display settings from the controls and, where one changed, lets everything that shows the mission follow;
// the recording is not read again.
void ApplySettings(TShownMission& mission, IMainScreen& screen);
