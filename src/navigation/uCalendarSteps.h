// Calendar steps of a date-time, days since 1899-12-30.
#pragma once

// A step is some months or some seconds, one of the two.
struct TCalendarStep {
  int months = 0;
  double seconds = 0;
};

// Adds the step `count` times; a negative count subtracts. Months are those of the calendar, the day clamped to the
// month's length, the time of day kept. Outside the years 1 … 9999, where there are no months, a month is 30 days.
double AddStep(double dateTime, const TCalendarStep& step, int count);
