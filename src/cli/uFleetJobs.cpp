#include "cli/uFleetJobs.h"

#include <fmt/format.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <filesystem>
#include <mutex>
#include <span>
#include <string>
#include <system_error>
#include <thread>

#include "base/uFiles.h"
#include "fleet/uFleetScratch.h"
#include "platform/uProcess.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

// Enough that starting a process costs little, few enough that all processes end at about the same time.
constexpr std::size_t kMaxFiles = 500;
constexpr std::size_t kChunksAProcess = 4;

using TChunk = std::span<const TFleetEntry>;

struct TResult {
  TChunk chunk;
  fs::path part;
  int status = 0;  // of the process
};

// Threads that each run one process after the other.
class TJobs {
 public:
  TJobs(const TFleetRequest& request, std::deque<TChunk> chunks)
      : FRequest(request), FWaiting(std::move(chunks)), FOpen(FWaiting.size()) {
    for (std::size_t i = 0; i < request.jobs; ++i) FThreads.emplace_back([this] { Work(); });
  }
  ~TJobs() {
    const std::lock_guard lock(FMutex);
    FWaiting.clear();
    FOpen = 0;
    FChanged.notify_all();
  }
  TJobs(const TJobs&) = delete;
  TJobs& operator=(const TJobs&) = delete;

  // False when all chunks are done. Throws what a thread has thrown.
  bool Next(TResult& result) {
    std::unique_lock lock(FMutex);
    FChanged.wait(lock, [this] { return !FDone.empty() || FOpen == 0 || FError; });
    if (FError) std::rethrow_exception(FError);
    if (FDone.empty()) return false;
    result = std::move(FDone.front());
    FDone.pop_front();
    return true;
  }
  // The caller is done with a result; `again` are chunks to try instead.
  void Finish(const std::vector<TChunk>& again) {
    const std::lock_guard lock(FMutex);
    FWaiting.insert(FWaiting.end(), again.begin(), again.end());
    FOpen += again.size();
    --FOpen;
    FChanged.notify_all();
  }

 private:
  void Work() {
    std::unique_lock lock(FMutex);
    for (;;) {
      FChanged.wait(lock, [this] { return !FWaiting.empty() || FOpen == 0; });
      if (FWaiting.empty()) return;
      TResult result{FWaiting.front(), FFolder.File(FNumber, ".sqlite")};
      FWaiting.pop_front();
      const fs::path list = FFolder.File(FNumber++, ".txt");
      lock.unlock();
      std::exception_ptr error;
      try {
        result.status = Run(result, list);
      } catch (...) {
        error = std::current_exception();
      }
      lock.lock();
      if (error) FError = error;
      FDone.push_back(std::move(result));
      FChanged.notify_all();
    }
  }

  int Run(const TResult& result, const fs::path& list) const {
    std::string names;
    for (const TFleetEntry& entry : result.chunk) names += Utf8FromPath(entry.path) + '\0';
    SaveFile(list, names);
    std::vector<std::string> arguments = {"fleet", "--files-from", Utf8FromPath(list),
                                          "-0",    "--to",         Utf8FromPath(result.part)};
    if (FRequest.analysis) arguments.emplace_back("--analysis");
    if (!FRequest.limits.empty()) arguments.insert(arguments.end(), {"--limits", FRequest.limits});
    return RunProgram(ThisProgram(), arguments);
  }

  const TFleetRequest& FRequest;
  TFleetScratch FFolder;
  std::mutex FMutex;
  std::condition_variable FChanged;
  std::deque<TChunk> FWaiting;
  std::deque<TResult> FDone;
  std::size_t FOpen;  // chunks whose result nobody is done with
  std::size_t FNumber = 0;
  std::exception_ptr FError;
  std::vector<std::jthread> FThreads;  // last: they use everything above
};

TFleetRows RowsOfUnread(const TFleetEntry& entry, const std::string& why) {
  return FleetRowsOf({.path = entry.name,
                      .status = static_cast<int>(TStatus::CannotRead),
                      .reason = why,
                      .programVersion = SHOCKSCOPE_VERSION},
                     nullptr, {});
}

// Takes the rows of a chunk; returns what has to be tried again.
std::vector<TChunk> Take(const TResult& result, TFleetDatabase& database) {
  std::error_code error;
  if (result.status == 0 && fs::exists(result.part, error)) {
    database.Merge(result.part);
    fs::remove(result.part, error);
    return {};
  }
  std::vector<TChunk> again;
  if (result.chunk.size() == 1) {
    database.Add(RowsOfUnread(result.chunk.front(), "The process that read the file ended early."));
  } else {
    for (std::size_t i = 0; i < result.chunk.size(); ++i) again.push_back(result.chunk.subspan(i, 1));
  }
  return again;
}

}  // namespace

void RunFleetJobs(const std::vector<TFleetEntry>& entries, const TFleetRequest& request, TFleetDatabase& database,
                  const TConsole& console) {
  std::vector<TFleetEntry> readable;
  for (const TFleetEntry& entry : entries) {
    if (entry.problem.empty()) {
      readable.push_back(entry);
    } else {
      database.Add(RowsOfUnread(entry, entry.problem));
    }
  }
  const std::size_t size = std::clamp<std::size_t>(readable.size() / (request.jobs * kChunksAProcess), 1, kMaxFiles);
  std::deque<TChunk> chunks;
  for (TChunk rest = readable; !rest.empty(); rest = rest.subspan(chunks.back().size())) {
    chunks.push_back(rest.first(std::min(size, rest.size())));
  }
  TJobs jobs(request, std::move(chunks));
  std::size_t done = 0;
  for (TResult result; jobs.Next(result);) {
    const std::vector<TChunk> again = Take(result, database);
    if (again.empty()) done += result.chunk.size();
    jobs.Finish(again);
    if (console.showProgress) console.err(fmt::format("\r{} of {}", done, readable.size()));
  }
  if (console.showProgress) console.err("\r\033[K");
}
