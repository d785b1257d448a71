#include "gui/platform/uDesktopScheme.h"

// The palette says all, and the application follows it.
void FollowDesktopScheme(QApplication& /*application*/) {}
