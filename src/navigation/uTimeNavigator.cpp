#include "navigation/uTimeNavigator.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "base/uDateTime.h"

namespace {

using namespace std::chrono;

constexpr double kSecondsPerDay = 86400;
constexpr double kDaysOfNoMonth = 30;
constexpr double kTellApart = 1e-13;  // smallest span, relative to the time (double precision)
constexpr double kRounded = 0.5;      // of MinSpan; rounding never takes this much of a span
constexpr double kPartOfData = 50;
constexpr double kMinLengths = 4;  // times the stretch that the band is put around

double AddMonths(double dateTime, int months) {
  const double day = std::trunc(dateTime);
  const double timeOfDay = std::fabs(dateTime - day);
  if (!(day >= kFirstDay && day <= kLastDay)) return dateTime + kDaysOfNoMonth * months;
  const year_month_day date = kDateEpoch + days(static_cast<int>(day));
  const year_month month = year_month(date.year(), date.month()) + std::chrono::months(months);
  const auto lastDay = unsigned{(month / last).day()};
  const sys_days moved = month / std::chrono::day(std::min(unsigned{date.day()}, lastDay));
  const auto movedDay = static_cast<double>((moved - kDateEpoch).count());
  return movedDay < 0 ? movedDay - timeOfDay : movedDay + timeOfDay;
}

}  // namespace

double AddStep(double dateTime, const TCalendarStep& step, int count) {
  if (step.months != 0) return AddMonths(dateTime, step.months * count);
  return dateTime + step.seconds * count / kSecondsPerDay;
}

double MinSpan(double time) {
  return std::max(1 / kMsPerDay, std::fabs(time) * kTellApart);
}

TTimeSpan IntervalBand(const TTimeSpan& band, const TTimeSpan& data, const TCalendarStep& interval) {
  const double end = AddStep(band.start, interval, 1);
  if (data.end > end) return {band.start, end};
  return {std::max(AddStep(data.end, interval, -1), data.start), data.end};
}

TTimeSpan ForwardBand(const TTimeSpan& band, const TTimeSpan& data) {
  const double width = band.Width();
  if (data.end > band.end + width) return {band.start + width, band.end + width};
  return {data.end - width, data.end};
}

TTimeSpan RewindBand(const TTimeSpan& band, const TTimeSpan& data) {
  const double width = band.Width();
  const double start = band.start - width > data.start ? band.start - width : data.start;
  return {start, start + width};
}

TTimeSpan DraggedBand(const TTimeSpan& band, const TTimeSpan& data, double days) {
  const double width = std::min(band.Width(), data.Width());
  const double start = std::clamp(band.start + days, data.start, std::max(data.start, data.end - width));
  return {start, std::min(start + width, data.end)};
}

TTimeSpan ResizedBand(const TTimeSpan& band, const TTimeSpan& data, bool movesStart, double to, double min) {
  const double room = MinSpan(data.end);
  min = std::max(min, room);
  if (movesStart) {
    const double end = std::clamp(band.end, std::min(data.start + room, data.end), data.end);
    return {std::clamp(to, data.start, std::max(data.start, end - min)), end};
  }
  const double start = std::clamp(band.start, data.start, std::max(data.start, data.end - room));
  return {start, std::clamp(to, std::min(data.end, start + min), data.end)};
}

TTimeSpan BandAround(const TTimeSpan& band, const TTimeSpan& data, double from, double days) {
  const double all = data.Width();
  double width = band.Width();
  if (!(width > 0 && width < all)) width = all / kPartOfData;
  width = std::min(std::max({width, days * kMinLengths, MinSpan(data.end)}), all);
  const double start = std::clamp(from + (days - width) / 2, data.start, std::max(data.start, data.end - width));
  return {start, std::min(start + width, data.end)};
}

TTimeSpan BandWithin(const TTimeSpan& band, const TTimeSpan& data) {
  const TTimeSpan within{std::max(band.start, data.start), std::min(band.end, data.end)};
  return within.Width() >= MinSpan(within.end) * kRounded ? within : data;
}
