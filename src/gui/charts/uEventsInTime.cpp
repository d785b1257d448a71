#include "gui/charts/uEventsInTime.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/uDateTime.h"

namespace {

std::uint8_t AxisOf(const TEvent& event) {
  const std::size_t axis = std::string_view("XYZ").find(event.MaxAxis.front());
  return static_cast<std::uint8_t>(std::min(axis, TEventsInTime::kNoAxis));
}

}  // namespace

void TEventsInTime::Set(const TEventList& events) {
  Clear();
  const double start = DrawableStart(events.StartTime);
  const std::size_t count = events.Count();
  FTimes.reserve(count);
  FMax.reserve(count);
  FMaxSingle.reserve(count);
  FAxes.reserve(count);
  for (const TEvent& event : events.Events()) {
    FTimes.push_back(DateTimeOf(start, event.GetStartTime()));
    FMax.push_back(event.Max);
    FMaxSingle.push_back(event.MaxSingle);
    FAxes.push_back(AxisOf(event));
    if (std::isfinite(event.Max)) FMaxPeak = std::max(FMaxPeak, event.Max);
  }
  const auto finite = [](double time) { return std::isfinite(time); };
  if (!std::ranges::all_of(FTimes, finite) || !std::ranges::is_sorted(FTimes)) SortByTime();
}

void TEventsInTime::SortByTime() {
  FIndexes.resize(FTimes.size());
  std::iota(FIndexes.begin(), FIndexes.end(), 0U);
  std::erase_if(FIndexes, [this](std::uint32_t index) { return !std::isfinite(FTimes[index]); });
  std::ranges::stable_sort(FIndexes, {}, [this](std::uint32_t index) { return FTimes[index]; });
  const auto ordered = [this](const auto& column) {
    std::remove_cvref_t<decltype(column)> sorted;
    sorted.reserve(FIndexes.size());
    for (const std::uint32_t index : FIndexes) sorted.push_back(column[index]);
    return sorted;
  };
  FMax = ordered(FMax);
  FMaxSingle = ordered(FMaxSingle);
  FAxes = ordered(FAxes);
  FTimes = ordered(FTimes);
}

bool TEventsInTime::SetVisible(std::vector<bool> visible) {
  if (visible == FVisible) return false;
  FVisible = std::move(visible);
  FIsMeasured = false;
  return true;
}

// All series in one walk, without branches: filters let events through that no processor can foretell.
void TEventsInTime::Measure() const {
  for (TExtents& stems : FStems) stems.Clear();
  for (std::size_t begin = 0; begin < FTimes.size(); begin += TExtents::kBlock) {
    const std::size_t end = std::min(begin + TExtents::kBlock, FTimes.size());
    constexpr std::size_t kNowhere = kHidden + 1;
    std::array<TExtent, kNowhere + 1> block;
    for (std::size_t place = begin; place < end; ++place) {
      const bool isVisible = IsVisible(place);
      const std::size_t axis = FAxes[place];
      block[isVisible ? Place(TSeries::Total) : kHidden].Include(FMax[place]);
      block[isVisible && axis != kNoAxis ? axis : kNowhere].Include(FMaxSingle[place]);
    }
    for (std::size_t series = 0; series < FStems.size(); ++series) {
      const bool isFinite = block[series].IsEmpty() || block[series].IsFinite();
      const auto stem = [this, series](std::size_t place) { return Stem(place, series); };
      FStems[series].Append(isFinite ? block[series] : FiniteExtent(begin, end, stem));
    }
  }
  FIsMeasured = true;
}

std::optional<std::size_t> TEventsInTime::PlaceOf(std::optional<std::size_t> index) const {
  if (!index) return std::nullopt;
  if (FIndexes.empty()) return *index < FTimes.size() ? index : std::nullopt;
  const auto found = std::ranges::find(FIndexes, *index);
  if (found == FIndexes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - FIndexes.begin());
}

std::optional<std::size_t> TEventsInTime::PlaceOn(double time) const {
  std::optional<std::size_t> found;
  const auto first = std::ranges::lower_bound(FTimes, time);
  for (auto at = first; at != FTimes.end() && *at == time; ++at) {
    const auto place = static_cast<std::size_t>(at - FTimes.begin());
    if (IsVisible(place) && (!found || FMax[place] > FMax[*found])) found = place;
  }
  return found;
}

float TEventsInTime::Stem(std::size_t place, std::size_t series) const {
  constexpr float kNothing = std::numeric_limits<float>::quiet_NaN();
  if (IsVisible(place) == (series == kHidden)) return kNothing;
  if (series < kNoAxis) return FAxes[place] == series ? FMaxSingle[place] : kNothing;
  return FMax[place];
}

std::vector<std::size_t> TEventsInTime::StemsIn(const TColumns& columns, std::size_t series) const {
  if (!FIsMeasured) Measure();
  return ColumnPeaks(
      FTimes.size(), [this](std::size_t i) { return FTimes[i]; },
      [this, series](std::size_t i) { return Stem(i, series); }, FStems[series], columns);
}
