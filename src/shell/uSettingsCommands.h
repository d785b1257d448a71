// What a change of a setting does at once.
#pragma once

#include <vector>

#include "analysis/uMissionFigures.h"
#include "shell/uIControls.h"
#include "shell/uIMissionViews.h"

// The decimal masks of the settings, which are borrowed.
TFormats FormatsOf(const TDisplaySettings& settings);

// The figures of the sensors. An analog input has the name that the user gave it.
std::vector<TFigure> NamedSensorFigures(const TShownMission& mission);

// Says beside the two acceleration limits whether the recording's are in force, and disables the two edits if so. Null:
// no mission is shown.
void ShowLimitsInForce(const TShownMission* mission, IControls& screen);

// After the settings changed: where the display settings in force are others than before, everything that shows the
// mission follows. The recording is not read again.
void ApplySettings(TShownMission& mission, IMissionViews& views);
