// What a change of a setting does at once.
#pragma once

#include <vector>

#include "analysis/uMissionFigures.h"
#include "shell/uIControls.h"
#include "shell/uIMissionViews.h"

// The figures of the sensors under the names that people gave the analog inputs.
std::vector<TFigure> NamedSensorFigures(const TShownMission& mission);

// Says beside the two acceleration limits which ones are in force, and lets them be edited unless those are the
// recording's. Nothing stands for no mission.
void ShowLimitsInForce(const TShownMission* mission, IControls& screen);

// Gathers the display settings from the controls and, where one changed, lets everything that shows the mission follow;
// the recording is not read again.
void ApplySettings(TShownMission& mission, IControls& screen, IMissionViews& views);
