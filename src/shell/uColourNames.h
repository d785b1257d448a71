// Colours as text: a name such as "clBlue" where there is one, else "$00BBGGRR" in hexadecimal.
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

std::span<const TNamedColour> NamedColours();
// Names do not tell capitals from small letters. Nothing for a text that is no colour.
std::optional<std::uint32_t> ColourFromText(std::string_view text);
std::string TextFromColour(std::uint32_t rgb);
