#include "shell/uColourNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "base/uText.h"

namespace {

constexpr TNamedColour kNamed[] = {{"clBlack", 0x000000}, {"clMaroon", 0x800000},  {"clGreen", 0x008000},
                                   {"clOlive", 0x808000}, {"clNavy", 0x000080},    {"clPurple", 0x800080},
                                   {"clTeal", 0x008080},  {"clGray", 0x808080},    {"clSilver", 0xC0C0C0},
                                   {"clRed", 0xFF0000},   {"clLime", 0x00FF00},    {"clYellow", 0xFFFF00},
                                   {"clBlue", 0x0000FF},  {"clFuchsia", 0xFF00FF}, {"clAqua", 0x00FFFF},
                                   {"clWhite", 0xFFFFFF}, {"clSkyBlue", 0xA6CAF0}};

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
      std::ranges::find_if(kNamed, [&name](const TNamedColour& c) { return AsciiLower(c.name) == name; });
  if (named != std::end(kNamed)) return named->rgb;
  if (!text.starts_with('$')) return std::nullopt;
  std::uint32_t colour = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data() + 1, end, colour, 16);
  if (error != std::errc() || rest != end || colour > 0xFFFFFF) return std::nullopt;
  return Swapped(colour);
}

std::string TextFromColour(std::uint32_t rgb) {
  const auto* named = std::ranges::find(kNamed, rgb, &TNamedColour::rgb);
  return named != std::end(kNamed) ? std::string(named->name) : fmt::format("${:08X}", Swapped(rgb));
}
