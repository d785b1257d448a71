#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <mutex>
#include <optional>
#include <span>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "cli/uRecording.h"
#include "fleet/uFleetDatabase.h"
#include "fleet/uFleetFiles.h"
#include "fleet/uFleetProcesses.h"
#include "fleet/uFleetText.h"
#include "platform/uPartFile.h"
#include "platform/uProcess.h"
#include "platform/uSafeFile.h"
#include "platform/uSha256.h"
#include "shell/uLimitProfileFile.h"

namespace fs = std::filesystem;

namespace {

constexpr int kCannotRead = static_cast<int>(TStatus::CannotRead);
constexpr int kTries = 3;

// What is wrong with an input, as a sentence with its name.
class EInput : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string ContentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad()) throw EInput(Utf8FromPath(path) + " cannot be read.");
  return text;
}

std::vector<fs::path> PathsIn(std::string_view list, std::string_view separator) {
  std::vector<fs::path> paths;
  while (!list.empty()) {
    if (const std::string_view path = TakeUntil(list, separator); !path.empty()) paths.push_back(PathFromUtf8(path));
  }
  return paths;
}

TFleetOptions OptionsOf(const TFleetRequest& request) {
  TFleetOptions options{.analysis = request.analysis, .limits = {}, .limitsText = {}};
  if (request.limits.empty()) return options;
  const fs::path path = PathFromUtf8(request.limits);
  try {
    options.limits = ReadLimitProfile(path);
  } catch (const std::exception& error) {
    throw EInput(fmt::format("{}: {}", request.limits, ReasonOf(error)));
  }
  options.limitsText = ContentOf(path);
  return options;
}

std::vector<TFleetEntry> EntriesOf(const TFleetRequest& request) {
  std::vector<fs::path> given;
  for (const std::string& path : request.given) given.push_back(PathFromUtf8(path));
  if (!request.filesFrom.empty()) {
    const std::string list = request.filesFrom == "-" ? std::string(std::istreambuf_iterator<char>(std::cin), {})
                                                      : ContentOf(PathFromUtf8(request.filesFrom));
    std::ranges::move(PathsIn(list, request.isNulSeparated ? std::string_view("\0", 1) : "\n"),
                      std::back_inserter(given));
  }
  std::vector<TFleetEntry> entries = ListRecordings(given);
  std::vector<TFleetEntry> shard;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (i % request.shardCount == request.shard - 1) shard.push_back(std::move(entries[i]));
  }
  return shard;
}

// Reads one file into the mission and sums it up, on one core: other processes have the others. A file that changes
// meanwhile is read again.
TFleetRows Analyse(const TFleetEntry& entry, const TFleetOptions& options) {
  const TConsole silent{[](std::string_view) {}, [](std::string_view) {}, false};
  TFleetFile file{.path = entry.name,
                  .status = kCannotRead,
                  .reason = entry.problem,
                  .options = options.Text(),
                  .programVersion = SHOCKSCOPE_VERSION,
                  .analysedAt = FormatDateTime("yyyy-mm-ddThh:nn:ss.zzz", UtcNow())};
  if (!entry.problem.empty()) return FleetRowsOf(file, nullptr, options);
  for (int i = 0; i < kTries; ++i) {
    const std::optional<TFileState> before = StateOf(entry.path);
    const TRecording recording = ReadRecording(Utf8FromPath(entry.path), silent, TReadAhead::No);
    file.status = static_cast<int>(recording.status);
    file.reason = recording.complaint;
    if (recording.extent.isDataFile) file.creatorValid = recording.events.ValidCreator;
    file.size.reset();
    if (before) file.size = before->size;
    file.modified = before ? before->modified : "";
    try {
      TNoProgress progress;
      if (before) file.sha256 = Sha256Of(entry.path, progress);
    } catch (const fs::filesystem_error& error) {
      file.status = kCannotRead;
      file.reason = ReasonOf(error);
    }
    if (StateOf(entry.path) != before) continue;
    const TFleetMission mission{recording.mission, recording.events, recording.sensors,
                                recording.status == TStatus::Damaged};
    return FleetRowsOf(file, recording.HasMission() ? &mission : nullptr, options);
  }
  file.status = kCannotRead;
  file.reason = "The file changed while it was read.";
  return FleetRowsOf(file, nullptr, options);
}

