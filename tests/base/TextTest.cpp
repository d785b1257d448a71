#include "base/uText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "base/uDateTime.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Text, GeneralFormKeepsFifteenDigitsAndIsFixedBetweenMinusFiveAndFourteen) {
  const std::pair<double, const char*> cases[] = {{0.25, "0.25"},
                                                  {0.1 + 0.2, "0.3"},
                                                  {double{0.1F}, "0.100000001490116"},
                                                  {-0.0, "0"},
                                                  {100, "100"},
                                                  {-1234.5, "-1234.5"},
                                                  {0.00001, "0.00001"},
                                                  {0.000001, "1E-6"},
                                                  {-0.0000025, "-2.5E-6"},
                                                  {123456789012345, "123456789012345"},
                                                  {2.5e15, "2.5E15"},
                                                  {999999999999999.9, "1E15"},
                                                  {9.9999999999999996e-6, "0.00001"},
                                                  {5e-324, "4.94065645841247E-324"},
                                                  {-kInfinity, "-INF"},
                                                  {std::numeric_limits<double>::quiet_NaN(), "NAN"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(GeneralFloat(value), text);
}

// The exact digits of the C library are the independent answer.
TEST(Text, GeneralFormHasTheFifteenDigitsOfTheExactValue) {
  std::mt19937_64 random(1);
  const auto check = [](double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.14e", value);
    EXPECT_EQ(std::strtod(GeneralFloat(value).c_str(), nullptr), std::strtod(text, nullptr)) << text;
  };
  for (int i = 0; i < 20000; ++i) {
    const auto bits = random();
    const auto value = std::bit_cast<double>(bits);
    if (std::isfinite(value)) check(value);
    check(double{std::bit_cast<float>(static_cast<std::uint32_t>(bits) & 0x4FFFFFFFU)});
    check(static_cast<double>(bits % 200001) / 1e4 - 10);
  }
}

TEST(Text, MasksRoundTheFifteenDigitsWithHalvesAwayFromZero) {
  struct TCase {
    const char* mask;
    double value;
    const char* text;
  };
  const TCase cases[] = {{"0.##", 1.005, "1.01"},  // in binary a little less, in 15 digits a half
                         {"0", 2.5, "3"},
                         {"0", -2.5, "-3"},
                         {"0", 0.4999999999999999, "1"},  // 0.500000000000000 in 15 digits
                         {"0", 1000.0000001, "1000"},
                         {"0.##", 0.006, "0.01"},
                         {"0.##", 0.0049, "0"},
                         {"0.##", -0.0049, "0"},
                         {"0.000", 1.5, "1.500"},
                         {"0.000", -0.0001, "0.000"},
                         {"0.###", 9.9996, "10"},
                         {"0.0", 999.95, "1000.0"},
                         {"0", 1e20, "100000000000000000000"},
                         {"0.#", kInfinity, "INF"}};
  for (const auto& [mask, value, text] : cases) EXPECT_EQ(MaskFloat(mask, value), text) << mask << " of " << value;
}

TEST(Text, EveryByteOfTheCodePageComesBack) {
  AnsiString all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
  EXPECT_EQ(Windows1252ToUtf8("\x80 \xFC \x81"), "\u20AC \u00FC \u0081");
}

TEST(Text, CharactersOutsideTheCodePageBecomeQuestionMarks) {
  EXPECT_EQ(Utf8ToWindows1252("a\u4E2D\U0001F600b"), "a??b");
  EXPECT_EQ(Utf8ToWindows1252("a\xFF\xE2\x82"), "a???");  // malformed and cut short
}

TEST(DateTime, FollowsTheMaskAndRoundsToWholeMilliseconds) {
  const double day = 45123;  // 2023-07-16
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", day + 0.25), "2023-07-16 06:00:00.000");
  EXPECT_EQ(FormatDateTime("dd.mm.yy h:n:s.z", day + (3 * 3600 + 4 * 60 + 5.006) / 86400), "16.07.23 3:4:5.6");
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss", day + 0.9999999999), "2023-07-17 00:00:00");
  EXPECT_EQ(FormatDateTime("ss.zzz", day + 59.9996 / 86400), "00.000");
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh", -1.25), "1899-12-29 06");
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn", -0.9999999999), "1899-12-31 00:00") << "24 hours of 1899-12-30";
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn", -1.9999999999), "1899-12-30 00:00");
}

TEST(DateTime, ADurationIsWrittenToTheMillisecondAndMayBeNegative) {
  EXPECT_EQ(FormatDuration((3 * 3600 + 4 * 60 + 5.678) / 86400), "03:04:05.678");
  EXPECT_EQ(FormatDuration(2.75), "2 d 18:00:00.000");
  EXPECT_EQ(FormatDuration(0.9999999999), "1 d 00:00:00.000");
  EXPECT_EQ(FormatDuration(-1.25), "-1 d 06:00:00.000");
  EXPECT_EQ(FormatDuration(-1e-12), "00:00:00.000");
  EXPECT_EQ(FormatDuration(-kInfinity), "-INF");
}

TEST(DateTime, ADurationInWordsHasItsTwoLargestUnitsRounded) {
  constexpr double kSecond = 1.0 / 86400;
  EXPECT_EQ(DurationInWords(3 + 4.4 / 24), "3 d 4 h");
  EXPECT_EQ(DurationInWords(10), "10 d");
  EXPECT_EQ(DurationInWords(1 - 0.6 * kSecond), "1 d");
  EXPECT_EQ(DurationInWords(9.2 / 24), "9 h 12 min");
  EXPECT_EQ(DurationInWords(3599 * kSecond), "59 min 59 s");
  EXPECT_EQ(DurationInWords(3599.6 * kSecond), "1 h");
  EXPECT_EQ(DurationInWords(59.96 * kSecond), "1 min");
  EXPECT_EQ(DurationInWords(45.47 * kSecond), "45.5 s");
  EXPECT_EQ(DurationInWords(0), "0 s");
  EXPECT_EQ(DurationInWords(kInfinity), "INF");
}

TEST(DateTime, AValueThatIsNoDateIsWrittenAsANumber) {
  EXPECT_EQ(FormatDateTime("yyyy", kInfinity), "INF");
  EXPECT_EQ(FormatDateTime("yyyy", std::numeric_limits<double>::quiet_NaN()), "NAN");
  EXPECT_EQ(FormatDateTime("yyyy", 1e9), "1000000000");
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd", 2958465.5), "9999-12-31");
  EXPECT_EQ(FormatDateTime("yyyy", 2958465.9999999999), "2958466");
}

}  // namespace
