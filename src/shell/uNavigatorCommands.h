// The navigator's commands on the shown mission: each moves the band and lets the charts follow, in this order. Where
// the navigator has no point they do nothing at all.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "navigation/uTimeNavigator.h"
#include "shell/uMainScreen.h"
#include "shell/uViewSwitch.h"

// The band over everything, as after loading.
void actNavSetIntAllExecute(TShownMission& mission, IMainScreen& screen);
// One interval long.
void actNavSetIntYearExecute(TShownMission& mission, IMainScreen& screen);
void actNavSetIntMonthExecute(TShownMission& mission, IMainScreen& screen);
void actNavSetIntWeekExecute(TShownMission& mission, IMainScreen& screen);
void actNavSetIntDayExecute(TShownMission& mission, IMainScreen& screen);
void actNavSetIntHourExecute(TShownMission& mission, IMainScreen& screen);
void actNavSetIntMinExecute(TShownMission& mission, IMainScreen& screen);
// By its own width.
void actNavFwdExecute(TShownMission& mission, IMainScreen& screen);
void actNavRwdExecute(TShownMission& mission, IMainScreen& screen);

// The user moves the band with its width kept, or changes its width, by mouse or keys.
void NavigatorBandDragging(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen);
void NavigatorBandResizing(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen);

// The band around an event of the list or a reading: a row of the sensors or the battery table. One that is not there,
// or has no time, leaves it where it is.
void ZoomNavigatorToEvent(TShownMission& mission, std::size_t event, IMainScreen& screen);
void ZoomNavigatorToReading(TShownMission& mission, const TDataset& table, std::size_t row, IMainScreen& screen);

// The date-time of such a row.
std::optional<double> ReadingTime(const TDataset& table, std::size_t row);

// After a reload: the band as it was, as far as the data still reach.
void KeepNavigatorBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen);

// Applies the band to the charts.
void NavigatorBandResized(const TShownMission& mission, IMainScreen& screen);

// The band becomes what the sensors chart, or the events chart of the view in front, shows; after a question when the
// settings want one.
void btnToolsSensorsChartSyncWNavClick(TShownMission& mission, IMainScreen& screen);
void btnToolsShockSyncWNavClick(TShownMission& mission, TView view, IMainScreen& screen);
