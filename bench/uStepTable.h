// The steps of a window or a chart with their times for each size of a recording, in ms of the processor, as one table.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "bench/uMeasure.h"

class TStepTable {
 public:
  // The times of a step for the next size; the row is that of `what`.
  void Add(const std::string& what, double boundMs, const std::vector<double>& times) {
    Put(what, boundMs, Median(times), std::ranges::max(times));
  }
  void Put(const std::string& what, double boundMs, double median, double longest) {
    auto row = std::ranges::find(FRows, what, &TRow::what);
    if (row == FRows.end()) row = FRows.insert(row, {what, boundMs, {}, 0});
    row->medians.push_back(median);
    row->longest = longest;
  }
  // The bound, and the longest time, are those of the last size.
  void Print() const {
    for (const TRow& row : FRows) {
      std::string figures;
      for (const double median : row.medians) figures += fmt::format("{:9.1f} ms", median);
      PrintRow(row.what, fmt::format("{}  (at most {}; longest {:.1f})", figures, row.boundMs, row.longest));
    }
  }

 private:
  struct TRow {
    std::string what;
    double boundMs;
    std::vector<double> medians;  // by size
    double longest;
  };
  std::vector<TRow> FRows;
};
