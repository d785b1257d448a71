#include "analysis/uLimitCurve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(LimitCurve, IsStraightWhereBothAxesAreLogarithmic) {
  const TLimitCurve limit = ParseLimitCurve(
      "\xEF\xBB\xBF\"Frequency (Hz)\",\"g\"\r\n# drawn from the tender\r\n\r\n"
      "10,100\r\n \"1000\" , 1e0 \r\n2000,1");
  ASSERT_EQ(limit.size(), 3U);
  EXPECT_DOUBLE_EQ(LimitAt(limit, 10).value(), 100);
  EXPECT_NEAR(LimitAt(limit, 100).value(), 10, 1e-12);
  EXPECT_DOUBLE_EQ(LimitAt(limit, 2000).value(), 1);
  EXPECT_FALSE(LimitAt(limit, 9.99));
  EXPECT_FALSE(LimitAt(limit, 2001));
  EXPECT_NEAR(MarginAt(limit, 100, 1).value(), 20, 1e-9);
  EXPECT_NEAR(MarginAt(limit, 100, 100).value(), -20, 1e-9);
  EXPECT_FALSE(MarginAt(limit, 100, 0));
}

TEST(LimitCurve, WhatMeansNothingIsRefusedWithItsLine) {
  const auto why = [](std::string_view text) -> std::string {
    try {
      (void)ParseLimitCurve(text);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "taken";
  };
  using testing::StartsWith;
  EXPECT_THAT(why(""), StartsWith("The file has fewer than two points."));
  EXPECT_THAT(why("10,5"), StartsWith("The file has fewer than two points."));
  EXPECT_THAT(why("Hz,g\nHz,g\n10,5\n20,5"), StartsWith("Line 2 is no"));
  for (const char* line : {"20", "20,0", "20,-1", "20,inf", "0,5", "20,5,1", "20;5", "20,5 g", "1.000,5,1", "nan,1"}) {
    EXPECT_THAT(why("10,5\n" + std::string(line) + "\n30,5"), StartsWith("Line 2 is no")) << line;
  }
  EXPECT_THAT(why("10,5\n10,6"), StartsWith("The frequency of line 2 does not rise."));
}

}  // namespace
