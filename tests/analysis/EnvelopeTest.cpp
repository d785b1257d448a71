#include "analysis/uEnvelope.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace {

using testing::ElementsAre;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Samples a key apart, from 0 on.
struct TSeries {
  explicit TSeries(std::vector<float> readings) : values(std::move(readings)) {
    for (std::size_t i = 0; i < values.size(); ++i) keys.push_back(static_cast<double>(i));
  }
  std::vector<double> keys;
  std::vector<float> values;
};

// Without extents: every sample is looked at.
std::vector<TEnvelopePoint> PlainEnvelope(const TSeries& series, const TColumns& columns) {
  return Envelope(
      series.keys.size(), [&](std::size_t i) { return series.keys[i]; },
      [&](std::size_t i) { return series.values[i]; }, {}, columns);
}
std::vector<std::size_t> PlainPeaks(const TSeries& series, const TColumns& columns) {
  return ColumnPeaks(
      series.keys.size(), [&](std::size_t i) { return series.keys[i]; },
      [&](std::size_t i) { return series.values[i]; }, {}, columns);
}

// "3 5 | 1": the values in order, a break as a bar.
std::string Drawn(const std::vector<TEnvelopePoint>& points) {
  std::string text;
  for (const TEnvelopePoint& point : points) {
    if (!text.empty()) text += ' ';
    text += std::isnan(point.value) ? "|" : std::to_string(static_cast<int>(point.value));
  }
  return text;
}

std::string Drawn(const TSeries& series, double from, double to, std::size_t columns) {
  return Drawn(PlainEnvelope(series, {{from, to}, columns}));
}

TEST(Envelope, AColumnKeepsFirstMinimumMaximumAndLastInTheirOrder) {
  EXPECT_EQ(Drawn(TSeries({4, 5, 1, 2, 9, 3, 7, 7, 7, 7}), 0, 9, 1), "4 1 9 7");
  EXPECT_EQ(Drawn(TSeries({4, 9, 5, 1, 2, 6, 6, 6, 6, 6}), 0, 10, 2), "4 9 1 2 6 6");
}

TEST(Envelope, FewSamplesAreDrawnAsTheyAre) {
  EXPECT_EQ(Drawn(TSeries({4, 5, 1, 2}), 0, 3, 900), "4 5 1 2");
  EXPECT_EQ(Drawn(TSeries({4}), -1, 1, 900), "4");
  EXPECT_EQ(Drawn(TSeries({}), 0, 1, 900), "");
}

