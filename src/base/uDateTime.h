// Date-times: days since 1899-12-30 as a double, the time of day as the fraction (without sign, so -1.25 is 06:00 on
// 1899-12-29). Shown as recorded, in no time zone.
#pragma once

#include <cmath>
#include <string>
#include <string_view>

inline constexpr double kMsPerDay = 86400000.0;

// The start of a mission as an axis can take it: a date-time that is none, or far from every calendar, becomes 0.
inline double DrawableStart(double startTime) {
  return std::fabs(startTime) <= 1e9 ? startTime : 0.0;
}

// The date-time of a sample: a time in ms since the start of the mission.
inline double DateTimeOf(double startTime, double ms) {
  return startTime + ms / kMsPerDay;
}

inline constexpr std::string_view kDefaultDateFormat = "yyyy-mm-dd";

// The process-wide short date format that every displayed time follows; kDefaultDateFormat until it is set.
// Main thread only.
const std::string& ShortDateFormat();
void SetShortDateFormat(std::string mask);

// The mask of a displayed time: the short date format and " hh:nn:ss".
std::string DateTimeMask();

// A length of time in days, to the millisecond: "03:04:05.678", "2 d 03:04:05.678". A negative one is that of its
// amount behind a "-"; what is not finite reads as in GeneralFloat.
std::string FormatDuration(double days);

// A length of time in days in its two largest units, rounded: "3 d 4 h", "10 d", "9 h 12 min", "45.5 s" below a minute.
// A negative one is that of its amount; what is not finite reads as in GeneralFloat.
std::string DurationInWords(double days);

// A date-time in a mask of yyyy yy mm m dd d (date) and hh h nn n ss s zzz z (time of day; z is milliseconds without
// leading zeros). Every other character stands for itself. The time of day is rounded to whole milliseconds first, so
// there is never a second 60 or a millisecond 1000; 24 hours are the next date. A value outside the years 1 … 9999 is
// written as a number.
std::string FormatDateTime(std::string_view mask, double dateTime);
