// Asks which part of the mission to export, and as what. Main thread only.
#pragma once

struct TCommandTargets;

// Proposes the navigator's band. Does nothing without a file.
void AskAndExportPart(const TCommandTargets& on);
