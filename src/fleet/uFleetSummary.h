// What a list of recordings shows of each: some columns of the tables, and a small picture. The recordings are read by
// processes of kshock, since a program has one mission. Any thread, also one that outlives the program's main function.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "fleet/uFleetTables.h"

inline constexpr std::size_t kPictureSteps = 40;

struct TFleetSummary {
  std::string path = {};  // as FleetPath gives it
  int status = 0;         // as the exit status of kshock
  std::string reason = {};
  std::string title = {}, operatorName = {};
  std::string begin = {};  // ISO 8601, as recorded; empty without a time
  std::int64_t events = 0;
  std::optional<double> peak = {};         // g
  std::optional<std::int64_t> above = {};  // events outside the limits that were asked for
  bool damaged = false;
  std::vector<float> picture = {};  // g; the largest peak in each of kPictureSteps equal parts of the span, or empty

  // 1 and 3 have no mission to show.
  [[nodiscard]] bool HasMission() const { return IsUsable(status); }
};

// Of the recordings in a finished SQLite file of kshock fleet. Throws EFleetDatabase.
std::vector<TFleetSummary> SummariesIn(const std::filesystem::path& database, const std::optional<TLimits>& limits);

struct TSummaryOrder {
  std::filesystem::path kshock;  // the program
  std::filesystem::path cache;   // a file that keeps what was read; empty: none
  std::vector<std::filesystem::path> files;
  std::optional<TLimits> limits;  // of the acceleration, in g
  std::stop_token stop;           // ends it at once; the files that are being read count as not read
};

// Gets summaries as they come, and how many files are left; false ends it. On any thread, one call at a time.
using TSummariesReady = std::function<bool(std::vector<TFleetSummary> summaries, std::size_t left)>;

// Takes from the cache what still holds, has the other files read some at a time on each core, and keeps all that was
// read in the cache, also when it is stopped. A file that ended the process that read it gets a summary that says so.
// Throws std::exception when kshock cannot be started or a file cannot be written.
void Summarize(const TSummaryOrder& order, const TSummariesReady& ready);

// The cache for a folder.
std::filesystem::path SummaryCache(const std::filesystem::path& cacheFolder, const std::filesystem::path& folder);
