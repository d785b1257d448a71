#include "analysis/uLimitCurve.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kMaxBytes = 1'000'000;

// Without blanks, quotes and line ends around it.
std::string_view WithoutQuotes(std::string_view text) {
  constexpr std::string_view kAround = " \t\r\"";
  const std::size_t begin = text.find_first_not_of(kAround);
  return begin == std::string_view::npos ? "" : text.substr(begin, text.find_last_not_of(kAround) - begin + 1);
}

// What is before `mark`, which is taken off the text with it.
std::string_view TakeUntil(char mark, std::string_view& text) {
  const std::size_t end = std::min(text.find(mark), text.size());
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return taken;
}

std::optional<double> NumberAbove0(std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || !std::isfinite(value) || !(value > 0)) return std::nullopt;
  return value;
}

}  // namespace

TLimitCurve ParseLimitCurve(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  TLimitCurve limit;
  bool mayBeTitles = true;
  for (int number = 1; !text.empty(); ++number) {
    std::string_view line = WithoutQuotes(TakeUntil('\n', text));
    if (line.empty() || line[0] == '#') continue;
    const auto hertz = NumberAbove0(WithoutQuotes(TakeUntil(',', line)));
    const auto g = NumberAbove0(WithoutQuotes(TakeUntil(',', line)));
    const bool areTitles = std::exchange(mayBeTitles, false) && !hertz && !g;
    if (areTitles) continue;
    if (!hertz || !g || !WithoutQuotes(line).empty()) {
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

TLimitCurve ReadLimitCurve(const fs::path& path) {
  if (!fs::is_regular_file(path)) throw std::runtime_error("The file is no file.");
  if (fs::file_size(path) > kMaxBytes) throw std::runtime_error("The file is larger than 1 MB.");
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw std::runtime_error("The file cannot be read.");
  return ParseLimitCurve(text);
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
