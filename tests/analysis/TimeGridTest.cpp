#include "analysis/uTimeGrid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// x is the square of the time.
std::vector<TEventValue> SamplesAt(const std::vector<double>& times) {
  std::vector<TEventValue> samples;
  for (const double time : times) samples.push_back({time, static_cast<float>(time * time), 0, 0});
  return samples;
}

TEST(TimeGrid, IsFittedByLeastSquaresAndSamplesWithinHalfAStepStandAsTheyAre) {
  const auto samples = SamplesAt({1000, 1001.2, 1002, 1003});
  const TTimeGrid grid = FitTimeGrid(samples);
  EXPECT_NEAR(grid.stepMs, 0.98, 1e-12);
  EXPECT_NEAR(grid.startMs, 0.08, 1e-12);
  EXPECT_NEAR(grid.farthest, 0.14 / 0.98, 1e-12);
  EXPECT_EQ(WhatGridDid(grid), "times off the grid by up to 0.14 sample");
  EXPECT_EQ(ValuesOnGrid(samples, grid)[1].x, samples[1].xvalue);
  EXPECT_EQ(WhatGridDid(FitTimeGrid(SamplesAt({5, 5.5, 6.001, 6.5}))), "") << "0.001 ms is not worth a word";
}

TEST(TimeGrid, AMissingSampleIsFilledInAndUpToATenthMayBeMissing) {
  const auto samples = SamplesAt({0, 1, 2, 4, 5, 6, 7, 8, 9});
  const TTimeGrid grid = FitTimeGrid(samples);
  EXPECT_THAT(grid.places, testing::ElementsAre(0, 1, 2, 4, 5, 6, 7, 8, 9));
  EXPECT_NEAR(grid.stepMs, 1, 1e-12);
  EXPECT_EQ(WhatGridDid(grid), "1 missing sample filled in");
  const auto values = ValuesOnGrid(samples, grid);
  ASSERT_EQ(values.size(), 10);
  EXPECT_NEAR(values[3].x, 10, 1e-9) << "between 4 and 16";
  EXPECT_EQ(values[4].x, 16);
  EXPECT_EQ(FitTimeGrid(SamplesAt({0, 1, 2, 4, 5, 6, 7, 8})).problem, TTimeGridProblem::TooManyMissing);
}

// A clock that slows down: the ends lie late of the grid, the middle early.
TEST(TimeGrid, SamplesFartherOffAreInterpolatedOnStraightLines) {
  std::vector<TEventValue> samples;
  for (int i = 0; i < 30; ++i) {
    const double time = 7000 + i + 0.005 * i * i;
    samples.push_back({time, static_cast<float>(i), static_cast<float>(time), 1});
  }
  const TTimeGrid grid = FitTimeGrid(samples);
  EXPECT_GT(grid.farthest, 0.5);
  EXPECT_LT(grid.startMs, 0);
  EXPECT_THAT(WhatGridDid(grid), testing::EndsWith(" sample, interpolated, 0 samples missing"));
  const auto values = ValuesOnGrid(samples, grid);
  ASSERT_EQ(values.size(), 30);
  EXPECT_EQ(values[0].y, 7000) << "before the first sample stands the first";
  for (std::size_t n = 1; n < 30; ++n) {
    EXPECT_NEAR(values[n].y, 7000 + grid.startMs + static_cast<double>(n) * grid.stepMs, 1e-3);
    EXPECT_EQ(values[n].z, 1);
  }
}

TEST(TimeGrid, TimesWithoutAGridAreRefusedWithTheReason) {
  using enum TTimeGridProblem;
  const std::pair<std::vector<double>, TTimeGridProblem> cases[] = {
      {{}, TooFewSamples},
      {{8}, TooFewSamples},
      {{8, 9}, None},
      {{8, 8, 8}, TimesNotRising},
      {{0, 1, 2, 1.5, 3}, TimesNotRising},
      {{1, 2, kNaN, 4}, NoRate},
      {{0, 1, kInfinity}, NoRate},
      {{-1.7e308, 0, 1.7e308}, NoRate},
      {{0, 5e-324, 1e-323}, NoRate},
      {{0, 1, 1e15}, TooManyMissing},
  };
  for (const auto& [times, problem] : cases) {
    const TTimeGrid grid = FitTimeGrid(SamplesAt(times));
    EXPECT_EQ(grid.problem, problem) << testing::PrintToString(times);
    EXPECT_EQ(WhyNoGrid(grid).empty(), problem == None);
    EXPECT_EQ(grid.PointCount() > 0, problem == None);
  }
  std::vector<double> gap;
  for (int i = 0; i < 2000; ++i) gap.push_back(i < 1990 ? i : 1e12 + i);
  EXPECT_EQ(FitTimeGrid(SamplesAt(gap)).problem, TooManyMissing);
}

}  // namespace
