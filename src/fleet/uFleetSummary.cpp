#include "fleet/uFleetSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <map>
#include <mutex>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#include "base/uFiles.h"
#include "fleet/uFleetDatabase.h"
#include "fleet/uFleetFiles.h"
#include "fleet/uFleetScratch.h"
#include "platform/uProcess.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

constexpr int kCannotRead = 3;
// The first chunk is small, so that something is seen soon; a larger one costs less to start, but a stop loses it.
constexpr std::size_t kFirstChunk = 8;
constexpr std::chrono::milliseconds kMaxChunkTime{400};

std::string TextIn(const TFleetValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::string() : *text;
}

std::int64_t WholeIn(const TFleetValue& value) {
  const auto* whole = std::get_if<std::int64_t>(&value);
  return whole == nullptr ? 0 : *whole;
}

std::optional<double> RealIn(const TFleetValue& value) {
  const auto* real = std::get_if<double>(&value);
  return real == nullptr ? std::nullopt : std::optional(*real);
}

TFleetSummary SummaryOf(const TFleetRow& row) {
  return {.path = TextIn(row[0]),
          .status = static_cast<int>(WholeIn(row[1])),
          .reason = TextIn(row[2]),
          .title = TextIn(row[3]),
          .operatorName = TextIn(row[4]),
          .begin = TextIn(row[5]),
          .events = WholeIn(row[6]),
          .peak = RealIn(row[7]),
          .damaged = WholeIn(row[8]) != 0};
}

// What the cache has of these files and still holds; `files` keeps the others.
std::vector<TFleetSummary> TakeKnown(const TSummaryOrder& order, std::vector<TFleetEntry>& files) {
  std::error_code error;
  if (order.cache.empty() || !fs::exists(order.cache, error)) return {};
  std::vector<TFleetSummary> known;
  try {
    const auto rows = TFleetDatabase::KnownIn(order.cache);
    const std::string options = TFleetOptions().Text();
    std::map<std::string, bool> holds;
    std::erase_if(files, [&](const TFleetEntry& entry) {
      return StillHolds(entry, rows, options) && holds.emplace(entry.name, true).second;
    });
    for (TFleetSummary& summary : SummariesIn(order.cache, order.limits)) {
      if (holds.contains(summary.path)) known.push_back(std::move(summary));
    }
  } catch (const EFleetDatabase&) {  // an unusable cache is made anew
    fs::remove(order.cache, error);
    files = ListRecordings(order.files);
    known.clear();
  }
  return known;
}

// Reads files into parts, a chunk at a time on each core.
class TChunks {
 public:
  TChunks(const TSummaryOrder& order, std::span<const TFleetEntry> files) : FOrder(order), FRest(files) {}

  // Hands out what is read until all is, or `ready` is false. Throws what a reader has thrown.
  void ReadAll(const TSummariesReady& ready) {
    std::vector<std::future<void>> readers;
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    for (std::size_t i = 0; i < cores; ++i)
      readers.push_back(std::async(std::launch::async, [this, &ready] { ReadChunks(ready); }));
    for (std::future<void>& reader : readers) reader.wait();
    for (std::future<void>& reader : readers) reader.get();
  }

  // All parts and the older cache as one file. A cache that cannot be written is no loss.
  void KeepParts() const {
    if (FOrder.cache.empty() || FParts.empty()) return;
    std::error_code error;
    fs::create_directories(FOrder.cache.parent_path(), error);
    std::vector<std::string> arguments = {"fleet", "--to", Utf8FromPath(FOrder.cache), "--merge"};
    for (const fs::path& part : FParts) arguments.push_back(Utf8FromPath(part));
    if (fs::exists(FOrder.cache, error)) arguments.push_back(Utf8FromPath(FOrder.cache));
    RunProgram(FOrder.kshock, arguments);
  }

 private:
  void ReadChunks(const TSummariesReady& ready) {
    std::size_t size = kFirstChunk;
    std::unique_lock lock(FMutex);
    while (!FRest.empty() && !FOrder.stop.stop_requested()) {
      const auto chunk = FRest.first(std::min(size, FRest.size()));
      FRest = FRest.subspan(chunk.size());
      lock.unlock();
      const auto started = std::chrono::steady_clock::now();
      std::vector<TFleetSummary> summaries = Read(chunk);
      const auto took = std::chrono::steady_clock::now() - started;
      if (took > kMaxChunkTime) size = std::max<std::size_t>(1, size / 2);
      if (took < kMaxChunkTime / 2) size *= 2;
      lock.lock();
      FRead += chunk.size();
      if (!ready(std::move(summaries), FCount - FRead)) FRest = {};
    }
  }