constexpr std::string_view kSqlite = "sqlite";
constexpr std::string_view kCsv = "csv";
constexpr std::string_view kJsonLines = "jsonl";

// Of a file of tables, by how it begins; of another by its ending.
std::string_view FormatOf(const fs::path& path) {
  std::string begin(16, '\0');
  std::ifstream file;
  if (std::error_code error; fs::is_regular_file(path, error)) file.open(path, std::ios::binary);
  file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  if (file.gcount() == 0) {
    const fs::path ending = path.extension();
    return ending == ".csv" ? kCsv : ending == ".jsonl" ? kJsonLines : kSqlite;
  }
  return begin.starts_with("SQLite format 3") ? kSqlite : begin.starts_with('{') ? kJsonLines : kCsv;
}

// A file of tables as a database: itself, or a temporary one that its rows are read into.
class TFinishedTables {
 public:
  TFinishedTables(const fs::path& path, const fs::path& scratchFolder) : FPath(path) {
    const std::string_view format = FormatOf(path);
    if (format == kSqlite) return;
    FImported.emplace(scratchFolder);
    FPath = FImported->Path();
    TFleetDatabase database(FPath);
    format == kJsonLines ? ReadFleetJsonLines(path, database) : ReadFleetCsv(path, database);
    database.Finish();
  }
  [[nodiscard]] const fs::path& Path() const { return FPath; }

 private:
  fs::path FPath;
  std::optional<TPartFile> FImported;
};

// Replaces OUT by what `fill` puts into a database.
void WriteOut(const TFleetRequest& request, const std::function<void(TFleetDatabase&)>& fill) {
  const fs::path out = PathFromUtf8(request.out);
  if (request.format == kSqlite) {
    WriteBesideAndRename(out, [&](const fs::path& path) {
      TFleetDatabase database(path);
      fill(database);
      database.Finish();
    });
    return;
  }
  const TPartFile part(out.parent_path());
  TFleetDatabase database(part.Path());
  fill(database);
  database.Finish();
  request.format == kCsv ? WriteFleetCsv(database, out) : WriteFleetJsonLines(database, out);
}

TStatus Merge(const TFleetRequest& request, const TConsole& console) {
  const fs::path scratch = PathFromUtf8(request.out).parent_path();
  WriteOut(request, [&](TFleetDatabase& database) {
    for (const std::string& part : request.given) {
      try {
        if (!fs::exists(PathFromUtf8(part))) throw EFleetDatabase("There is no such file.");
        database.Merge(TFinishedTables(PathFromUtf8(part), scratch).Path());
      } catch (const EFleetDatabase& error) {
        throw EInput(fmt::format("{}: {}", part, error.what()));
      }
    }
  });
  console.out(fmt::format("{} parts merged\n", request.given.size()));
  return TStatus::Done;
}

// What OUT holds from an earlier run.
struct TEarlier {
  std::optional<TFinishedTables> tables;
  std::map<std::string, TFleetKnown> known;
};

TEarlier EarlierOf(const TFleetRequest& request) {
  TEarlier earlier;
  const fs::path out = PathFromUtf8(request.out);
  std::error_code error;
  if (!fs::is_regular_file(out, error) || fs::file_size(out, error) == 0) return earlier;
  try {
    earlier.tables.emplace(out, out.parent_path());
    earlier.known = TFleetDatabase::KnownIn(earlier.tables->Path());
  } catch (const EFleetDatabase& refused) {
    throw fs::filesystem_error(refused.what(), out, std::make_error_code(std::errc::file_exists));
  }
  return earlier;
}

TFleetRows RowsOfUnread(const TFleetEntry& entry, const std::string& why) {
  return FleetRowsOf({.path = entry.name, .status = kCannotRead, .reason = why, .programVersion = SHOCKSCOPE_VERSION},
                     nullptr, {});
}

