#include <QWidget>

#include "gui/platform/uTaskbarEntry.h"
#include "platform/uTaskbar.h"

void ShowOnTaskbar(const QWidget* window, int percent) {
  if (window != nullptr && window->internalWinId() != 0) ShowTaskbarProgress(window->internalWinId(), percent);
}
