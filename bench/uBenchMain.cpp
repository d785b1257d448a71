// Prints how long the program takes as ratios to a reference of the same run, with the bound of each ratio.
// `--smoke` uses small recordings, to see that the benches work.
#include <fmt/format.h>
#include <zlib.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <numbers>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "analysis/uAnalysisTable.h"
#include "analysis/uFourier.h"
#include "analysis/uMissionDatasets.h"
#include "analysis/uShockResponse.h"
#include "base/uMessages.h"
#include "bench/uBenchRecordings.h"
#include "bench/uExportBenches.h"
#include "bench/uMeasure.h"
#include "export/uCsvExports.h"
#include "export/uXlsxExports.h"
#include "fleet/uFleetTables.h"
#include "model/uReadFileThread.h"
#include "platform/uMachineMemory.h"
#include "platform/uProcessLimits.h"

namespace {

// One forward transform of the largest size, the median of many.
void PrintTransformTime(double boundMs, int rounds) {
  TFourier transform(kMaxSpectrumSize);
  transform.Forward();  // makes the table of sines
  std::vector<double> times;
  for (int i = 0; i < rounds * 100; ++i) {
    transform.Clear();
    transform.SetReal(1, 1);
    times.push_back(SpentOn([&transform] { transform.Forward(); }).wall);
  }
  PrintRow("a transform of 8192 points, in ms", fmt::format("{:6.3f}  (at most {})", Median(times) * 1000, boundMs));
}

// A decaying shock on three axes behind noise, at 10 kHz.
TShockSamples Shock(int samples) {
  TShockSamples shock;
  shock.grid.stepMs = 0.1;
  for (int i = 0; i < samples; ++i) {
    const double shake =
        0.01 * std::sin(i * 1.7) + (i < samples / 10 ? 0 : 50 * std::exp(-i / 800.0) * std::sin(i * 0.1));
    shock.x.push_back(shake);
    shock.y.push_back(0.3 * shake);
    shock.z.push_back(0.01 * std::sin(i * 1.3));
  }
  return shock;
}

// What the response spectrum of one axis costs when each frequency runs alone, without zeros behind the samples.
double PlainResponses(const std::vector<double>& axis, const std::vector<double>& hertz, double rate) {
  double sum = 0;
  for (const double one : hertz) {
    const double angle = 2 * std::numbers::pi * one / rate;
    const double loss = std::exp(-angle / 20);
    const double a1 = 2 * loss * std::cos(angle);
    const double a2 = loss * loss;
    double response = 0, before = 0, input = 0, extreme = 0;
    for (const double value : axis) {
      const double next = (1 - a1 + a2) * (value + input) / 2 + a1 * response - a2 * before;
      before = std::exchange(response, next);
      input = value;
      extreme = std::max(extreme, std::fabs(next));
    }
    sum += extreme;
  }
  return sum;
}

// A span of six octaves.
constexpr double kFromHertz = 2500.0 / 64;
constexpr double kToHertz = 2500;

// `events` times the three axes of a shock in a plain loop, in seconds.
TSpent PlainTime(const TShockSamples& shock, int events) {
  static double unused = 0;  // so that no result is left out
  const std::vector<double> hertz = OctaveFrequencies(kFromHertz, kToHertz, 12);
  return SpentOn([&] {
    for (int i = 0; i < events; ++i) {
      for (const auto* axis : {&shock.x, &shock.y, &shock.z}) unused += PlainResponses(*axis, hertz, shock.Rate());
    }
  });
}

// The response spectrum of one event on one core.
void PrintResponseRatio(double bound, int rounds) {
  const TShockSamples shock = Shock(10000);
  const std::vector<double> hertz = OctaveFrequencies(kFromHertz, kToHertz, 12);
  PrintRatio(
      "response spectra of an event of 10,000 samples / a plain loop", bound, rounds,
      [&] { return SpentOn([&] { (void)CalcResponseSpectrum(shock, hertz, {}); }); },
      [&] { return PlainTime(shock, 1); });
}

// The envelope of events as the window shows it, from the recorded samples on, on all cores.
void PrintEnvelopeRatio(double bound, int rounds, int count) {
  const TShockSamples shock = Shock(500);
  TEventList list;
  std::vector<const TEvent*> events;
  for (int i = 0; i < count; ++i) {
    list.NewEvent();
    for (std::size_t k = 0; k < shock.Count(); ++k) {
      list.AddValues(static_cast<double>(k) * shock.grid.stepMs, static_cast<float>(shock.x[k]),
                     static_cast<float>(shock.y[k]), static_cast<float>(shock.z[k]));
    }
  }
  for (const TEvent& event : list.Events()) events.push_back(&event);
  TResponseRequest request;
  request.levelOn = 1;
  request.from = kFromHertz;
  request.to = kToHertz;
  PrintRatio(
      "envelope of 1,000 events of 500 samples / a plain loop", bound, rounds,
      [&] {
        TResponseProgress progress;
        return SpentOn(
            [&] { (void)CalcShockResponse(events, request, std::thread::hardware_concurrency(), progress); });
      },
      [&] { return PlainTime(shock, count); });
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

void Read(const std::filesystem::path& file, TInflateWay way = TInflateWay::Fast, TReadAhead ahead = TReadAhead::Yes) {
  TReadFileThread(0, file, TReadFileThread::kNoMemoryBound, way, ahead).WaitFor();
}

void LoadTables() {
  TMissionDatasets tables;
  TNoProgress progress;
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
}

// Seconds to read a file into an empty model, which stays filled.
TSpent ReadingTime(const std::filesystem::path& file, TInflateWay way = TInflateWay::Fast,
                   TReadAhead ahead = TReadAhead::Yes) {
  ClearMission();
  return SpentOn([&file, way, ahead] { Read(file, way, ahead); });
}

// Memory at the peak of loading one event, with its tables, beyond what was in use before.
void PrintMemoryOfALongEvent(const std::filesystem::path& folder, std::uint32_t samples, double bound) {
  const std::filesystem::path file = folder / "shockscope-bench-long.kshock";
  WriteBenchRecording(file, {1, samples, 200});
  ClearMission();
  ResetPeak();
  const double before = PeakBytes();
  Read(file);
  LoadTables();
  PrintRow(fmt::format("an event of {} samples, bytes of memory a sample", samples),
           fmt::format("{:6.1f}  (at most {})", (PeakBytes() - before) / samples, bound));
  std::filesystem::remove(file);
}

// What `kshock fleet` computes of the mission that is loaded.
void SumUp() {
  const TFleetMission mission{MissionData, EventList, SensorList};
  FleetRowsOf({.path = "bench"}, &mission, {});
}

// Each step for a hundredth, a tenth and all of the events. `exports` is a folder in memory.
void PrintGrowths(const std::filesystem::path& folder, const std::filesystem::path& exports, std::uint32_t events,
                  int rounds) {
  std::vector<std::filesystem::path> files;
  for (const std::uint32_t part : {100U, 10U, 1U}) {
    files.push_back(folder / fmt::format("shockscope-bench-growth-{}.kshock", part));
    WriteBenchRecording(files.back(), {events / part, 100, 100});
  }
  PrintRow(fmt::format("{} … {} events of 100 samples, processor time", events / 100, events), "");
  TNoProgress progress;
  TMissionDatasets tables;
  const auto grow = [&](const std::string& what, const std::function<void()>& step) {
    PrintGrowth("  " + what, rounds, files.size(), [&](std::size_t i) {
      ReadingTime(files[i]);
      LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
      return SpentOn(step);
    });
  };
  PrintGrowth("  reading", rounds, files.size(), [&files](std::size_t i) { return ReadingTime(files[i]); });
  grow("tables", LoadTables);
  grow("a fleet's rows", SumUp);
  grow("the analysis of all shocks", [] { (void)AnalyseMission(EventList, 4); });
  grow("the table of events to CSV", [&] { ExportTableCsv(tables.Events, exports / "table.csv", progress); });
  grow("the same to XLSX", [&] { ExportTableXlsx(MissionData, tables.Events, exports / "table.xlsx", progress); });
  for (const auto& file : files) std::filesystem::remove(file);
}

TSpent TablesTime(const std::filesystem::path& file) {
  ReadingTime(file);
  return SpentOn(LoadTables);
}

}  // namespace

int main(int argc, char** argv) {
  RaiseOpenFileLimit();  // as the programs do
  TakeMemoryInLargeSteps();
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
  const std::filesystem::path usual = folder / fmt::format("shockscope-bench-{}-usual.kshock", part);
  WriteBenchRecording(usual, {1000 / part, 550, 4});

  fmt::print("{} cores{}\n", std::thread::hardware_concurrency(),
             smoke ? "; recordings of a hundredth of the size, whose ratios mean nothing" : "");
  const std::filesystem::path exports = folder / fmt::format("shockscope-bench-{}-exports", part);
  std::filesystem::create_directory(exports);
  // First of all: what was in use before counts.
  BenchMemoryOfTableCsv(exports, 1000000 / part);
  const auto bareInflate = [&large] { return SpentOn([&large] { InflateOnly(large); }); };
  PrintRatio(
      "reading 2,000,000 records of 15 channels / bare inflate", 0.65, rounds, [&large] { return ReadingTime(large); },
      bareInflate);
  PrintRatio(
      "the same with zlib alone / bare inflate", 1.25, rounds,
      [&large] { return ReadingTime(large, TInflateWay::Exact); }, bareInflate);
  PrintMemoryOfALongEvent(folder, 10000000 / part, 30);
  PrintGrowths(folder, exports, 100000 / part, smoke ? 1 : 3);
  ReadingTime(large);
  BenchCsvOfSamples(exports, rounds);
  BenchWorkbooks(exports, rounds);
  ReadingTime(fewer);
  BenchCsvOfManyEvents(exports, rounds);
  std::filesystem::remove_all(exports);
  PrintRatio(
      "tables of 100,000 events × 100, 12 × 100,000 readings / reading", 0.5, rounds,
      [] { return SpentOn(LoadTables); }, [&many] { return ReadingTime(many); });
  PrintRatio(
      "tables of 100,000 events / of 10,000 events", 14, rounds, [&many] { return TablesTime(many); },
      [&fewer] { return TablesTime(fewer); });
  PrintRatio(
      "a fleet's rows of 1,000 events × 550, 12 × 137,500 readings / reading", 0.6, rounds,
      [] { return SpentOn(SumUp); }, [&usual] { return ReadingTime(usual, TInflateWay::Fast, TReadAhead::No); });
  PrintTransformTime(1, rounds);
  PrintResponseRatio(0.7, rounds);
  PrintEnvelopeRatio(1.4, rounds, smoke ? 10 : 1000);
  for (const auto& file : {large, many, fewer, usual}) std::filesystem::remove(file);
}
