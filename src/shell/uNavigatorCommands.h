// The navigator's commands on the shown mission: each moves the band, then the charts follow. They do nothing when the
// navigator has no point.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "navigation/uTimeNavigator.h"
#include "shell/uIControls.h"
#include "shell/uIDialogs.h"
#include "shell/uIMissionViews.h"

// The whole recording, as after loading.
void actNavSetIntAllExecute(TShownMission& mission, IMissionViews& views);
// One calendar interval.
void SetNavigatorInterval(TShownMission& mission, const TCalendarStep& interval, IMissionViews& views);
template <const TCalendarStep& Interval>
void OneInterval(TShownMission& mission, IMissionViews& views) {
  SetNavigatorInterval(mission, Interval, views);
}
inline constexpr auto actNavSetIntYearExecute = OneInterval<kYearInterval>;
inline constexpr auto actNavSetIntMonthExecute = OneInterval<kMonthInterval>;
inline constexpr auto actNavSetIntWeekExecute = OneInterval<kWeekInterval>;
inline constexpr auto actNavSetIntDayExecute = OneInterval<kDayInterval>;
inline constexpr auto actNavSetIntHourExecute = OneInterval<kHourInterval>;
inline constexpr auto actNavSetIntMinExecute = OneInterval<kMinInterval>;
// Move the band by its own width.
void actNavFwdExecute(TShownMission& mission, IMissionViews& views);
void actNavRwdExecute(TShownMission& mission, IMissionViews& views);

// The user moves the band, or changes its width, by mouse or keys.
void NavigatorBandDragging(TShownMission& mission, const TTimeSpan& band, IMissionViews& views);
void NavigatorBandResizing(TShownMission& mission, const TTimeSpan& band, IMissionViews& views);

// Move the band around an event, a time, or a row of the sensors or the battery table. What does not exist or has no
// time changes nothing.
void ZoomNavigatorToEvent(TShownMission& mission, std::size_t event, IMissionViews& views);
void ZoomNavigatorToTime(TShownMission& mission, double time, IMissionViews& views);
void ZoomNavigatorToReading(TShownMission& mission, const TDataset& table, std::size_t row, IMissionViews& views);

// The date-time of such a row; nothing when there is no such row or time.
std::optional<double> ReadingTime(const TDataset& table, std::size_t row);

// After a reload: the band as before, cut where the data now end.
void KeepNavigatorBand(TShownMission& mission, const TTimeSpan& band, IMissionViews& views);

// The charts show the band.
void NavigatorBandResized(const TShownMission& mission, IMissionViews& views);

// The band becomes what the sensors chart, or the events chart of the view, shows. The settings decide whether the user
// is asked first.
void btnToolsSensorsChartSyncWNavClick(TShownMission& mission, IMissionViews& views, IDialogs& dialogs);
void btnToolsShockSyncWNavClick(TShownMission& mission, TView view, IMissionViews& views, IDialogs& dialogs);
