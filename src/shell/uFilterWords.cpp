#include "shell/uFilterWords.h"

#include <fmt/format.h>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

constexpr std::string_view kBetween = " · ";

template <class TTextOf>
std::string RangeWords(std::string_view name, const TRange& range, const TTextOf& textOf) {
  std::string words(name);
  if (range.from) words += fmt::format(" from {}", textOf(*range.from));
  if (range.to) words += fmt::format(" to {}", textOf(*range.to));
  return words;
}

}  // namespace

std::string TimeWords(std::string_view name, const TRange& time, const TDisplaySettings& settings) {
  const std::string mask = fmt::format("{} hh:nn:ss", settings.DateFormat());
  return RangeWords(name, time, [&mask](double end) { return FormatDateTime(mask, end); });
}

std::string FilterWords(const TEventFilter& filter, const TDisplaySettings& settings) {
  std::string words;
  for (std::size_t i = 0; i < filter.ranges.size(); ++i) {
    if (!filter.ranges[i].IsSet()) continue;
    const std::string range = RangeWords(kFilterQuantities[i].name, filter.ranges[i], GeneralFloat);
    AppendListItem(words, fmt::format("{} {}", range, kFilterQuantities[i].unit), kBetween);
  }
  std::string axes;
  for (std::size_t i = 0; i < kPeakAxes.size(); ++i) {
    if (!filter.axes[i]) continue;
    axes += axes.empty() ? "peak on " : " or ";
    axes += kPeakAxes[i];
  }
  if (!axes.empty()) AppendListItem(words, axes, kBetween);
  if (filter.time.IsSet()) AppendListItem(words, TimeWords("start", filter.time, settings), kBetween);
  if (filter.aboveAlarm) AppendListItem(words, "above alarm", kBetween);
  return words;
}
