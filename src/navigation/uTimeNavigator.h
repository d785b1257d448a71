// The navigator's band: the span of time that the main charts show, and how interval and step commands move it. Pure
// functions on date-times, days since 1899-12-30.
#pragma once

#include "base/uTimeSpan.h"

// A step is some months or some seconds, one of the two.
struct TCalendarStep {
  int months = 0;
  double seconds = 0;
};

// Adds the step `count` times; a negative count subtracts. Months are those of the calendar, the day clamped to the
// month's length, the time of day kept. Outside the years 1 … 9999, where there are no months, a month is 30 days.
double AddStep(double dateTime, const TCalendarStep& step, int count);

// The smallest span around this time that a chart or the band takes, in days: 1 ms, more where a double has too few
// digits for that.
double MinSpan(double time);

inline constexpr TCalendarStep kYearInterval{12, 0};
inline constexpr TCalendarStep kMonthInterval{1, 0};
inline constexpr TCalendarStep kWeekInterval{0, 168 * 3600};
inline constexpr TCalendarStep kDayInterval{0, 24 * 3600};
inline constexpr TCalendarStep kHourInterval{0, 60 * 60};
inline constexpr TCalendarStep kMinInterval{0, 60};

// One interval long: from the band's start where it ends before the data do, else the last of the data, no longer than
// they are.
TTimeSpan IntervalBand(const TTimeSpan& band, const TTimeSpan& data, const TCalendarStep& interval);

// Moves the band by its own width, kept; a step that would pass the data's end or begin lands flush on it.
TTimeSpan ForwardBand(const TTimeSpan& band, const TTimeSpan& data);
TTimeSpan RewindBand(const TTimeSpan& band, const TTimeSpan& data);

// Moves the band by `days` as a whole, kept within the data.
TTimeSpan DraggedBand(const TTimeSpan& band, const TTimeSpan& data, double days);
// Moves one end, kept within the data and at least `min` days from the other where the data are that long. The other
// end makes room where the band would be narrower than MinSpan.
TTimeSpan ResizedBand(const TTimeSpan& band, const TTimeSpan& data, bool movesStart, double to, double min);

// Around a stretch of time that begins at `from` and lasts `days`: as wide as the band is, or a 50th of the data where
// the band is all of them, but a few times the stretch and MinSpan; kept within the data.
TTimeSpan BandAround(const TTimeSpan& band, const TTimeSpan& data, double from, double days);
// The band as far as the data reach; all of them where that is less than MinSpan.
TTimeSpan BandWithin(const TTimeSpan& band, const TTimeSpan& data);