  std::vector<TFleetSummary> Read(std::span<const TFleetEntry> chunk) {
    std::string names;
    for (const TFleetEntry& entry : chunk) names += Utf8FromPath(entry.path) + '\0';
    const std::size_t number = FNumber++;
    const fs::path list = FScratch.File(number, ".txt");
    const fs::path part = FScratch.File(number, ".sqlite");
    SaveFile(list, names);
    const int status = RunProgram(
        FOrder.kshock, {"fleet", "--files-from", Utf8FromPath(list), "-0", "--to", Utf8FromPath(part)}, FOrder.stop);
    std::error_code error;
    if (status == 0 && fs::exists(part, error)) {
      std::vector<TFleetSummary> summaries = SummariesIn(part, FOrder.limits);
      const std::lock_guard lock(FMutex);
      FParts.push_back(part);
      return summaries;
    }
    std::vector<TFleetSummary> summaries;
    if (FOrder.stop.stop_requested()) return summaries;
    if (chunk.size() == 1) {
      summaries.push_back(
          {.path = chunk[0].name, .status = kCannotRead, .reason = "The process that read the file ended early."});
      return summaries;
    }
    for (std::size_t i = 0; i < chunk.size(); ++i)
      std::ranges::move(Read(chunk.subspan(i, 1)), std::back_inserter(summaries));
    return summaries;
  }

  const TSummaryOrder& FOrder;
  const TFleetScratch FScratch;
  std::atomic<std::size_t> FNumber = 0;  // of the next list and part
  std::mutex FMutex;                     // guards what follows
  std::span<const TFleetEntry> FRest;    // that nobody reads yet
  const std::size_t FCount = FRest.size();
  std::size_t FRead = 0;
  std::vector<fs::path> FParts;
};

}  // namespace

std::vector<TFleetSummary> SummariesIn(const fs::path& database, const std::optional<TLimits>& limits) {
  std::vector<TFleetSummary> summaries;
  std::map<std::string, std::size_t> places;
  TFleetDatabase::Ask(database,
                      "SELECT path, status, reason, title, operator, \"begin\", events, peak_g, damaged FROM recording",
                      {}, [&](const TFleetRow& row) {
                        places[TextIn(row[0])] = summaries.size();
                        summaries.push_back(SummaryOf(row));
                      });
  const auto at = [&](const TFleetValue& path) -> TFleetSummary* {
    const auto place = places.find(TextIn(path));
    return place == places.end() ? nullptr : &summaries[place->second];
  };
  TFleetDatabase::Ask(
      database,
      "SELECT event.recording, CAST((julianday(event.\"begin\") - julianday(recording.\"begin\")) * 86400 * ?1 / "
      "recording.span_s AS INTEGER) AS step, max(event.peak_g) FROM event JOIN recording ON recording.path = "
      "event.recording WHERE event.peak_g IS NOT NULL GROUP BY event.recording, step",
      {static_cast<std::int64_t>(kPictureSteps)}, [&](const TFleetRow& row) {
        TFleetSummary* summary = at(row[0]);
        if (summary == nullptr) return;
        summary->picture.resize(kPictureSteps);
        const auto step = std::clamp<std::int64_t>(WholeIn(row[1]), 0, kPictureSteps - 1);
        float& peak = summary->picture[static_cast<std::size_t>(step)];
        peak = std::max(peak, static_cast<float>(RealIn(row[2]).value_or(0)));
      });
  if (!limits) return summaries;
  for (TFleetSummary& summary : summaries) summary.above = 0;
  TFleetDatabase::Ask(
      database, "SELECT recording, count(*) FROM event WHERE peak_g > ?1 OR peak_g < ?2 GROUP BY recording",
      {double{LimitAsSingle(limits->max)}, double{LimitAsSingle(limits->min)}}, [&](const TFleetRow& row) {
        if (TFleetSummary* summary = at(row[0])) summary->above = WholeIn(row[1]);
      });
  return summaries;
}

void Summarize(const TSummaryOrder& order, const TSummariesReady& ready) {
  std::vector<TFleetEntry> files = ListRecordings(order.files);
  std::vector<TFleetSummary> known = TakeKnown(order, files);
  if (!ready(std::move(known), files.size()) || files.empty()) return;
  TChunks chunks(order, files);
  chunks.ReadAll(ready);
  chunks.KeepParts();
}

fs::path SummaryCache(const fs::path& cacheFolder, const fs::path& folder) {
  if (cacheFolder.empty()) return {};
  std::uint64_t hash = 14695981039346656037U;  // FNV-1a; a collision only makes two folders share a file
  for (const char c : Utf8FromPath(folder)) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return cacheFolder / fmt::format("folder-{:016x}.sqlite", hash);
}
