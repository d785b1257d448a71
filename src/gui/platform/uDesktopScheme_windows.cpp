#include "gui/platform/uDesktopScheme.h"

// With packaging/windows/qt.conf the palette says all, and the application follows it.
void FollowDesktopScheme(QApplication& /*application*/) {}
