#include "navigation/uCalendarSteps.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono;

constexpr double kSecondsPerDay = 86400;
constexpr double kDaysOfNoMonth = 30;
constexpr sys_days kDayZero = 1899y / December / 30;
constexpr double kFirstDay = (sys_days(1y / January / 1) - kDayZero).count();
constexpr double kLastDay = (sys_days(9999y / December / 31) - kDayZero).count();

double AddMonths(double dateTime, int months) {
  const double day = std::trunc(dateTime);
  const double timeOfDay = std::fabs(dateTime - day);
  if (!(day >= kFirstDay && day <= kLastDay)) return dateTime + kDaysOfNoMonth * months;
  const year_month_day date = kDayZero + days(static_cast<int>(day));
  const year_month month = year_month(date.year(), date.month()) + std::chrono::months(months);
  const auto lastDay = unsigned{(month / last).day()};
  const sys_days moved = month / std::chrono::day(std::min(unsigned{date.day()}, lastDay));
  const auto movedDay = static_cast<double>((moved - kDayZero).count());
  return movedDay < 0 ? movedDay - timeOfDay : movedDay + timeOfDay;
}

}  // namespace

double AddStep(double dateTime, const TCalendarStep& step, int count) {
  if (step.months != 0) return AddMonths(dateTime, step.months * count);
  return dateTime + step.seconds * count / kSecondsPerDay;
}
