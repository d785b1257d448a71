#include "shell/uColourNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "base/uText.h"

namespace {

// The last two are other names of colours before them, and only read.
constexpr TNamedColour kNames[] = {
    {"clBlack", 0x000000},   {"clMaroon", 0x800000},  {"clGreen", 0x008000},      {"clOlive", 0x808000},
    {"clNavy", 0x000080},    {"clPurple", 0x800080},  {"clTeal", 0x008080},       {"clGray", 0x808080},
    {"clSilver", 0xC0C0C0},  {"clRed", 0xFF0000},     {"clLime", 0x00FF00},       {"clYellow", 0xFFFF00},
    {"clBlue", 0x0000FF},    {"clFuchsia", 0xFF00FF}, {"clAqua", 0x00FFFF},       {"clWhite", 0xFFFFFF},
    {"clSkyBlue", 0xA6CAF0}, {"clCream", 0xFFFBF0},   {"clMoneyGreen", 0xC0DCC0}, {"clMedGray", 0xA0A0A4},
    {"clLtGray", 0xC0C0C0},  {"clDkGray", 0x808080}};
constexpr auto kNamed = std::span(kNames).first<std::size(kNames) - 2>();

// Exchanges blue and red.
std::uint32_t Swapped(std::uint32_t colour) {
  return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

}  // namespace

std::span<const TNamedColour> NamedColours() {
  return kNamed;
}

std::optional<std::uint32_t> ColourFromText(std::string_view text) {
  const std::string name = AsciiLower(text);
  const auto* named =
      std::ranges::find_if(kNames, [&name](const TNamedColour& c) { return AsciiLower(c.name) == name; });
  if (named != std::end(kNames)) return named->rgb;
  const std::size_t prefix = name.starts_with('$') ? 1 : name.starts_with("0x") ? 2 : 0;
  const auto colour = NumberIn<std::uint32_t>(std::string_view(name).substr(prefix), prefix > 0 ? 16 : 10);
  if (!colour || *colour > 0xFFFFFF) return std::nullopt;
  return Swapped(*colour);
}

std::string TextFromColour(std::uint32_t rgb) {
  const auto named = std::ranges::find(kNamed, rgb, &TNamedColour::rgb);
  return named != kNamed.end() ? std::string(named->name) : fmt::format("${:08X}", Swapped(rgb));
}
