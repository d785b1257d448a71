// What the user does with the event filter, on the shown mission. The event that the user chose is selected
// while it can be seen; otherwise the first visible one in the grid's order is, and where nothing is visible nothing.
#pragma once

#include "shell/uMainScreen.h"

// Leaves in the companion the events that the filter lets through, all of them while it is off. Shows nothing.
void FilterCompanion(TShownMission& mission);

// Takes other conditions; they count at once, and without one the filter is off.
void ChangeFilter(TShownMission& mission, const TEventFilter& filter, IMainScreen& screen);

// Switches the filter on or off; its conditions stay. False, and it stays off, when it has none.
[[nodiscard]] bool ActivateFilter(TShownMission& mission, bool active, IMainScreen& screen);

// The alarm limits in force may be others than before; a filter that asks for them is applied anew.
void AlarmLimitsChanged(TShownMission& mission, IMainScreen& screen);