// Adds the rows of all entries, which copies of this program read.
void ReadByJobs(const std::vector<TFleetEntry>& entries, const TFleetRequest& request, TFleetDatabase& database,
                const TConsole& console) {
  // Enough files that starting a process costs little, few enough that all processes end at about the same time.
  constexpr std::size_t kMaxFiles = 500, kChunksAProcess = 4;
  std::vector<TFleetEntry> readable;
  for (const TFleetEntry& entry : entries) {
    if (entry.problem.empty()) {
      readable.push_back(entry);
    } else {
      database.Add(RowsOfUnread(entry, entry.problem));
    }
  }
  const std::size_t size = std::clamp<std::size_t>(readable.size() / (request.jobs * kChunksAProcess), 1, kMaxFiles);
  TFleetWork work{.kshock = ThisProgram(), .processes = request.jobs, .firstChunk = size, .maxChunk = size};
  if (request.analysis) work.options.emplace_back("--analysis");
  if (!request.limits.empty()) work.options.insert(work.options.end(), {"--limits", request.limits});
  const TFleetScratch scratch;
  std::mutex mutex;
  std::size_t done = 0;
  ReadInProcesses(work, readable, scratch, [&](std::span<const TFleetEntry> files, const fs::path& part) {
    const std::lock_guard lock(mutex);
    std::error_code error;
    part.empty() ? database.Add(RowsOfUnread(files.front(), kEndedEarly)) : database.Merge(part);
    fs::remove(part, error);
    done += files.size();
    if (console.showProgress) console.err(fmt::format("\r{} of {}", done, readable.size()));
    return true;
  });
}

void ReadOneByOne(std::span<const TFleetEntry> entries, const TFleetOptions& options, TFleetDatabase& database,
                  const TConsole& console) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (console.showProgress) console.err(fmt::format("\r{} of {}", i, entries.size()));
    database.Add(Analyse(entries[i], options));
  }
}

void SayHowManyAreUnusable(std::size_t count, const TConsole& console) {
  if (count == 0) return;
  console.out(fmt::format("{} cannot be read or shown; the tables say why\n", Counted(count, "recording")));
}

TStatus Collect(const TFleetRequest& request, const TConsole& console) {
  const TFleetOptions options = OptionsOf(request);
  std::vector<TFleetEntry> toRead;
  std::vector<std::string> unchanged;
  const TEarlier earlier = EarlierOf(request);
  const std::string optionsText = options.Text();
  for (TFleetEntry& entry : EntriesOf(request)) {
    if (StillHolds(entry, earlier.known, optionsText)) {
      unchanged.push_back(entry.name);
    } else {
      toRead.push_back(std::move(entry));
    }
  }
  console.out(fmt::format("{}: {} as before, {} read\n", Counted(unchanged.size() + toRead.size(), "recording"),
                          unchanged.size(), toRead.size()));
  const bool isSame = toRead.empty() && !unchanged.empty() && unchanged.size() == earlier.known.size();
  if (isSame && FormatOf(PathFromUtf8(request.out)) == request.format) {
    const auto isUnusable = [](const auto& known) { return !IsUsable(known.second.status); };
    SayHowManyAreUnusable(static_cast<std::size_t>(std::ranges::count_if(earlier.known, isUnusable)), console);
    return TStatus::Done;
  }
  std::size_t unusable = 0;
  WriteOut(request, [&](TFleetDatabase& database) {
    if (!unchanged.empty()) database.TakeFrom(earlier.tables->Path(), unchanged);
    if (request.jobs > 1 && toRead.size() > 1) {
      ReadByJobs(toRead, request, database, console);
    } else {
      ReadOneByOne(toRead, options, database, console);
    }
    if (console.showProgress) console.err("\r\033[K");
    unusable = database.UnusableRecordings();
  });
  SayHowManyAreUnusable(unusable, console);
  return TStatus::Done;
}

}  // namespace

TStatus FleetCommand(const TFleetRequest& asked, const TConsole& console) {
  TFleetRequest request = asked;
  if (request.format.empty()) request.format = FormatOf(PathFromUtf8(request.out));
  try {
    return request.isMerge ? Merge(request, console) : Collect(request, console);
  } catch (const EInput& error) {
    console.err(fmt::format("kshock: {}\n", Printable(error.what())));
    return TStatus::CannotRead;
  } catch (const EOutputLost&) {
    throw;
  } catch (const std::exception& error) {
    Complain(console, request.out, Describe(error));
    return TStatus::CannotWrite;
  }
}
