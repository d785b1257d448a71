// Asks for an event's ID or a time and goes there. Enter goes, Esc closes; a text that leads nowhere stays with the
// reason below it.
#pragma once

#include <QWidget>

#include "shell/uIMissionViews.h"

void AskAndGoTo(QWidget& window, TShownMission& mission, IMissionViews& views);
