#include "navigation/uTimeNavigator.h"

#include <gtest/gtest.h>

#include "base/uDateTime.h"

namespace {

std::string Text(double dateTime) {
  return FormatDateTime("yyyy-mm-dd hh:nn:ss", dateTime);
}

constexpr double kJanuary31 = 44957.75;  // 2023-01-31 18:00

TEST(CalendarSteps, MonthsAreThoseOfTheCalendar) {
  const struct {
    double from;
    int months;
    const char* to;
  } cases[] = {{kJanuary31, 1, "2023-02-28 18:00:00"},  {kJanuary31, 13, "2024-02-29 18:00:00"},
               {kJanuary31, -2, "2022-11-30 18:00:00"}, {kJanuary31, 12, "2024-01-31 18:00:00"},
               {-1.25, 1, "1900-01-29 06:00:00"},       {2.75, -1, "1899-12-01 18:00:00"},
               {-30.5, -1, "1899-10-30 12:00:00"}};
  for (const auto& [from, months, to] : cases) EXPECT_EQ(Text(AddStep(from, {1, 0}, months)), to) << Text(from);
  EXPECT_EQ(AddStep(1e9, {1, 0}, 2), 1e9 + 60);
  EXPECT_EQ(AddStep(10, kWeekInterval, -1), 3);
  EXPECT_EQ(AddStep(10, kHourInterval, 12), 10.5);
  EXPECT_EQ(AddStep(10, kMinInterval, 720), 10.5);
}

TEST(TimeNavigator, AnIntervalKeepsTheLeftEdgeWhereItCan) {
  const TTimeSpan data{kJanuary31 - 2, kJanuary31 + 100};
  EXPECT_EQ(IntervalBand({kJanuary31, kJanuary31 + 1}, data, kDayInterval), (TTimeSpan{kJanuary31, kJanuary31 + 1}));
  const TTimeSpan month = IntervalBand({kJanuary31, kJanuary31 + 1}, data, kMonthInterval);
  EXPECT_EQ(Text(month.start) + Text(month.end), "2023-01-31 18:00:002023-02-28 18:00:00");
  // Anchored at the end, also where the interval would end just there.
  EXPECT_EQ(IntervalBand({data.end - 3, data.end}, data, kWeekInterval), (TTimeSpan{data.end - 7, data.end}));
  EXPECT_EQ(IntervalBand({data.end - 1, data.end}, data, kDayInterval), (TTimeSpan{data.end - 1, data.end}));
  EXPECT_EQ(IntervalBand({kJanuary31, kJanuary31 + 1}, data, kYearInterval), data) << "longer than the data";
}

TEST(TimeNavigator, StepsKeepTheWidthAndEndAtTheEdgeOfTheData) {
  const TTimeSpan data{0, 10};
  EXPECT_EQ(ForwardBand({1, 4}, data), (TTimeSpan{4, 7}));
  EXPECT_EQ(ForwardBand({4, 7}, data), (TTimeSpan{7, 10})) << "10 is not beyond 10";
  EXPECT_EQ(ForwardBand({5, 8}, data), (TTimeSpan{7, 10}));
  EXPECT_EQ(ForwardBand({7, 10}, data), (TTimeSpan{7, 10}));
  EXPECT_EQ(RewindBand({5, 8}, data), (TTimeSpan{2, 5}));
  EXPECT_EQ(RewindBand({2, 5}, data), (TTimeSpan{0, 3}));
  EXPECT_EQ(RewindBand({0, 3}, data), (TTimeSpan{0, 3}));
}

TEST(TimeNavigator, DraggingAndResizingStayWithinTheDataInOrder) {
  const TTimeSpan data{0, 10};
  EXPECT_EQ(DraggedBand({2, 5}, data, 1), (TTimeSpan{3, 6}));
  EXPECT_EQ(DraggedBand({2, 5}, data, 99), (TTimeSpan{7, 10}));
  EXPECT_EQ(DraggedBand({2, 5}, data, -99), (TTimeSpan{0, 3}));
  EXPECT_EQ(DraggedBand({-5, 20}, data, 1), data);
  EXPECT_EQ(ResizedBand({2, 5}, data, true, 4, 0.5), (TTimeSpan{4, 5}));
  EXPECT_EQ(ResizedBand({2, 5}, data, true, 9, 0.5), (TTimeSpan{4.5, 5}));
  EXPECT_EQ(ResizedBand({2, 5}, data, false, -3, 0.5), (TTimeSpan{2, 2.5}));
  EXPECT_EQ(ResizedBand({2, 5}, data, false, 99, 0.5), (TTimeSpan{2, 10}));
  EXPECT_EQ(ResizedBand({9.9, 10}, data, false, 9, 0.5), (TTimeSpan{9.9, 10}));
  EXPECT_EQ(ResizedBand({-5, -1}, data, true, -3, 0.5), (TTimeSpan{0, MinSpan(10)})) << "a band before the data";
}

TEST(TimeNavigator, ABandAroundAMomentKeepsItsWidthOrTakesAPartOfTheData) {
  const TTimeSpan data{0, 100};
  EXPECT_EQ(BandAround({10, 16}, data, 50, 0), (TTimeSpan{47, 53}));
  EXPECT_EQ(BandAround(data, data, 50, 0), (TTimeSpan{49, 51}));
  EXPECT_EQ(BandAround({7, 7}, data, 50, 0), (TTimeSpan{49, 51})) << "no width to keep";
  EXPECT_EQ(BandAround({10, 12}, data, 50, 2), (TTimeSpan{47, 55})) << "four times what lasts 2";
  EXPECT_EQ(BandAround({10, 12}, data, 0, 50), data) << "never more than the data";
  EXPECT_EQ(BandAround({10, 16}, data, 1, 0), (TTimeSpan{0, 6}));
  EXPECT_EQ(BandAround({10, 16}, data, 120, 0), (TTimeSpan{94, 100}));
}

TEST(TimeNavigator, ABandIsCutToTheDataOrTakesAllOfThem) {
  EXPECT_EQ(BandWithin({2, 5}, {0, 10}), (TTimeSpan{2, 5}));
  EXPECT_EQ(BandWithin({2, 5}, {3, 10}), (TTimeSpan{3, 5}));
  EXPECT_EQ(BandWithin({2, 5}, {0, 4}), (TTimeSpan{2, 4}));
  EXPECT_EQ(BandWithin({2, 5}, {5, 9}), (TTimeSpan{5, 9})) << "nothing is left";
  EXPECT_EQ(BandWithin({2, 5}, {4.999999999, 9}), (TTimeSpan{4.999999999, 9})) << "86 µs are left";
}

}  // namespace
