#include "analysis/uEventFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double kStart = 45123.25;
constexpr double kMinute = 1.0 / 1440;

// Events a minute apart; of event 4 the table knows nothing, and event 5 has no sample.
//
//   event   acceleration   ToT total   ToT max   IoT total   IoT max   axis
//   0       20             11          2         10          2         X-pos
//   1       9              3           3         14          14        Y-neg
//   2       0.1            4           4         9           9         Z-pos
//   3       NaN            NaN         NaN       NaN         NaN       X-neg
//   4       null           null        null      null        null      Z-neg
//   5       0              0           0         0           0         None
class EventFilter : public testing::Test {
 protected:
  EventFilter() {
    FTable.AddField("ID", TFieldType::Integer);
    FTable.AddField("Timestamp", TFieldType::DateTime);
    for (const TQuantityRow& metric : kMetrics) FTable.AddField(std::string(metric.field), TFieldType::Single);
    for (const char* key : {"ID", "Timestamp", "ToT max"}) FTable.AddIndexPair(key, key);
    const float nan = std::nanf("");
    Add({20, 11, 2, 10, 2}, {1, 0, 0});
    Add({9, 3, 3, 14, 14}, {0, -1, 0});
    Add({0.1F, 4, 4, 9, 9}, {0, 0, 1});
    Add({nan, nan, nan, nan, nan}, {-1, 0, 0});
    Add({}, {0, 0, -1});
    Add({0, 0, 0, 0, 0}, {});
  }
  void Add(const std::vector<float>& metrics, const std::vector<float>& sample) {
    const std::size_t row = FTable.RowCount();
    FTable.Append();
    FTable.SetInteger(0, static_cast<std::int32_t>(row));
    if (!metrics.empty()) FTable.SetDateTime(1, kStart + static_cast<double>(row) * kMinute);
    for (std::size_t i = 0; i < metrics.size(); ++i) FTable.SetSingle(2 + i, metrics[i]);
    FEvents.NewEvent();
    if (!sample.empty()) FEvents.AddValues(0, sample[0], sample[1], sample[2]);
    // The list opens an event with its first sample; one with no reading at all has no peak axis.
    if (sample.empty()) FEvents.AddValues(0, std::nanf(""), std::nanf(""), std::nanf(""));
  }
  std::vector<std::size_t> Through(const TEventFilter& filter, std::optional<TLimits> limits = std::nullopt,
                                   const TDataset* analysis = nullptr) {
    const std::vector<bool> mask = EventsThrough(filter, FTable, FEvents, limits, analysis);
    EXPECT_EQ(mask.size(), 6U);
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < mask.size(); ++row) {
      if (mask[row]) rows.push_back(row);
    }
    return rows;
  }
  static std::vector<std::size_t> Walked(TDataset& table) {
    std::vector<std::size_t> rows;
    for (table.First(); !table.Eof(); table.Next()) rows.push_back(table.CurrentRow());
    return rows;
  }

  TDataset FTable;
  TEventList FEvents;
};

