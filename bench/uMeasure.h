// Times, and ratios of times that were taken in turn.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

inline double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

// Runs both in turn, so that a slow moment of the machine meets both; prints the median of the paired ratios.
inline void PrintRatio(const std::string& what, double bound, int rounds, const std::function<double()>& subject,
                       const std::function<double()>& reference) {
  std::vector<double> ratios, subjects, references;
  for (int i = 0; i < rounds; ++i) {
    references.push_back(reference());
    subjects.push_back(subject());
    ratios.push_back(subjects.back() / references.back());
  }
  const auto [least, most] = std::ranges::minmax(ratios);
  fmt::print("{:<62} {:6.3f}  (at most {}; {:.3f} … {:.3f}; {:.0f} ms against {:.0f} ms)\n", what, Median(ratios),
             bound, least, most, Median(subjects) * 1000, Median(references) * 1000);
  std::fflush(stdout);
}
