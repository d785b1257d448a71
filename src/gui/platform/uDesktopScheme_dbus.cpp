#include "gui/platform/uDesktopScheme.h"
#include "gui/platform/uSchemePortal.h"

void FollowDesktopScheme(QApplication& application) {
  new TSchemePortal(application);
}