TEST_F(EventFilter, WithoutAConditionEverythingPasses) {
  EXPECT_FALSE(TEventFilter().HasCondition());
  EXPECT_THAT(Through({}), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(EventFilter, RangesIncludeTheirEndsButNeitherNaNNorNull) {
  const struct {
    std::size_t field;
    TRange range;
    std::vector<std::size_t> through;
  } cases[] = {
      {0, {9, 20}, {0, 1}}, {0, {9.001, {}}, {0}}, {0, {{}, 0.1}, {2, 5}},  // the table's 0.1 is the single next to it
      {1, {3, 4}, {1, 2}},  {2, {{}, 2}, {0, 5}},  {3, {10, {}}, {0, 1}},
      {4, {9, 9}, {2}},     {4, {10, 9}, {}},      {2, {-1e300, 1e300}, {0, 1, 2, 5}},
  };
  for (const auto& [field, range, through] : cases) {
    TEventFilter filter;
    filter.ranges[field] = range;
    EXPECT_TRUE(filter.HasCondition());
    EXPECT_EQ(Through(filter), through) << kMetrics[field].field << " from " << range.from.value_or(-1);
  }
}

TEST_F(EventFilter, AxesAreAnyOfThoseThatAreMarked) {
  for (std::size_t axis = 0; axis < kPeakAxes.size(); ++axis) {
    constexpr std::size_t kEventOf[] = {0, 3, 99, 1, 2, 4};
    TEventFilter filter;
    filter.axes[axis] = true;
    if (kPeakAxes[axis] == "Y-pos") {
      EXPECT_THAT(Through(filter), IsEmpty());
    } else {
      EXPECT_THAT(Through(filter), ElementsAre(kEventOf[axis])) << kPeakAxes[axis];
    }
  }
  TEventFilter all;
  all.axes.fill(true);
  EXPECT_THAT(Through(all), ElementsAre(0, 1, 2, 3, 4)) << "no sample, no axis";
}

TEST_F(EventFilter, TimesCountToTheMillisecond) {
  TEventFilter filter;
  constexpr double kMs = 1.0 / 86400000;
  filter.time = {kStart + kMinute + 0.4 * kMs, kStart + 3 * kMinute - 0.4 * kMs};
  EXPECT_THAT(Through(filter), ElementsAre(1, 2, 3));
  filter.time = {kStart + kMinute + kMs, kStart + 3 * kMinute - kMs};
  EXPECT_THAT(Through(filter), ElementsAre(2));
  filter.time = {std::nullopt, kStart};
  EXPECT_THAT(Through(filter), ElementsAre(0));
}

TEST_F(EventFilter, AboveAlarmMeansOutsideTheLimitsAndNeedsLimits) {
  TEventFilter filter;
  filter.aboveAlarm = true;
  EXPECT_THAT(Through(filter), ElementsAre(0, 1, 2, 3, 4, 5));
  EXPECT_THAT(Through(filter, TLimits{-9, 9}), ElementsAre(0)) << "9 g is inside";
  EXPECT_THAT(Through(filter, TLimits{1, 10}), ElementsAre(0, 2, 5));
  EXPECT_THAT(Through(filter, TLimits{-0.1, 0.1}), ElementsAre(0, 1)) << "the table's 0.1 is the single next to it";
}

TEST_F(EventFilter, ConditionsAreJoinedByAnd) {
  TEventFilter filter;
  filter.ranges[0].from = 5;
  filter.ranges[3].to = 12;
  EXPECT_THAT(Through(filter), ElementsAre(0));
  filter.axes[3] = true;
  EXPECT_THAT(Through(filter), IsEmpty());
}

TEST_F(EventFilter, ACompanionHidesRowsInEveryOrderAndTheOriginalShowsAll) {
  TDataset companion = FTable;
  companion.SetShownRows({true, false, true, true, false, false});
  EXPECT_THAT(Walked(companion), ElementsAre(0, 2, 3));
  ASSERT_TRUE(companion.SelectIndex("ToT maxDesc"));
  EXPECT_THAT(Walked(companion), ElementsAre(2, 0, 3));
  EXPECT_THAT(VisibleEvents(companion), ElementsAre(2, 0, 3));
  ASSERT_TRUE(companion.SelectIndex("ToT maxASC"));
  EXPECT_THAT(Walked(companion), ElementsAre(3, 0, 2));
  for (std::size_t position = 0; position < 3; ++position) {
    EXPECT_EQ(companion.PositionOf(companion.RowAt(position)), position);
  }
  for (const std::size_t hidden : {1U, 4U, 5U, 6U}) EXPECT_EQ(companion.PositionOf(hidden), std::nullopt);
  EXPECT_EQ(VisibleOrFirst(companion, 2), 2U);
  EXPECT_EQ(VisibleOrFirst(companion, 1), 3U);
  EXPECT_EQ(VisibleOrFirst(companion, std::nullopt), 3U);
  EXPECT_EQ(FTable.RecordCount(), 6U);
  EXPECT_EQ(FTable.PositionOf(1), 1U);

  companion.SetShownRows({false, true, false, false, false, true});
  EXPECT_THAT(Walked(companion), ElementsAre(5, 1)) << "another choice, in the order that is selected";
  companion.SetShownRows(std::vector<bool>(6, false));
  EXPECT_EQ(companion.RecordCount(), 0U);
  EXPECT_TRUE(companion.Eof());
  EXPECT_EQ(VisibleOrFirst(companion, 1), std::nullopt);
  companion.SetShownRows({});
  EXPECT_EQ(companion.RecordCount(), 6U);
  EXPECT_EQ(companion.PositionOf(1), 4U);
  companion.SetShownRows({true, true, true, true, true, true});
  companion.Clear();
  EXPECT_EQ(companion.RecordCount(), 0U);
  EXPECT_EQ(FTable.RecordCount(), 6U);
}

TEST_F(EventFilter, AHistogramCountsFiniteValues) {
  const THistogram histogram = HistogramOf(FTable, "ToT total", 11);  // 11, 3, 4, NaN, null, 0
  EXPECT_EQ(histogram.min, 0);
  EXPECT_EQ(histogram.max, 11);
  EXPECT_THAT(histogram.counts, ElementsAre(1, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1)) << "the largest is in the last step";
  EXPECT_THAT(HistogramOf(FTable, "Light", 11).counts, IsEmpty());
  TDataset same;
  const std::size_t field = same.AddField("ToT total", TFieldType::Single);
  same.Append();
  same.SetSingle(field, 7);
  same.Append();
  same.SetSingle(field, 7);
  EXPECT_THAT(HistogramOf(same, "ToT total", 11).counts, ElementsAre(2));
}

TEST_F(EventFilter, TheVelocityChangeIsThatOfTheAnalysis) {
  TDataset analysis;
  const std::size_t field = analysis.AddField(std::string(kVelocityChangeField), TFieldType::Single);
  for (const float velocity : {0.5F, 1.5F, 0.0F, 2.5F, 1.5F, 0.0F}) {
    analysis.Append();
    if (velocity > 0) analysis.SetSingle(0, velocity);  // else null: no pulse
  }
  TEventFilter filter;
  filter.ranges[kVelocityChangePlace] = {std::nullopt, 1.5};
  EXPECT_TRUE(filter.NeedsAnalysis());
  EXPECT_THAT(Through(filter, std::nullopt, &analysis), ElementsAre(0, 1, 4)) << "an event without a pulse has none";
  EXPECT_THAT(Through(filter), ElementsAre(0, 1, 2, 3, 4, 5)) << "nothing to compare with";
  filter.ranges[0].from = 9;
  EXPECT_THAT(Through(filter, std::nullopt, &analysis), ElementsAre(0, 1));
  EXPECT_EQ(HistogramOf(analysis, analysis.Fields()[field].Key, 2).counts, (std::vector<std::size_t>{1, 3}));
}

}  // namespace
