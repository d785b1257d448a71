#include "analysis/uShockStatistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>

#include "base/uDateTime.h"

namespace {

constexpr double kMaxDays = 1e9;

bool IsDate(double dateTime) {
  return std::fabs(dateTime) <= kMaxDays;
}

// The date of a date-time, and the ms of its day. As times are shown: rounded to the ms, and 24:00 is the next date.
struct TMoment {
  double day;
  double ms;
};

// The fraction has no sign: -1.25 is 06:00 on day -1.
TMoment MomentOf(double dateTime) {
  const double day = std::trunc(dateTime);
  const double ms = std::round(std::fabs(dateTime - day) * kMsPerDay);
  return ms < kMsPerDay ? TMoment{day, ms} : TMoment{day + 1, 0};
}

}  // namespace

std::vector<TDayCount> CountByDay(std::span<const double> dateTimes) {
  std::map<double, std::size_t> counts;
  for (const double dateTime : dateTimes) {
    if (IsDate(dateTime)) ++counts[MomentOf(dateTime).day];
  }
  std::vector<TDayCount> days;
  days.reserve(counts.size());
  for (const auto& [day, count] : counts) days.push_back({day, count});
  return days;
}

std::array<std::size_t, 24> CountByHour(std::span<const double> dateTimes) {
  std::array<std::size_t, 24> hours{};
  for (const double dateTime : dateTimes) {
    if (IsDate(dateTime)) ++hours[static_cast<std::size_t>(MomentOf(dateTime).ms / (kMsPerDay / 24))];
  }
  return hours;
}

std::vector<TDirectionCount> CountByDirection(std::span<const TDirection> directions) {
  std::map<std::tuple<int, int, int>, TDirectionCount> counts;
  for (const TDirection& one : directions) {
    TDirectionCount& entry = counts[{one.x, one.y, one.z}];
    entry.direction = one;
    ++entry.count;
  }
  std::vector<TDirectionCount> sorted;
  sorted.reserve(counts.size());
  for (const auto& [key, entry] : counts) sorted.push_back(entry);
  std::ranges::stable_sort(sorted, std::ranges::greater(), &TDirectionCount::count);
  return sorted;
}

TExceedance::TExceedance(std::span<const double> values) {
  std::ranges::copy_if(values, std::back_inserter(FValues), [](double value) { return !std::isnan(value); });
  std::ranges::sort(FValues);
}

double TExceedance::ExceededPart(std::size_t i) const {
  return 1 - (static_cast<double>(i) + 0.5) / static_cast<double>(FValues.size());
}

double TExceedance::Percentile(double part) const {
  if (FValues.empty()) return std::numeric_limits<double>::quiet_NaN();
  const double place =
      std::clamp(part * static_cast<double>(FValues.size()) - 0.5, 0.0, static_cast<double>(FValues.size() - 1));
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, FValues.size() - 1);
  const double between = place - static_cast<double>(below);
  return between == 0 ? FValues[below] : FValues[below] + between * (FValues[above] - FValues[below]);
}

TRoundHistogram HistogramInRoundSteps(std::span<const double> values, std::size_t maxSteps) {
  double min = std::numeric_limits<double>::infinity();
  double max = -min;
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    min = std::min(min, value);
    max = std::max(max, value);
  }
  if (min > max) return {};
  // A span of one value has a step of its size.
  const double span = max > min ? max - min : std::max(std::fabs(max), 1e-6);
  TRoundHistogram histogram;
  double last = 0;
  for (double power = std::pow(10.0, std::floor(std::log10(span / static_cast<double>(maxSteps))));
       histogram.counts.empty(); power *= 10) {
    for (const double factor : {1.0, 2.0, 5.0}) {
      histogram.step = factor * power;
      histogram.first = std::floor(min / histogram.step);
      last = std::floor(max / histogram.step);
      if (last - histogram.first >= static_cast<double>(maxSteps)) continue;
      histogram.counts.resize(static_cast<std::size_t>(last - histogram.first) + 1);
      break;
    }
  }
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    ++histogram.counts[static_cast<std::size_t>(std::floor(value / histogram.step) - histogram.first)];
  }
  histogram.first *= histogram.step;
  return histogram;
}
