// Times, and ratios of times that were taken in turn.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

// Seconds: of the clock, and of all processor cores, which the machine's other work hardly changes.
struct TSpent {
  double wall;
  double processor;
};

inline TSpent SpentOn(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t processor = std::clock();
  work();
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
          static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC};
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

inline void PrintRow(const std::string& what, const std::string& figures) {
  fmt::print("{:<66} {}\n", what, figures);
  std::fflush(stdout);
}

// How fast the machine is in this run, beside times that have no reference of their own.
inline void PrintSpeedOfMachine() {
  const TSpent spent = SpentOn([] {
    std::uint64_t sum = 0;
    for (std::uint64_t i = 0; i < 100000000; ++i) {
      sum += i;
      asm volatile("" : "+r"(sum));  // so that each addition is made
    }
  });
  PrintRow("100,000,000 additions, one after the other", fmt::format("{:9.1f} ms", spent.processor * 1000));
}

// How the time grows with the size: milliseconds of the processor for each of three sizes, the median of a few runs.
template <class TWork>
void PrintGrowth(const std::string& what, int rounds, std::size_t sizes, const TWork& work) {
  std::string figures;
  for (std::size_t i = 0; i < sizes; ++i) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) times.push_back(work(i).processor * 1000);
    figures += fmt::format("{:9.1f} ms", Median(times));
  }
  PrintRow(what, figures);
}

// Runs both in turn, so that a slow moment of the machine meets both; prints the median of the paired ratios.
inline void PrintRatio(const std::string& what, double bound, int rounds, const std::function<TSpent()>& subject,
                       const std::function<TSpent()>& reference) {
  std::vector<double> ratios, processor, subjects, references;
  for (int i = 0; i < rounds; ++i) {
    const TSpent plain = reference();
    const TSpent ours = subject();
    references.push_back(plain.wall * 1000);
    subjects.push_back(ours.wall * 1000);
    ratios.push_back(ours.wall / plain.wall);
    processor.push_back(ours.processor / plain.processor);
  }
  const auto [min, max] = std::ranges::minmax(ratios);
  PrintRow(what,
           fmt::format("{:6.3f}  (at most {}; {:.3f} … {:.3f}; of the processor {:.3f}; {:.0f} ms against {:.0f} ms)",
                       Median(ratios), bound, min, max, Median(processor), Median(subjects), Median(references)));
}
