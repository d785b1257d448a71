#include "fleet/uFleetSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#include "base/uFiles.h"
#include "fleet/uFleetDatabase.h"
#include "fleet/uFleetFiles.h"
#include "fleet/uFleetProcesses.h"
#include "platform/uProcess.h"

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

// The parts and the older cache become one file. A cache that cannot be written is no loss.
void KeepParts(const TSummaryOrder& order, const std::vector<fs::path>& parts) {
  if (order.cache.empty() || parts.empty()) return;
  std::error_code error;
  fs::create_directories(order.cache.parent_path(), error);
  std::vector<std::string> arguments = {"fleet", "--to", Utf8FromPath(order.cache), "--merge"};
  for (const fs::path& part : parts) arguments.push_back(Utf8FromPath(part));
  if (fs::exists(order.cache, error)) arguments.push_back(Utf8FromPath(order.cache));
  RunProgram(order.kshock, arguments);
}

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
  const TFleetScratch scratch;
  std::mutex mutex;  // guards what follows
  std::vector<fs::path> parts;
  std::size_t left = files.size();
  const TFleetWork work{.kshock = order.kshock,
                        .processes = std::max(1U, std::thread::hardware_concurrency()),
                        .firstChunk = kFirstChunk,
                        .chunkTime = kMaxChunkTime,
                        .stop = order.stop};
  ReadInProcesses(work, files, scratch, [&](std::span<const TFleetEntry> chunk, const fs::path& part) {
    std::vector<TFleetSummary> summaries;
    if (part.empty()) {
      summaries.push_back({.path = chunk[0].name, .status = kCannotRead, .reason = kEndedEarly});
    } else {
      summaries = SummariesIn(part, order.limits);
    }
    const std::lock_guard lock(mutex);
    if (!part.empty()) parts.push_back(part);
    left -= chunk.size();
    return ready(std::move(summaries), left);
  });
  KeepParts(order, parts);
}

fs::path SummaryCache(const fs::path& cacheFolder, const fs::path& folder) {
  if (cacheFolder.empty()) return {};
  std::uint64_t hash = 14695981039346656037U;  // FNV-1a; a collision only makes two folders share a file
  for (const char c : Utf8FromPath(folder)) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return cacheFolder / fmt::format("folder-{:016x}.sqlite", hash);
}
