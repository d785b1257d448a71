// Prints how long the program takes as ratios to a reference of the same run, with the bound of each ratio.
// `--smoke` uses small recordings, to see that the benches work.
#include <fmt/format.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include "analysis/uFourier.h"
#include "analysis/uMissionDatasets.h"
#include "base/uMessages.h"
#include "bench/uBenchRecordings.h"
#include "export/uCsvExports.h"
#include "model/uReadFileThread.h"

namespace {

double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

// Runs both in turn, so that a slow moment of the machine meets both; prints the median of the paired ratios.
void PrintRatio(const std::string& what, double bound, int rounds, const std::function<double()>& subject,
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

// One forward transform of the largest size, the median of many.
void PrintTransformTime(double boundMs, int rounds) {
  TFourier transform(kMaxSpectrumSize);
  transform.Forward();  // makes the table of sines
  std::vector<double> times;
  for (int i = 0; i < rounds * 100; ++i) {
    transform.Clear();
    transform.SetReal(1, 1);
    times.push_back(SecondsOf([&transform] { transform.Forward(); }));
  }
  fmt::print("{:<62} {:6.3f}  (at most {})\n", "a transform of 8192 points, in ms", Median(times) * 1000, boundMs);
}

// The least that reading the file can cost.
void InflateOnly(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::vector<char> input(64 * 1024);
  std::vector<Bytef> output(256 * 1024);
  z_stream zip{};
  inflateInit(&zip);
  int result = Z_OK;
  while (result == Z_OK) {
    if (zip.avail_in == 0) {
      in.read(input.data(), static_cast<std::streamsize>(input.size()));
      zip.next_in = reinterpret_cast<Bytef*>(input.data());
      zip.avail_in = static_cast<uInt>(in.gcount());
    }
    zip.next_out = output.data();
    zip.avail_out = static_cast<uInt>(output.size());
    result = inflate(&zip, Z_NO_FLUSH);
  }
  inflateEnd(&zip);
}

void Read(const std::filesystem::path& file) {
  TReadFileThread(0, file).WaitFor();
}

void LoadTables() {
  TMissionDatasets tables;
  TNoProgress progress;
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
}

// Seconds to read a file into an empty model, which stays filled.
double ReadingTime(const std::filesystem::path& file) {
  ClearMission();
  return SecondsOf([&file] { Read(file); });
}

double TablesTime(const std::filesystem::path& file) {
  ReadingTime(file);
  return SecondsOf(LoadTables);
}

// The least that a line of five numbers for each sample can cost.
void FormatOnly(const std::filesystem::path& out) {
  std::FILE* file = std::fopen(out.c_str(), "wb");
  std::array<char, 256> line{};
  for (const TEvent& event : EventList.Events()) {
    for (const TEventValue& value : event.Values()) {
      char* to = line.data();
      for (const double number : RowOf(value, event.GetStartTime())) {
        to = std::to_chars(to, line.data() + line.size(), number, std::chars_format::general, 15).ptr;
        *to++ = ',';
      }
      *to++ = '\n';
      std::fwrite(line.data(), 1, static_cast<std::size_t>(to - line.data()), file);
    }
  }
  std::fclose(file);
}

void ExportCsv(const std::filesystem::path& folder) {
  std::vector<std::uint32_t> all(EventList.Count());
  std::iota(all.begin(), all.end(), 0U);
  TNoProgress progress;
  ExportEventsCsv(MissionData, EventList, all, TEventFiles::Samples, folder, progress);
}

}  // namespace

int main(int argc, char** argv) {
  const bool smoke = argc > 1 && std::string(argv[1]) == "--smoke";
  const std::uint32_t part = smoke ? 100 : 1;
  const int rounds = smoke ? 1 : 7;
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::filesystem::path large = folder / fmt::format("shockscope-bench-{}-large.kshock", part);
  const std::filesystem::path many = folder / fmt::format("shockscope-bench-{}-many.kshock", part);
  const std::filesystem::path fewer = folder / fmt::format("shockscope-bench-{}-fewer.kshock", part);
  WriteBenchRecording(large, {2000 / part, 1000, 200});
  WriteBenchRecording(many, {100000 / part, 100, 100});
  WriteBenchRecording(fewer, {10000 / part, 100, 100});

  fmt::print("{} cores{}\n", std::thread::hardware_concurrency(),
             smoke ? "; recordings of a hundredth of the size, whose ratios mean nothing" : "");
  PrintRatio(
      "reading 2,000,000 records of 15 channels / bare inflate", 1.25, rounds, [&large] { return ReadingTime(large); },
      [&large] { return SecondsOf([&large] { InflateOnly(large); }); });
  const std::filesystem::path exports = folder / fmt::format("shockscope-bench-{}-exports", part);
  std::filesystem::create_directory(exports);
  ReadingTime(large);
  PrintRatio(
      "2,000,000 samples to CSV / to_chars and fwrite", 2, rounds,
      [&exports] { return SecondsOf([&exports] { ExportCsv(exports); }); },
      [&exports] { return SecondsOf([&exports] { FormatOnly(exports / "formatted"); }); });
  std::filesystem::remove_all(exports);
  PrintRatio(
      "tables of 100,000 events × 100, 12 × 100,000 readings / reading", 0.5, rounds,
      [] { return SecondsOf(LoadTables); }, [&many] { return ReadingTime(many); });
  PrintRatio(
      "tables of 100,000 events / of 10,000 events", 14, rounds, [&many] { return TablesTime(many); },
      [&fewer] { return TablesTime(fewer); });
  PrintTransformTime(1, rounds);
  for (const auto& file : {large, many, fewer}) std::filesystem::remove(file);
}
