#include "shell/uFilterWords.h"

#include <fmt/format.h>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

void Append(std::string& words, std::string_view condition) {
  if (!words.empty()) words += " · ";
  words += condition;
}

template <class TTextOf>
std::string RangeWords(std::string_view name, const TRange& range, const TTextOf& textOf) {
  std::string words(name);
  if (range.from) words += fmt::format(" from {}", textOf(*range.from));
  if (range.to) words += fmt::format(" to {}", textOf(*range.to));
  return words;
}

}  // namespace

std::string FilterWords(const TEventFilter& filter, const TDisplaySettings& settings) {
  std::string words;
  for (std::size_t i = 0; i < filter.ranges.size(); ++i) {
    if (!filter.ranges[i].IsSet()) continue;
    Append(words, fmt::format("{} {}", RangeWords(kFilterQuantities[i].name, filter.ranges[i], GeneralFloat),
                              kFilterQuantities[i].unit));
  }
  std::string axes;
  for (std::size_t i = 0; i < kPeakAxes.size(); ++i) {
    if (!filter.axes[i]) continue;
    axes += axes.empty() ? "peak on " : " or ";
    axes += kPeakAxes[i];
  }
  if (!axes.empty()) Append(words, axes);
  if (filter.time.IsSet()) {
    const std::string mask = fmt::format("{} hh:nn:ss", settings.DateFormat());
    Append(words, RangeWords("start", filter.time, [&](double time) { return FormatDateTime(mask, time); }));
  }
  if (filter.aboveAlarm) Append(words, "above alarm");
  return words;
}
