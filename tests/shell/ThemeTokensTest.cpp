// What has to be legible is, in both schemes.
#include "shell/uThemeTokens.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/uContrast.h"
#include "shell/uColourNames.h"

namespace {

constexpr TThemeTokens kSchemes[] = {kLightTokens, kDarkTokens};

TEST(Contrast, IsThatOfTheGuidelines) {
  EXPECT_DOUBLE_EQ(Contrast(0x000000, 0xFFFFFF), 21);
  EXPECT_DOUBLE_EQ(Contrast(0x336699, 0x336699), 1);
  // Worked out by hand: 0.2126 · 1 + 0.05 over 0.05, and 1.05 over 0.7152 · ((128/255 + 0.055)/1.055)^2.4 + 0.05.
  EXPECT_NEAR(Contrast(0xFF0000, 0x000000), 5.252, 1e-9);
  EXPECT_NEAR(Contrast(0x008000, 0xFFFFFF), 5.1374, 1e-4);
  EXPECT_NEAR(Contrast(0xA6CAF0, 0xFFFFFF), 1.7, 0.02);
}

TEST(ThemeTokens, TextAndControlsStandOutFromWhatTheyStandOn) {
  for (const TThemeTokens& t : kSchemes) {
    for (const std::uint32_t behind : {t.ground, t.surface}) {
      for (const std::uint32_t text : {t.ink, t.secondaryInk, t.accent, t.alarm}) {
        EXPECT_GE(Contrast(text, behind), kTextContrast) << std::hex << text << " on " << behind;
      }
    }
    for (const auto& [text, tint] : {std::pair(t.accent, t.accentTint), std::pair(t.alarm, t.alarmTint)}) {
      EXPECT_GE(Contrast(text, tint), kTextContrast) << std::hex << text << " on " << tint;
      EXPECT_GE(Contrast(t.ink, tint), kTextContrast) << std::hex << tint;
    }
  }
}

TEST(StandOut, MakesEveryNamedColourACurveAndATextOnBothSurfaces) {
  for (const TThemeTokens& t : kSchemes) {
    for (const TNamedColour& colour : NamedColours()) {
      for (const double wanted : {kCurveContrast, kTextContrast}) {
        const std::uint32_t drawn = StandOut(colour.rgb, t.surface, wanted);
        EXPECT_GE(Contrast(drawn, t.surface), wanted) << colour.name;
        if (Contrast(colour.rgb, t.surface) >= wanted) {
          EXPECT_EQ(drawn, colour.rgb) << colour.name << " is left alone";
        } else {
          EXPECT_EQ(RelativeLuminance(drawn) > RelativeLuminance(colour.rgb), IsDarkGround(t.surface)) << colour.name;
        }
      }
    }
  }
}

TEST(StandOut, ChangesNoMoreThanTheContrastNeedsAndKeepsTheHue) {
  for (const auto& [colour, ground] : {std::pair(0xA6CAF0U, kLightTokens.surface), {0x000080U, kDarkTokens.surface}}) {
    const std::uint32_t drawn = StandOut(colour, ground);
    EXPECT_LT(Contrast(drawn, ground), kCurveContrast + 0.05);
    // Hue is what lies between the middle and the smallest part, relative to the largest.
    const auto hue = [](std::uint32_t rgb) {
      const double red = rgb >> 16, green = rgb >> 8 & 0xFF, blue = rgb & 0xFF;
      return (green - red) / (blue - red);
    };
    EXPECT_NEAR(hue(drawn), hue(colour), 0.02);
  }
}

TEST(StandOut, BlackIsWhiteOnDarkAndAnyGroundCanBeStoodOutFrom) {
  EXPECT_EQ(StandOut(0x000000, kDarkTokens.surface), 0xFFFFFFU);
  EXPECT_EQ(StandOut(0xFFFFFF, kDarkTokens.surface), 0xFFFFFFU);
  for (std::uint32_t grey = 0; grey < 0x100; ++grey) {
    const std::uint32_t ground = grey * 0x010101U;
    EXPECT_GE(Contrast(StandOut(ground, ground, kTextContrast), ground), kTextContrast) << grey;
  }
}

}  // namespace
