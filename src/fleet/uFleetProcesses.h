// Reads recordings by processes of kshock, since a program has one mission. Any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "fleet/uFleetFiles.h"

// A folder of this run alone for lists and parts; it goes with its files. Making one removes those that killed runs
// left a day ago.
class TFleetScratch {
 public:
  // Throws std::filesystem::filesystem_error.
  TFleetScratch();
  ~TFleetScratch();
  TFleetScratch(const TFleetScratch&) = delete;
  TFleetScratch& operator=(const TFleetScratch&) = delete;
  [[nodiscard]] std::filesystem::path File(std::size_t number, std::string_view ending) const;

 private:
  std::filesystem::path FPath;
};

struct TFleetWork {
  std::filesystem::path kshock;           // the program
  std::vector<std::string> options = {};  // of its command "fleet"
  std::size_t processes = 1;              // at the same time
  std::size_t firstChunk = 1;             // files of the first processes
  // Of the later ones: as many as take about this time, but at most so many.
  std::chrono::milliseconds chunkTime = std::chrono::hours(1);
  std::size_t maxChunk = std::numeric_limits<std::size_t>::max();
  std::stop_token stop = {};  // kills the processes; what they were reading counts as not read
};

// Files were read into a finished SQLite file in the scratch folder. No part: the process that read the one file ended
// early. False ends the work. On several threads at once.
using TFleetPartReady = std::function<bool(std::span<const TFleetEntry> files, const std::filesystem::path& part)>;
inline constexpr auto kEndedEarly = "The process that read the file ended early.";

// Returns when all is read. Where a process ends early, each of its files gets a process of its own. Throws what
// `ready` throws, and std::exception when kshock cannot be started or a file cannot be written.
void ReadInProcesses(const TFleetWork& work, std::span<const TFleetEntry> files, const TFleetScratch& scratch,
                     const TFleetPartReady& ready);
