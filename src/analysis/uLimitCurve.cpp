#include "analysis/uLimitCurve.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "base/uFiles.h"
#include "base/uText.h"

namespace {

constexpr std::string_view kAround = " \t\r\"";  // a line or a field

std::optional<double> NumberAbove0(std::string_view text) {
  const auto value = NumberIn<double>(Trimmed(text, kAround));
  return value && std::isfinite(*value) && *value > 0 ? value : std::nullopt;
}

}  // namespace

TLimitCurve ParseLimitCurve(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  TLimitCurve limit;
  bool mayBeTitles = true;
  for (int number = 1; !text.empty(); ++number) {
    std::string_view line = Trimmed(TakeUntil(text, "\n"), kAround);
    if (line.empty() || line[0] == '#') continue;
    const auto hertz = NumberAbove0(TakeUntil(line, ","));
    const auto g = NumberAbove0(TakeUntil(line, ","));
    const bool areTitles = std::exchange(mayBeTitles, false) && !hertz && !g;
    if (areTitles) continue;
    if (!hertz || !g || !Trimmed(line, kAround).empty()) {
      throw std::runtime_error(
          fmt::format("Line {} is no frequency and acceleration above 0, such as \"100,50\".", number));
    }
    if (!limit.empty() && !(*hertz > limit.back().hertz)) {
      throw std::runtime_error(fmt::format("The frequency of line {} does not rise.", number));
    }
    limit.push_back({*hertz, *g});
  }
  if (limit.size() < 2) throw std::runtime_error("The file has fewer than two points.");
  return limit;
}

TLimitCurve ReadLimitCurve(const std::filesystem::path& path) {
  return ParseLimitCurve(ReadSmallFile(path));
}

std::optional<double> LimitAt(const TLimitCurve& limit, double hertz) {
  if (!(hertz >= limit.front().hertz && hertz <= limit.back().hertz)) return std::nullopt;
  const auto above = std::ranges::lower_bound(limit, hertz, {}, &TLimitPoint::hertz);
  if (above->hertz == hertz) return above->g;
  const auto below = above - 1;
  const double part = std::log(hertz / below->hertz) / std::log(above->hertz / below->hertz);
  return below->g * std::pow(above->g / below->g, part);
}

std::optional<double> MarginAt(const TLimitCurve& limit, double hertz, double g) {
  const auto allowed = LimitAt(limit, hertz);
  if (!allowed || !(g > 0)) return std::nullopt;
  return 20 * std::log10(*allowed / g);
}
