#include "base/uDateTime.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

#include "base/uText.h"

namespace {

std::string& ShortDateMask() {
  static std::string mask(kDefaultDateFormat);
  return mask;
}

struct TUnitOfTime {
  std::string_view name;
  double seconds;
};
constexpr TUnitOfTime kUnits[] = {{"d", 86400}, {"h", 3600}, {"min", 60}, {"s", 1}};

struct TMoment {
  std::chrono::year_month_day date;
  std::int64_t hour, minute, second, millisecond;
};

std::string Token(char letter, std::size_t length, const TMoment& moment) {
  const auto padded = [length](std::int64_t value, std::size_t width) {
    return fmt::format("{:0{}}", value, length > 1 ? width : 1);
  };
  switch (letter) {
    case 'y': {
      const int year = static_cast<int>(moment.date.year());
      return length > 2 ? fmt::format("{:04}", year) : fmt::format("{:02}", year % 100);
    }
    case 'm':
      return padded(static_cast<unsigned>(moment.date.month()), 2);
    case 'd':
      return padded(static_cast<unsigned>(moment.date.day()), 2);
    case 'h':
      return padded(moment.hour, 2);
    case 'n':
      return padded(moment.minute, 2);
    case 's':
      return padded(moment.second, 2);
    case 'z':
      return padded(moment.millisecond, 3);
    default:
      return std::string(length, letter);
  }
}

}  // namespace

const std::string& ShortDateFormat() {
  return ShortDateMask();
}
void SetShortDateFormat(std::string mask) {
  ShortDateMask() = std::move(mask);
}
std::string DateTimeMask() {
  return ShortDateFormat() + " hh:nn:ss";
}

std::string FormatDuration(double days) {
  const double ms = std::round(std::fabs(days) * kMsPerDay);
  if (!std::isfinite(ms)) return GeneralFloat(days);
  const double wholeDays = std::floor(ms / kMsPerDay);
  const std::string ofDay = FormatDateTime("hh:nn:ss.zzz", (ms - wholeDays * kMsPerDay) / kMsPerDay);
  const std::string length = wholeDays > 0 ? fmt::format("{:.0f} d {}", wholeDays, ofDay) : ofDay;
  return days < 0 && ms > 0 ? "-" + length : length;
}

std::string DurationInWords(double days) {
  const double seconds = std::fabs(days) * kUnits[0].seconds;
  if (!std::isfinite(seconds)) return GeneralFloat(days);
  if (seconds < 59.95) return MaskFloat("0.#", seconds) + " s";
  // The smallest pair of units in which the rounded length stays below the next larger unit.
  std::size_t i = std::size(kUnits) - 2;
  while (i > 0 && std::round(seconds / kUnits[i + 1].seconds) * kUnits[i + 1].seconds >= kUnits[i - 1].seconds) --i;
  const double perUnit = kUnits[i].seconds / kUnits[i + 1].seconds;
  const double parts = std::round(seconds / kUnits[i + 1].seconds);
  const double rest = std::fmod(parts, perUnit);
  const std::string text = fmt::format("{:.0f} {}", (parts - rest) / perUnit, kUnits[i].name);
  return rest > 0 ? fmt::format("{} {:.0f} {}", text, rest, kUnits[i + 1].name) : text;
}

std::string ExactDuration(double ms) {
  std::string text;
  for (const TUnitOfTime& unit : kUnits) {
    const bool isLast = &unit == std::end(kUnits) - 1;
    const double amount = isLast ? ms / 1000 : std::floor(ms / (unit.seconds * 1000));
    ms -= amount * unit.seconds * 1000;
    if (amount == 0 && !(isLast && text.empty())) continue;
    text += fmt::format("{}{} {}", text.empty() ? "" : " ", GeneralFloat(amount), unit.name);
  }
  return text;
}

std::optional<double> ParseDuration(std::string_view text) {
  constexpr double kMaxMs = 36500 * kMsPerDay;
  const auto skipBlanks = [&text] { text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); };
  double ms = 0;
  do {
    skipBlanks();
    double amount = 0;
    const auto [rest, error] =
        std::from_chars(text.data(), text.data() + text.size(), amount, std::chars_format::fixed);
    if (error != std::errc() || !(amount >= 0)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    skipBlanks();
    const std::string_view name = text.substr(0, text.find_first_of(" .0123456789"));
    const auto* unit = std::ranges::find(kUnits, name, &TUnitOfTime::name);
    if (unit == std::end(kUnits)) return std::nullopt;
    ms += amount * unit->seconds * 1000;
    text.remove_prefix(name.size());
    skipBlanks();
  } while (!text.empty());
  if (!(ms <= kMaxMs)) return std::nullopt;
  return std::round(ms);
}

double UtcNow() {
  const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
  return kDaysTo1970 + now.count() / 86400;
}

std::string FormatDateTime(std::string_view mask, double dateTime) {
  // The time of day has no sign, so it is rounded apart from the date; 24:00 is the next date, also before the epoch.
  const double whole = std::trunc(dateTime);
  const double ofDay = std::round(std::fabs(dateTime - whole) * kMsPerDay);
  const double day = ofDay < kMsPerDay ? whole : whole + 1;
  if (!(day >= kFirstDay && day <= kLastDay)) return GeneralFloat(dateTime);

  const auto ms = ofDay < kMsPerDay ? static_cast<std::int64_t>(ofDay) : 0;
  const TMoment moment{kDateEpoch + std::chrono::days{static_cast<std::int64_t>(day)}, ms / 3600000, ms / 60000 % 60,
                       ms / 1000 % 60, ms % 1000};

  std::string text;
  for (std::size_t i = 0; i < mask.size();) {
    const std::size_t next = mask.find_first_not_of(mask[i], i);
    const std::size_t length = (next == std::string_view::npos ? mask.size() : next) - i;
    text += Token(mask[i], length, moment);
    i += length;
  }
  return text;
}
