// Colours as text: a name such as "clBlue", or "$00BBGGRR" in hexadecimal for a colour without a name.
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
// Ignores the case of names. Nothing when the text is no colour.
std::optional<std::uint32_t> ColourFromText(std::string_view text);
std::string TextFromColour(std::uint32_t rgb);
