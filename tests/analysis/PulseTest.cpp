#include "analysis/uPulse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "analysis/uShockAnalysis.h"

namespace {

using std::numbers::pi;
constexpr double kLevelOn = 3;     // g
constexpr double kLowLevel = 0.1;  // g, so that the foot of a slow rise is no part of what was before

// Ten samples at a level, `count` of a pulse, then some at rest.
template <class TPulseOf>
TEvent EventOf(double rate, int count, const TPulseOf& pulse, TGridValue axis = {1, 0, 0}, double level = 0) {
  TEvent event(0);
  for (int i = -10; i < count + 40; ++i) {
    const double g = i >= 0 && i < count ? pulse(i / rate) : 0;
    event.AddValues(5000 + i * 1000 / rate, static_cast<float>(g * axis.x), static_cast<float>(g * axis.y),
                    static_cast<float>(g * axis.z + level));
  }
  return event;
}

double HalfSine(double t) {
  return t <= 0.011 ? 50 * std::sin(pi * t / 0.011) : 0;
}

TEST(Pulse, OfAHalfSineIsItsVelocityChangeAndItsDurations) {
  // Gravity is taken away with the level before the shock.
  const TPulse pulse = AnalyseShock(EventOf(1600, 19, HalfSine, {0, -0.6, 0.8}, 1), kLevelOn).pulse;
  ASSERT_EQ(pulse.problem, TPulseProblem::None);
  EXPECT_NEAR(pulse.velocityChange, 3.43116, 1e-5) << "by the trapezium rule over all of its samples";
  EXPECT_NEAR(pulse.velocity.y, -0.6 * 3.43116, 1e-5);
  EXPECT_NEAR(pulse.velocity.z, 0.8 * 3.43116, 1e-5);
  const TPulse fine = AnalyseShock(EventOf(100000, 1101, HalfSine), kLowLevel).pulse;
  EXPECT_NEAR(fine.peak, 50, 1e-4);
  EXPECT_NEAR(fine.durationTenth, 11 * (1 - 2 * std::asin(0.1) / pi), 2e-3);
  EXPECT_NEAR(fine.durationThird, 11 * (1 - 2 * std::asin(1.0 / 3) / pi), 2e-3);
  EXPECT_NEAR(fine.halfSine, 11 * std::cos(std::asin(0.1)), 0.01) << "what lies below a tenth is left out";
}

TEST(Pulse, OfAPlateauHasTheHalfSineOfTheSameVelocityChange) {
  const auto trapezoid = [](double t) { return 50 * std::min({1.0, t / 0.0011, (0.011 - t) / 0.0011}); };
  EXPECT_EQ(AnalyseShock(EventOf(10000, 111, trapezoid), kLevelOn).pulse.problem, TPulseProblem::Clipped)
      << "a flat top is what the end of the range looks like";
  const auto sawtooth = [](double t) { return 40 * t / 0.011; };
  const TPulse pulse = AnalyseShock(EventOf(100000, 1101, sawtooth), kLowLevel).pulse;
  EXPECT_NEAR(pulse.velocityChange, 2.15746 * 0.99, 3e-3);
  EXPECT_NEAR(pulse.halfSine, 8.639 * 0.99, 0.01);
}

TEST(Pulse, ScalesMirrorsAndTurnsWithTheSamplesAndIgnoresRestBehindThem) {
  const TEvent event = EventOf(1600, 19, HalfSine, {0.8, -0.6, 0.7}, 1);
  const auto changed = [&event](float scale, bool turns, int rest = 0) {
    TEvent other(0);
    for (const TEventValue& v : event.Values()) {
      const float x = scale * v.xvalue;
      const float y = scale * v.yvalue;
      const float z = scale * v.zvalue;
      turns ? other.AddValues(v.time, z, x, y) : other.AddValues(v.time, x, y, z);
    }
    for (int i = 1; i <= rest; ++i) other.AddValues(event.Values().back().time + i / 1.6, 0, 0, scale);
    return AnalyseShock(other, std::fabs(scale) * kLevelOn);
  };
  const TShockAnalysis one = changed(1, false);
  const TShockAnalysis mirrored = changed(-2, false);  // -2 rounds nothing
  EXPECT_EQ(mirrored.pulse.velocityChange, 2 * one.pulse.velocityChange);
  EXPECT_EQ(mirrored.pulse.velocity.x, -2 * one.pulse.velocity.x);
  EXPECT_EQ(mirrored.pulse.halfSine, one.pulse.halfSine);
  EXPECT_EQ(mirrored.pulse.durationThird, one.pulse.durationThird);
  EXPECT_EQ(DirectionText(one.pulse.direction), "X-pos Y-neg Z-pos");
  EXPECT_EQ(mirrored.pulse.direction, one.pulse.direction.Opposite());
  EXPECT_EQ(mirrored.drop->max, 4 * one.drop->max);
  const TShockAnalysis turned = changed(1, true);
  EXPECT_EQ(turned.pulse.velocity.x, one.pulse.velocity.z);
  EXPECT_NEAR(turned.pulse.velocityChange, one.pulse.velocityChange, 1e-12);
  EXPECT_EQ(DirectionText(turned.pulse.direction), "X-pos Y-pos Z-neg");
  const TShockAnalysis longer = changed(1, false, 200);
  EXPECT_NEAR(longer.pulse.velocityChange, one.pulse.velocityChange, 1e-9);
  EXPECT_NEAR(longer.pulse.durationTenth, one.pulse.durationTenth, 1e-9);
}

TEST(Pulse, IsRefusedWithTheReason) {
  const auto reasonOf = [](const TEvent& event) { return AnalyseShock(event, kLevelOn).reason; };
  EXPECT_THAT(reasonOf(EventOf(1600, 4, [](double) { return 9.0; })), testing::StartsWith("Fewer than 5 samples"));
  EXPECT_THAT(reasonOf(EventOf(1600, 6, [](double t) { return t < 0.001 ? 9.0 : 8.0; })),
              testing::StartsWith("It cannot tell rest from fall"))
      << "the pulse itself is good";
  EXPECT_THAT(reasonOf(EventOf(1600, 6, [](double t) { return std::min(9.0, 4 + t * 4000); })),
              testing::StartsWith("The pulse is clipped"));
  EXPECT_THAT(reasonOf(EventOf(1600, 6, [](double) { return 0.0; })), testing::StartsWith("All samples are 0."));
  EXPECT_EQ(reasonOf(EventOf(1600, 6, [](double) { return std::numeric_limits<double>::quiet_NaN(); })),
            "A sample is no finite number.");
  EXPECT_EQ(reasonOf(TEvent(0)), "There are fewer than two samples.");
}

TEST(Pulse, DirectionIsTheNearestOf26AndUnclearWherePeakAndVelocityDiffer) {
  const std::pair<TGridValue, const char*> cases[] = {{{1, 0.41, 0}, "X-pos"},
                                                      {{1, 0.42, 0}, "X-pos Y-pos"},
                                                      {{1, 1, 0.6}, "X-pos Y-pos Z-pos"},
                                                      {{0.35, -1, 0.35}, "Y-neg"},
                                                      {{-1, -0.9, 0.8}, "X-neg Y-neg Z-pos"},
                                                      {{0, 0, -3}, "Z-neg"},
                                                      {{-0.1, 2, -2}, "Y-pos Z-neg"},
                                                      {{0, 0, 0}, "unclear"}};
  for (const auto& [vector, text] : cases) EXPECT_EQ(DirectionText(NearestDirection(vector)), text);
  EXPECT_EQ(DirectionText(TDirection{1, 0, -1}.Opposite()), "X-neg Z-pos");
  TEvent turning(0);  // most of the velocity on x, the peak on y
  for (int i = 0; i < 60; ++i) {
    turning.AddValues(i, i >= 20 && i < 40 ? 8.0F + static_cast<float>(i % 3) : 0, i == 20 ? 30.0F : 0, 0);
  }
  const TPulse pulse = AnalyseShock(turning, kLevelOn).pulse;
  ASSERT_EQ(pulse.problem, TPulseProblem::None);
  EXPECT_EQ(DirectionText(pulse.direction), "unclear");
}

TEST(Baseline, IsTheMeanBeforeTheSwitchOnLevelAndNeedsEightSamples) {
  const auto baselineOf = [](int before, double levelOn) {
    TEvent event(0);
    for (int i = 0; i < before + 20; ++i) event.AddValues(i, i < before ? (i % 2 == 0 ? 0.5F : 1.5F) : 9.0F, 0, 2);
    return PrepareShock(event.Values(), TBaseline::Before, levelOn);
  };
  const TShockSamples shock = baselineOf(8, 5);
  EXPECT_EQ(shock.baselineCount, 8);
  EXPECT_DOUBLE_EQ(shock.x[8], 8);
  EXPECT_DOUBLE_EQ(shock.z[8], 0);
  EXPECT_TRUE(IsCutShort(shock)) << "the record ends at 9 g";
  for (const TShockSamples& none : {baselineOf(7, 5), baselineOf(8, 50), baselineOf(8, 0.1)}) {
    EXPECT_EQ(none.baselineCount, 0);
    EXPECT_EQ(none.z[8], 2);
  }
}

// At rest, falling, hit, at rest again.
TEvent Drop(double rate, int rest, double fallMs, double restLevel = 1) {
  TEvent event(0);
  const auto fall = static_cast<int>(std::lround(fallMs * rate / 1000));
  for (int i = 0; i < rest + fall + 400; ++i) {
    const int hit = i - rest - fall;
    const double g = i < rest ? 1 : hit < 0 ? 0.1 : hit <= 20 ? 100 * std::sin(pi * (hit + 1) / 22) : restLevel;
    event.AddValues(i * 1000 / rate, 0, 0, static_cast<float>(g));
  }
  return event;
}

TEST(DropHeight, IsThatOfTheFreeFallGiveOrTakeOneSample) {
  for (const auto& [ms, millimetres] : {std::pair{247.35, 300.0}, {349.81, 600.0}, {498.81, 1220.0}}) {
    const TFall fall = AnalyseShock(Drop(2000, 100, ms), kLevelOn).fall;
    ASSERT_EQ(fall.problem, TFallProblem::None);
    EXPECT_FALSE(fall.isLeast);
    EXPECT_NEAR(fall.height, millimetres, 1.5);
    EXPECT_LT(fall.min, millimetres);
    EXPECT_GT(fall.max, millimetres);
    const TFall cut = AnalyseShock(Drop(2000, 0, ms), kLevelOn).fall;
    EXPECT_TRUE(cut.isLeast);
    EXPECT_EQ(cut.height, fall.min);
  }
  EXPECT_NEAR(DropBracketOf(4).max, 815.8, 0.05) << "16/(2·9.80665) m, without a rebound";
  EXPECT_NEAR(DropBracketOf(4).min, 815.8 / 4, 0.05);
}

TEST(DropHeight, IsRefusedWithTheReason) {
  EXPECT_EQ(AnalyseShock(Drop(2000, 100, 300, 0), kLevelOn).reason,
            "It cannot tell rest from fall: there is not about 1 g after the event.");
  EXPECT_EQ(AnalyseShock(Drop(2000, 100, 2), kLevelOn).reason, "There is no free fall before the shock.");
}

}  // namespace
