#include "analysis/uRangeStatistics.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TRangeStatistics Of(std::initializer_list<float> values) {
  TStatisticsSum sum;
  for (const float value : values) sum.Add(value);
  return sum.Result();
}

TEST(RangeStatistics, CountMinimumMaximumMeanAndRmsIgnoreValuesThatAreNotFinite) {
  const TRangeStatistics found = Of({kNaN, -3, kInfinity, 1, 2, -kInfinity, 4, kNaN});
  EXPECT_EQ(found.count, 4U);
  EXPECT_EQ(found.min, -3);
  EXPECT_EQ(found.max, 4);
  EXPECT_EQ(found.PeakToPeak(), 7);
  EXPECT_EQ(found.mean, 1);
  EXPECT_DOUBLE_EQ(found.rms, std::sqrt(30.0 / 4));
}

TEST(RangeStatistics, WithoutAValueAllButTheCountIsNaN) {
  for (const TRangeStatistics& found : {Of({}), Of({kNaN, kInfinity})}) {
    EXPECT_EQ(found.count, 0U);
    EXPECT_TRUE(std::isnan(found.min) && std::isnan(found.max) && std::isnan(found.PeakToPeak()));
    EXPECT_TRUE(std::isnan(found.mean) && std::isnan(found.rms));
  }
}

TEST(RangeStatistics, LosesNoDigitsWithTheLargestAndSmallestSingles) {
  EXPECT_DOUBLE_EQ(Of({FLT_MAX, FLT_MAX}).rms, double{FLT_MAX});
  EXPECT_DOUBLE_EQ(Of({FLT_TRUE_MIN, -FLT_TRUE_MIN}).rms, double{FLT_TRUE_MIN});
  EXPECT_EQ(Of({1e30F, 1, -1e30F}).mean, 1.0 / 3) << "what the large ones swallow comes back";
}

TEST(RangeStatistics, LosesNoDigitsOverTenMillionValues) {
  TStatisticsSum sum;
  for (int i = 0; i < 10000000; ++i) sum.Add(0.1F);
  EXPECT_DOUBLE_EQ(sum.Result().mean, double{0.1F});
  EXPECT_DOUBLE_EQ(sum.Result().rms, double{0.1F});
}

}  // namespace