TEST(Envelope, OneNeighbourOutsideOnEachSideCarriesTheLineToTheEdge) {
  const TSeries series({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(Drawn(series, 1.5, 3.5, 900), "2 3 4 5");
  EXPECT_EQ(Drawn(series, 2.1, 2.9, 900), "3 4") << "a view between two samples shows the line between them";
  EXPECT_EQ(Drawn(series, 7, 8, 900), "6");
  EXPECT_EQ(Drawn(series, -2, -1, 900), "1");
}

TEST(Envelope, ValuesThatAreNotFiniteBreakTheLine) {
  EXPECT_EQ(Drawn(TSeries({1, kNaN, 2, kInfinity, -kInfinity, 3}), 0, 5, 900), "1 | 2 | 3");
  EXPECT_EQ(Drawn(TSeries({1, 2, kNaN, 3, 4, 5}), 0, 5, 2), "1 2 | 3 5") << "at the end of a column";
  EXPECT_EQ(Drawn(TSeries({1, 2, 3, kNaN, 4, 5}), 0, 5, 2), "1 3 | 4 5") << "at the beginning of a column";
  EXPECT_EQ(Drawn(TSeries({kNaN, kNaN, 3, kNaN, kNaN}), 0, 4, 900), "3");
  EXPECT_EQ(Drawn(TSeries({kNaN, 2, 3, kNaN}), 0.5, 2.5, 900), "2 3") << "no line runs to a neighbour without a value";
}

TEST(Envelope, AllSamplesAtOneTimeAndViewsWithoutWidthAreDrawn) {
  TSeries series({1, 7, 3, -2, 4});
  series.keys.assign(5, 46000.25);
  EXPECT_EQ(Drawn(series, 46000, 46001, 100), "1 7 -2 4");
  EXPECT_EQ(Drawn(series, 46000.25, 46000.25, 100), "1 7 -2 4");
  EXPECT_EQ(Drawn(series, 46001, 46000, 100), "");
  EXPECT_EQ(Drawn(series, 46000, 46001, 0), "");
  EXPECT_EQ(Drawn(series, kNaN, kNaN, 100), "");
}

TEST(Envelope, NoPeakIsLostAndNoColumnHoldsMoreThanFour) {
  std::mt19937 random(7);
  std::normal_distribution<float> reading;
  TSeries series({});
  double key = 46000;
  for (int i = 0; i < 20000; ++i) {
    key += static_cast<double>(random() % 4) * 1e-6;  // now and then at one time
    series.keys.push_back(key);
    series.values.push_back(reading(random) * (i % 501 == 0 ? 50.0F : 1.0F));
  }
  for (const double part : {1.0, 0.37, 0.01}) {
    const double to = 46000 + (key - 46000) * part;
    const auto points = PlainEnvelope(series, {{46000, to}, 300});
    EXPECT_LE(points.size(), 300 * 4 + 2);
    float largest = 0;
    for (std::size_t i = 0; i < series.keys.size() && series.keys[i] <= to; ++i) {
      largest = std::max(largest, series.values[i]);
    }
    EXPECT_TRUE(std::ranges::is_sorted(points, {}, &TEnvelopePoint::key));
    EXPECT_TRUE(std::ranges::any_of(points, [largest](const auto& point) { return point.value == largest; }));
  }
}

// A long series of everything that may come, over views of every width.
TEST(Envelope, ExtentsChangeNothingAndNoPeakIsLostInAnyView) {
  std::mt19937 random(11);
  TSeries series({});
  double key = 0;
  for (int i = 0; i < 30000; ++i) {
    key += static_cast<double>(random() % 3);
    series.keys.push_back(key);
    float value = static_cast<float>(random() % 100);
    const bool desert = i > 12000 && i < 12500;  // whole blocks without a value
    if (desert || random() % 50 == 0) value = kNaN;
    if (random() % 400 == 0) value = random() % 2 == 0 ? kInfinity : -kInfinity;
    series.values.push_back(value);
  }
  const auto keyAt = [&](std::size_t i) { return series.keys[i]; };
  const auto valueAt = [&](std::size_t i) { return series.values[i]; };
  TExtents extents;
  extents.Set(series.keys.size(), valueAt);
  EXPECT_EQ(extents.Whole().min, 0);
  EXPECT_EQ(extents.Whole().max, 99);
  const auto drawn = [](const std::vector<TEnvelopePoint>& points) {
    std::vector<std::pair<double, int>> pairs;
    for (const auto& point : points) pairs.emplace_back(point.key, std::isnan(point.value) ? -1 : int(point.value));
    return pairs;
  };
  for (int view = 0; view < 300; ++view) {
    double from = key * static_cast<double>(random() % 1000) / 900 - 100;
    double to = from + key / (1 << (random() % 14));
    if (view == 0) std::tie(from, to) = std::pair(0.0, key);
    const TColumns columns{{from, to}, 1 + random() % 500};
    const auto with = Envelope(series.keys.size(), keyAt, valueAt, extents, columns);
    EXPECT_EQ(drawn(with), drawn(PlainEnvelope(series, columns)));
    EXPECT_EQ(ColumnPeaks(series.keys.size(), keyAt, valueAt, extents, columns), PlainPeaks(series, columns));

    float largest = -1;
    for (std::size_t i = 0; i < series.keys.size(); ++i) {
      const bool inSight = series.keys[i] >= from && series.keys[i] <= to && std::isfinite(series.values[i]);
      if (inSight) largest = std::max(largest, series.values[i]);
    }
    float shown = -1;
    for (const auto& point : with) {
      if (point.key >= from && point.key <= to) shown = std::fmax(shown, point.value);
    }
    EXPECT_EQ(shown, largest);
  }
}

TEST(ColumnPeaks, GivesTheFirstMaximumOfEachColumn) {
  const TSeries series({1, 5, 5, 2, kNaN, kInfinity, 9, -3});
  EXPECT_THAT(PlainPeaks(series, {{0, 8}, 4}), ElementsAre(1, 2, 6));
  EXPECT_THAT(PlainPeaks(series, {{2.5, 7}, 1}), ElementsAre(6)) << "what stands outside does not count";
  EXPECT_THAT(PlainPeaks(series, {{6.5, 8}, 9}), ElementsAre(7));
}

}  // namespace
