// What the range in sight holds, in numbers. Main thread only.
#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <utility>
#include <vector>

#include "analysis/uPointAbsorption.h"
#include "analysis/uRangeStatistics.h"

struct TRangeTable {
  QString span;  // of time, in words
  QStringList titles;
  int words;  // columns of words, the first ones; the others are numbers
  std::vector<QStringList> rows;
};

inline constexpr auto kNoNumber = "–";

// A table of a row a series, empty at first.
TRangeTable SeriesTable(const QString& span);
QStringList SeriesRow(const QString& name, const QString& unit, const TRangeStatistics& found);

// Up to six digits; a dash for none.
QString StatisticsNumber(double value);

// Of the samples, in the order of time, whose times lie in the range, both ends included.
template <class TTimeAt, class TValueAt>
TRangeStatistics StatisticsIn(const std::pair<double, double>& range, std::size_t count, const TTimeAt& timeAt,
                              const TValueAt& valueAt) {
  TStatisticsSum sum;
  for (std::size_t i = FirstAtOrAfter(count, timeAt, range.first); i < count && timeAt(i) <= range.second; ++i) {
    sum.Add(valueAt(i));
  }
  return sum.Result();
}
