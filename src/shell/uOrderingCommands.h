// Ordering and selecting events: what a click on a title, a row or "Order By" does to the shown mission.
#pragma once

#include <optional>
#include <string_view>

#include "shell/uMainScreen.h"

// Fills the companion with every event, in the order of the shock event table.
void FillCompanion(TShownMission& mission);

// Makes an event the selected one, everywhere; an index past the list selects nothing.
void SelectEvent(TShownMission& mission, std::optional<std::size_t> event, IMainScreen& screen);
// In place of the event that the user chose, as long as that cannot be seen.
void SelectForNow(TShownMission& mission, std::optional<std::size_t> event, IMainScreen& screen);

// Clicks on a column's title, given by the field's key.
void ShockGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen);
void SensorsGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen);
void BatteryGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen);

// Gives both event tables this index; the selected event stays. Nothing happens when there is none of that name.
void OrderEventsBy(TShownMission& mission, std::string_view index, IMainScreen& screen);

// The same for the sensors and the battery table.
void OrderReadingsBy(TShownMission& mission, std::string_view sensors, std::string_view battery, IMainScreen& screen);

// Ranks the most important events anew, by an entry of "Order By". The order of the event grids stays.
void OrderMostImportantBy(TShownMission& mission, int entry, IMainScreen& screen);

// The event `steps` rows further in the order of the event grids, at most to their ends. Without a selected event it is
// the first.
void StepEvent(TShownMission& mission, int steps, IMainScreen& screen);
// The same in the order of time, for a view that shows the events in a chart alone.
void StepEventInTime(TShownMission& mission, int steps, IMainScreen& screen);
