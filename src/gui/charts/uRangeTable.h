// The statistics of the range in sight, as a table of words. Main thread only.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

struct TRangeTable {
  QString span;  // of time, in words
  QStringList titles;
  int words;  // how many columns, counted from the first, hold words; the others hold numbers
  std::vector<QStringList> rows;
};
