// Ordering, filtering and selecting events: what a click on a title or a row, "Order By" and the filter do to the shown
// mission.
//
// A filter may hide the event that the user chose. Then the first visible event in the grid's order is selected in its
// place, or none when nothing is visible; the chosen event is selected again when it is visible again.
#pragma once

#include <optional>
#include <string_view>

#include "shell/uIMissionViews.h"

// Fills the companion with all events, in the order of the shock event table.
void FillCompanion(TShownMission& mission);

// The user chooses an event; an index past the list chooses none.
void SelectEvent(TShownMission& mission, std::optional<std::size_t> event, IMissionViews& views);

// Clicks on a column's title; `field` is the field's key.
void ShockGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views);
void SensorsGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views);
// The order of the other event grids stays.
void AnalysisGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views);
void BatteryGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views);

// Selects this index in both event tables; the selected event stays. An unknown index changes nothing.
void OrderEventsBy(TShownMission& mission, std::string_view index, IMissionViews& views);

// The same for the sensors and the battery table.
void OrderReadingsBy(TShownMission& mission, std::string_view sensors, std::string_view battery, IMissionViews& views);

// Ranks the most important events by an entry of "Order By". The order of the event grids stays.
void OrderMostImportantBy(TShownMission& mission, int entry, IMissionViews& views);

// Selects the event `steps` rows further in the order of the event grids, or the one at their end. Without a selected
// event it selects the first.
void StepEvent(TShownMission& mission, int steps, IMissionViews& views);
// The same in the order of the analysis table, once it is there.
void StepEventInAnalysis(TShownMission& mission, int steps, IMissionViews& views);
// The same in the order of time, for a view that shows the events in a chart only.
void StepEventInTime(TShownMission& mission, int steps, IMissionViews& views);

// Leaves in the companion the events that pass the filter, all of them while it is off, and in the other one the most
// important of these. Updates no view.
void FilterCompanion(TShownMission& mission);
// Sets new conditions and switches the filter on, or off when there is none. While the shock analysis that a condition
// needs is not there, it is awaited, and everything stays as it was.
void ChangeFilter(TShownMission& mission, const TEventFilter& filter, IMissionViews& views);
// The same for the conditions that are set, which stay while the filter is off. False, and it stays off, when it has
// none.
[[nodiscard]] bool ActivateFilter(TShownMission& mission, bool active, IMissionViews& views);
// Call when the limits in force may have changed; a filter that uses them is applied again.
void AlarmLimitsChanged(TShownMission& mission, IMissionViews& views);

// The shock analysis is there: it gets the filter that is set, which may have waited for it.
void TakeAnalysis(TShownMission& mission, TMissionAnalysis analysis, IMissionViews& views);
// It will not come: a condition that waits for it is taken away.
void GiveUpAnalysis(TShownMission& mission, IMissionViews& views);
