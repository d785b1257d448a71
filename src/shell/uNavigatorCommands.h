// The navigator's commands on the shown mission: each moves the band and lets the charts follow, in this order. Where
// the navigator has no point they do nothing at all.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "navigation/uTimeNavigator.h"
#include "shell/uMainScreen.h"

// The band over everything, as after loading.
void NavigatorAll(TShownMission& mission, IMainScreen& screen);
void NavigatorInterval(TShownMission& mission, const TCalendarStep& interval, IMainScreen& screen);
void NavigatorForward(TShownMission& mission, IMainScreen& screen);
void NavigatorRewind(TShownMission& mission, IMainScreen& screen);

// Puts the band elsewhere; NavigatorBandResized has to follow.
void SetNavigatorBand(TShownMission& mission, const TTimeSpan& band, IMainScreen& screen);

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

// The band becomes what this chart shows, after a question when the settings want one.
void SyncNavigator(TShownMission& mission, std::string_view chart, IMainScreen& screen);
