// Colours as text: a name such as "clBlue", or the number 0xBBGGRR for a colour without a name, written as "$00BBGGRR".
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

struct TNamedColour {
  std::string_view name;
  std::uint32_t rgb;  // 0xRRGGBB
};

// One name for each colour.
std::span<const TNamedColour> NamedColours();
// Ignores the case of names. A number may be hexadecimal after "$" or "0x", or decimal. Nothing when the text is no
// colour.
std::optional<std::uint32_t> ColourFromText(std::string_view text);
std::string TextFromColour(std::uint32_t rgb);
