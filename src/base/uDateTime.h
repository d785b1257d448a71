// Date-times: days since 1899-12-30 as a double. The fraction is the time of day and has no sign: -1.25 is 06:00 on
// 1899-12-29. There are no time zones.
#pragma once

#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

inline constexpr double kMsPerDay = 86400000.0;
inline constexpr double kDaysTo1970 = 25569;

// The days of the calendar: from 0001-01-01 to 9999-12-31.
inline constexpr std::chrono::sys_days kDateEpoch{std::chrono::year{1899} / 12 / 30};
inline constexpr double kFirstDay = -693593;
inline constexpr double kLastDay = 2958465;

// A mission's start for an axis: 0 when it is not finite or beyond ±1e9 days.
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

// The short date format and " hh:nn:ss".
std::string DateTimeMask();

// A duration in days, to the millisecond: "03:04:05.678", "2 d 03:04:05.678". A negative one starts with "-"; one that
// is not finite reads as in GeneralFloat.
std::string FormatDuration(double days);

// A length of time in days in its two largest units, rounded: "3 d 4 h", "10 d", "9 h 12 min", "45.5 s" below a minute.
// A negative one is that of its amount; what is not finite reads as in GeneralFloat.
std::string DurationInWords(double days);

// A length of time in whole ms, 0 or more, with nothing left out: "1 d 12 h", "2 h 0.25 s", "0 s".
std::string ExactDuration(double ms);
// The whole ms of a text such as "2 h", "1.5h" or "1 d 30 min 5 s". Nothing when it is no such text, or longer than
// 36,500 days.
std::optional<double> ParseDuration(std::string_view text);

// The present time in UTC.
double UtcNow();

// A date-time in a mask of yyyy yy mm m dd d (date) and hh h nn n ss s zzz z (time of day; z is milliseconds without
// leading zeros). Any other character is copied. The time of day is first rounded to whole milliseconds, and 24:00 is
// the next date. A value outside the years 1 … 9999 is written as a number.
std::string FormatDateTime(std::string_view mask, double dateTime);
