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

TDistribution DistributionOf(std::span<const double> values) {
  constexpr std::size_t kLargest = 200;
  constexpr std::size_t kGroups = kMaxDistribution - kLargest;
  std::vector<float> sorted;
  sorted.reserve(values.size());
  for (const double value : values) {
    if (std::isfinite(static_cast<float>(value))) sorted.push_back(static_cast<float>(value));
  }
  std::ranges::sort(sorted);
  TDistribution distribution;
  const bool isWhole = sorted.size() <= kMaxDistribution;
  const std::size_t grouped = isWhole ? 0 : sorted.size() - kLargest;
  for (std::size_t group = 0; group < kGroups && grouped > 0; ++group) {
    const std::size_t begin = grouped * group / kGroups;
    const std::size_t end = grouped * (group + 1) / kGroups;
    distribution.push_back({sorted[(begin + end - 1) / 2], static_cast<std::uint32_t>(end - begin)});
  }
  for (std::size_t i = grouped; i < sorted.size(); ++i) distribution.push_back({sorted[i], 1});
  return distribution;
}

TExceedance::TExceedance(std::span<const double> values) {
  std::ranges::copy_if(values, std::back_inserter(FValues), [](double value) { return !std::isnan(value); });
  std::ranges::sort(FValues);
  for (; FRanks.size() < FValues.size(); ++FCount) FRanks.push_back(FCount + 0.5);
}

TExceedance TExceedance::Of(const TDistribution& distribution) {
  TExceedance exceedance{std::span<const double>()};
  for (const auto& [value, count] : distribution) {
    exceedance.FValues.push_back(double{value});
    exceedance.FRanks.push_back(exceedance.FCount + count / 2.0);
    exceedance.FCount += count;
  }
  return exceedance;
}

double TExceedance::ExceededPart(std::size_t i) const {
  return 1 - FRanks[i] / FCount;
}

double TExceedance::PartAbove(double value) const {
  const auto after = std::ranges::upper_bound(FValues, value);
  return after == FValues.begin() ? 1 : ExceededPart(static_cast<std::size_t>(after - FValues.begin()) - 1);
}

double TExceedance::Percentile(double part) const {
  if (FValues.empty()) return std::numeric_limits<double>::quiet_NaN();
  const double rank = part * FCount;
  const auto above = static_cast<std::size_t>(std::ranges::lower_bound(FRanks, rank) - FRanks.begin());
  if (above == FValues.size()) return FValues.back();
  if (above == 0 || FRanks[above] == rank) return FValues[above];
  const double between = (rank - FRanks[above - 1]) / (FRanks[above] - FRanks[above - 1]);
  return FValues[above - 1] + between * (FValues[above] - FValues[above - 1]);
}

TRoundHistogram HistogramInRoundSteps(std::span<const double> values, std::size_t maxSteps,
                                      const TDistribution& reference) {
  double min = std::numeric_limits<double>::infinity();
  double max = -min;
  const auto include = [&](double value) {
    if (!std::isfinite(value)) return;
    min = std::min(min, value);
    max = std::max(max, value);
  };
  for (const double value : values) include(value);
  if (!reference.empty()) {
    include(reference.front().value);
    include(reference.back().value);
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
  const auto stepOf = [&histogram](double value) {
    return static_cast<std::size_t>(std::floor(value / histogram.step) - histogram.first);
  };
  for (const double value : values) {
    if (std::isfinite(value)) ++histogram.counts[stepOf(value)];
  }
  histogram.referenceCounts.resize(histogram.counts.size());
  for (const auto& [value, count] : reference) histogram.referenceCounts[stepOf(double{value})] += count;
  histogram.first *= histogram.step;
  return histogram;
}
