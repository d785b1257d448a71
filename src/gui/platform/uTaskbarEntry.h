// The desktop's task bar. Main thread only.
#pragma once

class QWidget;

// Shows the progress of a window on the program's icon, from 0 to 100 percent; a negative number takes it off. Does
// nothing where the desktop cannot show it, or while the window is not there yet.
void ShowOnTaskbar(const QWidget* window, int percent);
