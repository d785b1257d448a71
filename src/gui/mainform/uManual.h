// Opens the document of the manual that belongs to what is in front, with the desktop's program for it.
#pragma once

struct TCommandTargets;

// When the document is missing or cannot be opened, a notice says so.
void OpenManual(const TCommandTargets& on, bool checked);
