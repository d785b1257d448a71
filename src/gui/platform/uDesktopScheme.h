// Light or dark, as the desktop says it besides its palette.
#pragma once

class QApplication;

// Shows the desktop's scheme, now or later, and each change of it while the program runs.
void FollowDesktopScheme(QApplication& application);
