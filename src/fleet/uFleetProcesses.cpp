#include "fleet/uFleetProcesses.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <future>
#include <mutex>
#include <random>
#include <system_error>

#include "base/uFiles.h"
#include "platform/uProcess.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFolderPrefix = "kshock-fleet-";
using TChunk = std::span<const TFleetEntry>;

// A run that lives changes its own with every chunk.
void RemoveAbandonedFolders() {
  std::error_code error;
  const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (fs::directory_iterator item(fs::temp_directory_path(), error), end; !error && item != end;
       item.increment(error)) {
    std::error_code unknown;
    if (!Utf8FromPath(item->path().filename()).starts_with(kFolderPrefix)) continue;
    const auto changed = fs::last_write_time(item->path(), unknown);
    if (!unknown && changed < yesterday) fs::remove_all(item->path(), unknown);
  }
}

// Threads that each run one process after the other.
class TReaders {
 public:
  TReaders(const TFleetWork& work, TChunk files, const TFleetScratch& scratch, const TFleetPartReady& ready)
      : FWork(work), FScratch(scratch), FReady(ready), FRest(files) {}

  void Run() {
    std::vector<std::future<void>> readers;
    for (std::size_t i = 0; i < FWork.processes; ++i) {
      readers.push_back(std::async(std::launch::async, [this] { ReadChunks(); }));
    }
    for (std::future<void>& reader : readers) reader.wait();
    for (std::future<void>& reader : readers) reader.get();
  }

 private:
  void ReadChunks() try {
    std::size_t size = FWork.firstChunk;
    for (TChunk chunk = Next(size); !chunk.empty(); chunk = Next(size)) {
      const auto started = std::chrono::steady_clock::now();
      const fs::path part = Read(chunk);
      if (part.empty() && FWork.stop.stop_requested()) return;
      const auto took = std::chrono::steady_clock::now() - started;
      if (took > FWork.chunkTime) size = std::max<std::size_t>(1, size / 2);
      if (took < FWork.chunkTime / 2) size = std::min(2 * size, FWork.maxChunk);
      if (part.empty() && chunk.size() > 1) {
        TryAgain(chunk);
      } else if (!FReady(chunk, part)) {
        End();
      }
    }
  } catch (...) {
    End();
    throw;
  }

  // Empty when nothing is left.
  TChunk Next(std::size_t size) {
    const std::lock_guard lock(FMutex);
    if (FWork.stop.stop_requested()) return {};
    TChunk chunk = FRest.first(std::min(size, FRest.size()));
    FRest = FRest.subspan(chunk.size());
    if (chunk.empty() && !FAgain.empty()) {
      chunk = FAgain.front();
      FAgain.pop_front();
    }
    return chunk;
  }

  void TryAgain(TChunk chunk) {
    const std::lock_guard lock(FMutex);
    for (std::size_t i = 0; i < chunk.size(); ++i) FAgain.push_back(chunk.subspan(i, 1));
  }

  void End() {
    const std::lock_guard lock(FMutex);
    FRest = {};
    FAgain.clear();
  }

  // The part, or nothing where the process ended early.
  fs::path Read(TChunk chunk) {
    std::string names;
    for (const TFleetEntry& entry : chunk) names += Utf8FromPath(entry.path) + '\0';
    const std::size_t number = FNumber++;
    const fs::path list = FScratch.File(number, ".txt");
    fs::path part = FScratch.File(number, ".sqlite");
    SaveFile(list, names);
    std::vector<std::string> arguments = {"fleet", "--files-from", Utf8FromPath(list),
                                          "-0",    "--to",         Utf8FromPath(part)};
    arguments.insert(arguments.end(), FWork.options.begin(), FWork.options.end());
    const int status = RunProgram(FWork.kshock, arguments, FWork.stop);
    std::error_code error;
    return status == 0 && fs::exists(part, error) ? part : fs::path();
  }

  const TFleetWork& FWork;
  const TFleetScratch& FScratch;
  const TFleetPartReady& FReady;
  std::atomic<std::size_t> FNumber = 0;  // of the next list and part
  std::mutex FMutex;                     // guards what follows
  TChunk FRest;                          // that nobody reads yet
  std::deque<TChunk> FAgain;             // files whose process ended early
};

}  // namespace

TFleetScratch::TFleetScratch() {
  RemoveAbandonedFolders();
  std::random_device random;
  do {
    FPath = fs::temp_directory_path() / fmt::format("{}{:08x}{:08x}", kFolderPrefix, random(), random());
  } while (!fs::create_directory(FPath));
  fs::permissions(FPath, fs::perms::owner_all);
}

TFleetScratch::~TFleetScratch() {
  std::error_code error;
  fs::remove_all(FPath, error);
}

fs::path TFleetScratch::File(std::size_t number, std::string_view ending) const {
  return FPath / fmt::format("{}{}", number, ending);
}

void ReadInProcesses(const TFleetWork& work, std::span<const TFleetEntry> files, const TFleetScratch& scratch,
                     const TFleetPartReady& ready) {
  TReaders(work, files, scratch, ready).Run();
}
