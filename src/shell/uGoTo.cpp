#include "shell/uGoTo.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"

namespace {

constexpr std::string_view kDigits = "0123456789";

// The whole numbers of a text in their order; nothing when one has more than nine digits.
std::optional<std::vector<int>> NumbersIn(std::string_view text) {
  std::vector<int> numbers;
  for (std::size_t at = text.find_first_of(kDigits); at != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_not_of(kDigits, at), text.size());
    if (end - at > 9) return std::nullopt;
    std::from_chars(text.data() + at, text.data() + end, numbers.emplace_back());
    at = text.find_first_of(kDigits, end);
  }
  return numbers;
}

// Midnight of a date, in days.
std::optional<double> TypedDate(std::string_view text) {
  if (text.find_first_not_of("0123456789./- ") != std::string_view::npos) return std::nullopt;
  const auto numbers = NumbersIn(text);
  if (!numbers || numbers->size() != 3) return std::nullopt;
  const std::string_view mask = text.find_first_not_of(kDigits) == 4 ? kDefaultDateFormat : ShortDateFormat();
  std::array<std::pair<std::size_t, int>, 3> places;  // where the mask has year, month and day, and their numbers
  for (std::size_t i = 0; i < places.size(); ++i) places[i].first = mask.find("ymd"[i]);
  const auto valueOf = [&](std::size_t part) {
    const auto before =
        std::ranges::count_if(places, [&](const auto& each) { return each.first < places[part].first; });
    return (*numbers)[static_cast<std::size_t>(before)];
  };
  const int year = valueOf(0) < 100 ? valueOf(0) + 2000 : valueOf(0);
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(valueOf(1))),
                                         std::chrono::day(static_cast<unsigned>(valueOf(2)))};
  if (!date.ok() || year > 9999) return std::nullopt;
  constexpr std::chrono::sys_days kEpoch = std::chrono::year(1899) / 12 / 30;
  return static_cast<double>((std::chrono::sys_days(date) - kEpoch).count());
}

// A time of day as a part of a day.
std::optional<double> TypedTimeOfDay(std::string_view text) {
  if (text.find_first_not_of("0123456789:.,") != std::string_view::npos) return std::nullopt;
  const auto numbers = NumbersIn(text);
  const auto colons = std::ranges::count(text, ':');
  const std::size_t point = text.find_first_of(".,");
  const bool hasFraction = point != std::string_view::npos;
  if (!numbers || colons < 1 || colons > 2 || (hasFraction && colons != 2)) return std::nullopt;
  if (numbers->size() != static_cast<std::size_t>(colons) + 1 + (hasFraction ? 1 : 0)) return std::nullopt;
  const int seconds = colons == 2 ? (*numbers)[2] : 0;
  if ((*numbers)[0] > 23 || (*numbers)[1] > 59 || seconds > 59) return std::nullopt;
  const double fraction =
      hasFraction ? numbers->back() / std::pow(10.0, static_cast<double>(text.size() - point - 1)) : 0;
  return ((*numbers)[0] * 3600 + (*numbers)[1] * 60 + seconds + fraction) * 1000 / kMsPerDay;
}

std::string GoToEvent(TShownMission& mission, std::string_view id, IMissionViews& views) {
  const std::size_t count = mission.Events.Count();
  if (count == 0) return "The recording has no events.";
  std::size_t event = count;
  std::from_chars(id.data(), id.data() + id.size(), event);  // a number that is too large leaves it
  if (event >= count) return fmt::format("There is no event {}; the IDs go from 0 to {}.", id, count - 1);
  if (mission.CLDS.RecordCount() == 0) return "The filter hides all events.";
  SelectEvent(mission, event, views);
  const double time = DateTimeOf(DrawableStart(mission.Events.StartTime), mission.Events.GetItem(event).GetStartTime());
  if (time < mission.Band.start || time > mission.Band.end) ZoomNavigatorToEvent(mission, event, views);
  return {};
}

}  // namespace

std::optional<double> TypedTime(std::string_view typed, double from) {
  const std::string_view text = Trimmed(typed);
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return TypedDate(text);
  const std::size_t space = text.substr(0, colon).find_last_of(" T");
  const auto ofDay = TypedTimeOfDay(text.substr(space == std::string_view::npos ? 0 : space + 1));
  if (!ofDay) return std::nullopt;
  if (space != std::string_view::npos) {
    const auto date = TypedDate(text.substr(0, space));
    if (!date) return std::nullopt;
    return *date < 0 ? *date - *ofDay : *date + *ofDay;  // the time of day has no sign
  }
  const double day = std::floor(from);
  return day + *ofDay < from ? day + 1 + *ofDay : day + *ofDay;
}

std::string GoTo(TShownMission& mission, std::string_view typed, IMissionViews& views) {
  const std::string_view text = Trimmed(typed);
  if (!text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos) {
    return GoToEvent(mission, text, views);
  }
  const auto data = views.NavigatorSpan();
  if (!data) return "The recording has no times.";
  const std::string begin = FormatDateTime(DateTimeMask(), data->start);
  const auto time = TypedTime(text, data->start);
  if (!time) return fmt::format("Type an event's ID, such as 0, or a time, such as {}.", begin);
  // Shown times are whole seconds: the first and the last may be typed as they are shown.
  constexpr double kSecond = 1000 / kMsPerDay;
  if (*time < data->start - kSecond || *time > data->end + kSecond) {
    return fmt::format("The recording goes from {} to {}.", begin, FormatDateTime(DateTimeMask(), data->end));
  }
  ZoomNavigatorToTime(mission, std::clamp(*time, data->start, data->end), views);
  return {};
}
