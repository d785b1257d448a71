#include "analysis/uPointAbsorption.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

namespace {

constexpr double kRadius = 3;

// As a dot grows that has to hold its number.
double RadiusOf(std::size_t count) {
  return count == 1 ? kRadius : 4 + std::log10(static_cast<double>(count)) * 3;
}

std::vector<TDot> Absorbed(const std::vector<std::pair<double, double>>& points, double cell = 3) {
  TDotGrid grid(0, 0, 400, 200, cell);
  for (std::size_t i = 0; i < points.size(); ++i) grid.Add(points[i].first, points[i].second, i, -points[i].second);
  std::vector<TDot> dots = grid.Dots();
  AbsorbDots(dots, RadiusOf);
  return dots;
}

// item, count
std::vector<std::pair<std::size_t, std::size_t>> Groups(const std::vector<TDot>& dots) {
  std::vector<std::pair<std::size_t, std::size_t>> groups;
  for (const TDot& dot : dots) groups.emplace_back(dot.item, dot.count);
  return groups;
}

using TGroup = std::pair<std::size_t, std::size_t>;

TEST(PointAbsorption, PointsThatDoNotOverlapStayApart) {
  EXPECT_THAT(Groups(Absorbed({{10, 50}, {16.1, 50}, {10, 56.1}})),
              testing::UnorderedElementsAre(TGroup(0, 1), TGroup(1, 1), TGroup(2, 1)));
}

TEST(PointAbsorption, AGroupStandsAtItsHighestPointAndAbsorbsWhatItOverlapsAsItGrows) {
  const auto dots = Absorbed({{10, 50}, {13, 48}, {20.5, 50}, {300, 20}});
  // The first two make a dot of radius 4.9 at (13, 48), which reaches the third.
  EXPECT_THAT(Groups(dots), testing::UnorderedElementsAre(TGroup(1, 3), TGroup(3, 1)));
}

TEST(PointAbsorption, ACrowdLosesNoPointAndLeavesNoOverlap) {
  std::mt19937 random(7);
  std::vector<std::pair<double, double>> points(20000);
  for (auto& [x, y] : points) {
    x = std::generate_canonical<double, 32>(random) * 399;
    y = 199 - std::pow(std::generate_canonical<double, 32>(random), 4) * 199;
  }
  const auto dots = Absorbed(points);
  std::size_t count = 0;
  double highest = 200;
  for (std::size_t i = 0; i < dots.size(); ++i) {
    count += dots[i].count;
    highest = std::min(highest, dots[i].y);
    EXPECT_EQ(std::pair(dots[i].x, dots[i].y), points[dots[i].item]);
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_GE(std::hypot(dots[i].x - dots[k].x, dots[i].y - dots[k].y),
                RadiusOf(dots[i].count) + RadiusOf(dots[k].count));
    }
  }
  EXPECT_EQ(count, points.size());
  EXPECT_EQ(highest, std::ranges::min(points, {}, &std::pair<double, double>::second).second);
}

TEST(PointAbsorption, TheGridKeepsOneDotForEachCellAndNoneFromOutside) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  TDotGrid grid(10, 10, 100, 50, 1);
  for (const auto& [x, y] : {std::pair(10.2, 10.8),
                             {10.9, 10.1},
                             {9.9, 20.0},
                             {20.0, 60.1},
                             {kNaN, 20.0},
                             {50.0, kNaN},
                             {110.5, 20.0},
                             {109.9, 59.9}}) {
    grid.Add(x, y, grid.Dots().size(), -y);
  }
  EXPECT_THAT(Groups(grid.Dots()), testing::ElementsAre(TGroup(1, 2), TGroup(1, 1)));
}

TEST(PointAbsorption, ItemsInTheOrderOfXMakeTheSameDotsAsOneByOne) {
  std::mt19937 random(3);
  const auto number = [&random](double max) { return std::generate_canonical<double, 32>(random) * max; };
  std::vector<double> x(20000), y(20000), value(20000);  // several blocks in a column
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = i % 500 == 0 ? std::floor(number(60)) : number(60) - 10;  // some on the edge of a cell, some outside
    y[i] = i % 7 == 0 ? std::numeric_limits<double>::quiet_NaN() : number(40) - 5;
    value[i] = std::floor(number(5));
  }
  std::ranges::sort(x);
  for (const double cell : {0.5, 1.0, 3.0}) {
    TDotGrid one(0, 0, 40, 30, cell);
    TDotGrid rising(0, 0, 40, 30, cell);
    const auto isShown = [](std::size_t i) { return i % 5 != 0; };
    for (std::size_t i = 0; i < x.size(); ++i) {
      if (isShown(i)) one.Add(x[i], y[i], i, value[i]);
    }
    rising.AddRising(
        0, x.size(), isShown, [&](std::size_t i) { return x[i]; }, [&](std::size_t i) { return y[i]; },
        [&](std::size_t i) { return value[i]; });
    ASSERT_EQ(rising.Dots().size(), one.Dots().size());
    for (std::size_t i = 0; i < one.Dots().size(); ++i) {
      const TDot& dot = one.Dots()[i];
      const TDot& found = rising.Dots()[i];
      EXPECT_EQ(std::tie(found.x, found.y, found.item, found.count, found.min, found.max),
                std::tie(dot.x, dot.y, dot.item, dot.count, dot.min, dot.max));
    }
  }
}

}  // namespace
