// Prints how long the program takes as ratios to a reference of the same run, with the bound of each ratio.
// `--smoke` uses small recordings, to see that the benches work.
#include <fmt/format.h>
#include <zlib.h>

#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "analysis/uFourier.h"
#include "analysis/uMissionDatasets.h"
#include "base/uMessages.h"
#include "bench/uBenchRecordings.h"
#include "bench/uExportBenches.h"
#include "bench/uMeasure.h"
#include "model/uReadFileThread.h"

namespace {

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
  const std::filesystem::path exports = folder / fmt::format("shockscope-bench-{}-exports", part);
  std::filesystem::create_directory(exports);
  // First of all: what was in use before counts.
  BenchMemoryOfTableCsv(exports, 1000000 / part);
  PrintRatio(
      "reading 2,000,000 records of 15 channels / bare inflate", 1.25, rounds, [&large] { return ReadingTime(large); },
      [&large] { return SecondsOf([&large] { InflateOnly(large); }); });
  ReadingTime(large);
  BenchCsvOfSamples(exports, rounds);
  BenchWorkbooks(exports, rounds);
  ReadingTime(fewer);
  BenchCsvOfManyEvents(exports, rounds);
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
