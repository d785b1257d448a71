// What a recording needs after it was read, before anything shows it. Main thread only.
#pragma once

#include <string>

#include "base/uProgress.h"
#include "model/uReadFileThread.h"
#include "shell/uShownMission.h"

// What is wrong with a recording that was read, in words; empty for a whole one.
std::string DamageText(const TReadExtent& extent);

// Completes the model, and fills the display settings in force, the tables with their companions, and the summary, by
// the mission's settings and filter. The progress is that of LoadKorvexFileData, and so is what an exception of it
// leaves behind.
void FillMission(TShownMission& mission, IProgress& progress);

// The shock analysis of the mission, which it lacks until it is asked for; its table shows the rows that the filter
// lets through. An exception of ProcessMessages ends it.
TMissionAnalysis AnalysisOf(const TShownMission& mission, IProgress& progress);
