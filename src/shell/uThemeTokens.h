// The colours of the window's surfaces and texts in both schemes, 0xRRGGBB. The colours of curves are settings.
#pragma once

#include <cstdint>

struct TThemeTokens {
  std::uint32_t ground;   // behind the surfaces
  std::uint32_t surface;  // charts, grids, cards, pages
  std::uint32_t hairline;
  std::uint32_t ink, secondaryInk;
  std::uint32_t accent, accentTint;  // controls that are on, selection, focus
  std::uint32_t alarm, alarmTint;
};

inline constexpr TThemeTokens kLightTokens{0xF4F5F7, 0xFFFFFF, 0xDDE1E6, 0x1B2430, 0x5A6675,
                                           0x1F6FB2, 0xE3EFF9, 0xB8480B, 0xFDEEE3};
inline constexpr TThemeTokens kDarkTokens{0x15171A, 0x1E2125, 0x30353B, 0xE7EAEE, 0x9BA6B3,
                                          0x5CABE8, 0x22384A, 0xFF9A4D, 0x43301F};
