// Times, and ratios of times that were taken in turn.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
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

// The largest memory in use since ResetPeak, in bytes.
inline double PeakBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::strtod(line.c_str() + 6, nullptr) * 1024;
  }
  return 0;
}
inline void ResetPeak() {
  std::ofstream("/proc/self/clear_refs") << 5;
}

// How the time grows with the size: seconds of `work` for each of the sizes, the median of a few runs.
template <class TWork>
void PrintGrowth(const std::string& what, int rounds, const std::vector<std::string>& sizes, const TWork& work) {
  fmt::print("{:<62}", what);
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) times.push_back(work(i));
    fmt::print(" {}: {:.1f} ms{}", sizes[i], Median(times) * 1000, i + 1 < sizes.size() ? "," : "\n");
  }
  std::fflush(stdout);
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
