// The commands of kshock. Each reads or writes one file, says on the console what is wrong, and returns its status.
// Files are given as UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uShockResponse.h"
#include "analysis/uSpectrum.h"
#include "base/uDateTime.h"
#include "cli/uConsole.h"

// Mission details and summary of each file, for people; with a file of limits the verdict, and whether the recording
// passes them, which does not change the status. The worst status is returned. A file of limits that cannot be used:
// cannot be read, and no recording is tried.
TStatus InfoCommand(const std::vector<std::string>& files, const std::optional<std::string>& limits,
                    const TConsole& console);

// Everything as one JSON object; `rows` limits the rows of each table.
TStatus DumpCommand(const std::string& file, std::size_t rows, const TConsole& console);

// One line per block, and where a damaged stream ends.
TStatus BlocksCommand(const std::string& file, const TConsole& console);

// One table in the CSV line format, by a named index or, when it is empty, as it stands after loading. The index of
// the most important events is the one that ranks them.
TStatus TableCommand(const std::string& file, const std::string& table, const std::string& index,
                     const TConsole& console);

// The high-passed curves of one event, by its ID, in the CSV line format.
TStatus FilterCommand(const std::string& file, std::size_t event, const TConsole& console);

// The spectrum of one event in the CSV line format; on err what was done about uneven times. Without a
// spectrum: no result.
TStatus SpectrumCommand(const std::string& file, std::size_t event, TSpectrumType type, TWeightingWindow window,
                        const TConsole& console);

struct TSrsRequest {
  std::optional<std::size_t> event;  // its ID; without one: the envelope of all events
  TResponseRequest response;         // but for its level, which is the recording's
};

// The shock response spectrum of one event or the envelope of all in the CSV line format, numbers exact; on err how far
// it can be trusted. Without a spectrum: no result.
TStatus SrsCommand(const std::string& file, const TSrsRequest& request, const TConsole& console);

// Velocity change, durations, equivalent half-sine, direction and drop height of one event, by its ID, or of all in the
// CSV line format, numbers exact; with the reason where something is missing. No pulse at all: no result.
TStatus PulseCommand(const std::string& file, std::optional<std::size_t> event, const TConsole& console);

// What `kshock export` can write, in the order in which it does.
inline constexpr std::array<std::string_view, 13> kExports = {
    "events-csv",   "peaks-csv",     "calibration-csv",  "shocks-csv",  "sensors-csv",
    "battery-csv",  "analysis-csv",  "events-xlsx",      "shocks-xlsx", "sensors-xlsx",
    "battery-xlsx", "analysis-xlsx", "measurements-xlsx"};

struct TExportRequest {
  std::string folder;
  std::vector<std::string> what;  // of kExports
  std::string dateFormat{kDefaultDateFormat};
  std::string filter;  // "acc=6..20,tot=..50,axis=X-pos"; empty: all events are visible
};

// Writes the files that the window's exports would, under the names that it proposes. All are tried; the worst status
// is returned.
TStatus ExportCommand(const std::string& file, const TExportRequest& request, const TConsole& console);

// Writes the part of a recording between two times, as TypedTime reads them; without one: from its begin, to its end.
// Nothing lies between them: no result, and nothing is written.
TStatus CutCommand(const std::string& file, const std::string& from, const std::string& to, const std::string& out,
                   const TConsole& console);

// The notes of a recording as labels: printed, or written to a file, one that ends with ".tsv" as a table of events.
// With `from`, the labels of a file become notes instead.
TStatus NotesCommand(const std::string& file, const std::string& to, const std::string& from, const TConsole& console);

struct TFleetRequest {
  std::vector<std::string> given;  // files and folders; when merging: parts
  std::string out;
  std::string format;           // "sqlite", "csv", "jsonl"; empty: that of OUT, of a new one by its ending, else SQLite
  std::string filesFrom;        // a file with more of them, "-": standard input
  bool isNulSeparated = false;  // else a line each
  std::size_t jobs = 1;
  std::size_t shard = 1, shardCount = 1;  // every shardCount-th file, from this one on
  bool analysis = false;
  std::string limits;  // a limit profile
  bool isMerge = false;
};

// One table from many recordings, see docs/fleet.md. Every file gets a row, whatever is wrong with it, and changes
// nothing in the status: done means that OUT is written. OUT is replaced whole or not at all, and not at all when it is
// something else than such a table.
TStatus FleetCommand(const TFleetRequest& request, const TConsole& console);

// Writes a recording from a description in JSON and its records in CSV.
TStatus MakeCommand(const std::string& source, const std::string& out, const TConsole& console);

struct TDemoSize {
  std::uint32_t events = 300;
  std::uint32_t samples = 0;       // in each event; 0: as many as 0.1 … 0.6 s take
  std::uint32_t readings = 14400;  // of each slow sensor
  std::uint64_t seed = 1;
};

// Writes a synthetic but plausible mission of ten days.
TStatus DemoCommand(const std::string& out, const TDemoSize& size, const TConsole& console);
