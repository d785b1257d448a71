#include "shell/uAllowances.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uSettings.h"

namespace {

constexpr std::string_view kNone = "none";

bool IsDefault(TQuantity quantity, bool isMax, const TLimitProfile& profile) {
  const auto i = static_cast<std::size_t>(quantity);
  const TLimits& limits = profile.limits.at(i).values;
  const TLimits& byDefault = DefaultSettings().display.limits.at(i);
  return isMax ? limits.max == byDefault.max : limits.min == byDefault.min;
}

}  // namespace

std::optional<std::uint32_t> ParseEvents(std::string_view text) {
  std::uint32_t count = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, count);
  if (error != std::errc()) return std::nullopt;
  const std::string_view word(rest, static_cast<std::size_t>(end - rest));
  if (word != "" && word != " event" && word != " events") return std::nullopt;
  return count;
}

std::string AllowanceText(const TLimitProfile& profile, TQuantity quantity, bool isMax) {
  const auto i = static_cast<std::size_t>(quantity);
  const TJudgedLimits& limits = profile.limits.at(i);
  if ((isMax ? limits.maxSource : limits.minSource) != TLimitSource::User) return "";
  if (quantity == TQuantity::Acceleration) {
    const std::size_t events = profile.allowedEvents;
    return events == 0 ? std::string(kNone) : Counted(events, "event");
  }
  const TAllowedTimes& times = profile.allowedTimes.at(i);
  const double time = isMax ? times.above : times.below;
  return time > 0 ? ExactDuration(time) : std::string(kNone);
}

std::string TypeAllowance(std::string_view text, TQuantity quantity, bool isMax, TLimitProfile& profile) {
  const std::string typed = AsciiLower(Trimmed(text));
  const bool none = typed.empty() || typed == kNone || typed == "0";
  const TLimitEnd limit{quantity, isMax};
  if (quantity == TQuantity::Acceleration) {
    const auto events = none ? 0 : ParseEvents(typed);
    if (!events) return fmt::format("\"{}\" is no number of events. Type for instance 3, or none.", Printable(typed));
    profile.allowedEvents = *events;
  } else {
    const auto time = none ? 0 : ParseDuration(typed);
    if (!time) return fmt::format("\"{}\" is no length of time. Type for instance 2 h, or none.", Printable(typed));
    limit.AllowedIn(profile) = *time;
  }
  const bool leftOut = typed.empty() && IsDefault(quantity, isMax, profile);
  limit.SourceIn(profile.limits) = leftOut ? TLimitSource::Default : TLimitSource::User;
  return "";
}
