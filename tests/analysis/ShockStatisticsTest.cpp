#include "analysis/uShockStatistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "analysis/uDamageBoundary.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(DamageBoundary, IsThatOfARectangularPulse) {
  const std::pair<double, double> curve[] = {{1.02, 2.96500}, {1.05, 1.95018}, {1.1, 1.46865}, {1.2, 1.16875},
                                             {1.3, 1.06427},  {1.5, 1.00282},  {1.571, 1},     {9, 1}};
  for (const auto& [velocity, acceleration] : curve) {
    EXPECT_NEAR(DamageBoundary(velocity), acceleration, 5e-6) << velocity;
    const TFragility limits{2, 30};
    EXPECT_TRUE(IsDamaging({2 * velocity, 30 * acceleration + 0.01}, limits)) << velocity;
    EXPECT_FALSE(IsDamaging({2 * velocity, 30 * acceleration - 0.01}, limits)) << velocity;
  }
  for (const double near : {1 + 1e-15, 1 + 1e-9}) {
    const double acceleration = DamageBoundary(near);
    EXPECT_NEAR(acceleration * std::sin(near / acceleration), 1, 1e-6);
  }
}

TEST(DamageBoundary, CountsOnlyWhatIsBeyondIt) {
  const TDamagePoint points[] = {{1, 1000}, {2.2, 40}, {2.2, 45}, {9, 29}, {9, 31}, {kNaN, kNaN}};
  const auto damages = [&](std::size_t point) { return IsDamaging(points[point], {2, 30}); };
  for (const std::size_t point : {0, 1, 3, 5}) EXPECT_FALSE(damages(point)) << point;
  for (const std::size_t point : {2, 4}) EXPECT_TRUE(damages(point)) << point;
  EXPECT_TRUE(IsBeyondBoth(points[1], {2, 30})) << "the rectangle is the more careful one";
  EXPECT_FALSE(IsBeyondBoth(points[3], {2, 30}));
  for (const TFragility& unusable : {TFragility{0, 30}, {2, -1}, {kNaN, 30}, {2, kNaN}}) {
    EXPECT_FALSE(IsDamaging(points[4], unusable));
    EXPECT_FALSE(IsBeyondBoth(points[4], unusable));
  }
}

TEST(ShockStatistics, CountEventsByDayHourAndDirection) {
  const double almost = 45001 - 0.0001 / 86400;  // shown as 00:00 of the next day
  const double times[] = {45000.25, 45000.26, almost, 45007.999, -1.25, kNaN, 1e300};
  const auto days = CountByDay(times);
  ASSERT_EQ(days.size(), 4);
  EXPECT_EQ(days[0].day, -1);
  EXPECT_EQ(days[1].count, 2);
  EXPECT_EQ(days[2].day, 45001);
  const auto hours = CountByHour(times);
  EXPECT_EQ(hours[6], 3) << "the fraction of -1.25 is 06:00, too";
  EXPECT_EQ(hours[0], 1);
  EXPECT_EQ(hours[23], 1);
  const TDirection side[] = {{1, 0, 0}, {0, -1, 0}, {1, 0, 0}, {}};
  const auto directions = CountByDirection(side);
  ASSERT_EQ(directions.size(), 3);
  EXPECT_EQ(directions[0].direction, side[0]);
  EXPECT_EQ(directions[0].count, 2);
}

TEST(ShockStatistics, PercentilesStandAtTheMiddleOfEachRank) {
  const double values[] = {40, 10, kNaN, 30, 20};
  const TExceedance exceedance(values);
  EXPECT_THAT(exceedance.Values(), testing::ElementsAre(10, 20, 30, 40));
  EXPECT_DOUBLE_EQ(exceedance.ExceededPart(3), 0.125);
  EXPECT_DOUBLE_EQ(exceedance.Percentile(0.375), 20);
  EXPECT_DOUBLE_EQ(exceedance.Percentile(0.5), 25);
  EXPECT_DOUBLE_EQ(exceedance.Percentile(0.99), 40);
  EXPECT_DOUBLE_EQ(exceedance.Percentile(0.01), 10);
  EXPECT_TRUE(std::isnan(TExceedance({}).Percentile(0.5)));
}

TEST(ShockStatistics, ADistributionKeepsTheLargestAndIsNearTheWhole) {
  std::vector<double> values;  // 0 … 9999, each once, in no order
  for (std::size_t i = 0; i < 10000; ++i) values.push_back(static_cast<double>(i * 7919 % 10000));
  values.push_back(kNaN);
  const TDistribution few = DistributionOf(values);
  ASSERT_EQ(few.size(), kMaxDistribution);
  for (std::size_t i = 0; i < 200; ++i) EXPECT_EQ(few[400 + i].value, static_cast<float>(9800 + i));
  const TExceedance whole(values);
  const TExceedance near = TExceedance::Of(few);
  constexpr double kHalfGroup = 12.5;
  for (const double part : {0.05, 0.5, 0.9, 0.979}) {
    EXPECT_NEAR(near.Percentile(part), whole.Percentile(part), kHalfGroup) << part;
  }
  for (const double part : {0.985, 0.99, 0.9999, 1.0}) EXPECT_DOUBLE_EQ(near.Percentile(part), whole.Percentile(part));
  EXPECT_DOUBLE_EQ(near.PartAbove(9990.5), whole.PartAbove(9990.5));
  EXPECT_EQ(near.PartAbove(-1), 1);
  const std::vector<double> three = {3, 1, 2};
  EXPECT_DOUBLE_EQ(TExceedance::Of(DistributionOf(three)).Percentile(0.4), TExceedance(three).Percentile(0.4));
}

TEST(RoundHistogram, SharesItsStepsWithTheReference) {
  const std::vector<double> values = {3, 4.9, 5};
  const TRoundHistogram both = HistogramInRoundSteps(values, 10, {{1, 2}, {4.5F, 30}, {17.5F, 1}});
  EXPECT_EQ(both.step, 2);
  EXPECT_EQ(both.first, 0);
  EXPECT_THAT(both.counts, testing::ElementsAre(0, 1, 2, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(both.referenceCounts, testing::ElementsAre(2, 0, 30, 0, 0, 0, 0, 0, 1));
}

TEST(RoundHistogram, HasStepsOfOneTwoOrFiveThatBeginAtAMultiple) {
  const auto of = [](const std::vector<double>& values, std::size_t steps) {
    return HistogramInRoundSteps(values, steps);
  };
  const TRoundHistogram ten = of({3, 4.9, 5, 17.5, kNaN}, 10);
  EXPECT_EQ(ten.step, 2);
  EXPECT_EQ(ten.first, 2);
  EXPECT_THAT(ten.counts, testing::ElementsAre(1, 2, 0, 0, 0, 0, 0, 1));
  const TRoundHistogram two = of({0, 99, 100}, 2);
  EXPECT_EQ(two.step, 100) << "100 begins the second step";
  EXPECT_THAT(two.counts, testing::ElementsAre(2, 1));
  EXPECT_THAT(of({-0.3, 0.3}, 3).counts, testing::ElementsAre(1, 1)) << "a step of 0.5 from -0.5";
  for (const double one : {0.0, -7.0, 1e-30, 3e38}) EXPECT_THAT(of({one}, 30).counts, testing::Contains(1)) << one;
  EXPECT_THAT(of({kNaN}, 5).counts, testing::IsEmpty());
}

}  // namespace
