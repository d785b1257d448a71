// What a recording needs after it was read, before anything shows it. Main thread only.
#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <future>
#include <optional>
#include <stop_token>
#include <string>

#include "base/uMessages.h"
#include "base/uProgress.h"
#include "model/uReadFileThread.h"
#include "shell/uShownMission.h"

// How a read of a recording ended.
struct TMissionRead {
  TMessage last{};  // that the reader posted
  TReadExtent extent;
};
// Replaces the model by what the file holds, and waits for it. `posted` gets each message, on the reader's thread.
TMissionRead ReadMission(const std::filesystem::path& file, TReadAhead ahead = TReadAhead::Yes,
                         const std::function<void(const TMessage&)>& posted = {});

// What is wrong with a recording that was read, in words; empty for a whole one.
std::string DamageText(const TReadExtent& extent);

// Completes the model, and fills the display settings in force, the tables with their companions, and the summary, by
// the mission's settings and filter. The progress is that of LoadKorvexFileData, and so is what an exception of it
// leaves behind.
void FillMission(TShownMission& mission, IProgress& progress);

// The shock analysis of the mission, which it lacks until it is asked for; its table shows the rows that the filter
// lets through. An exception of ProcessMessages ends it.
TMissionAnalysis AnalysisOf(const TShownMission& mission, IProgress& progress);

// The same on a thread of its own that only reads the events.
class TAnalysisRun {
 public:
  // Begins. The events must stay as they are until the run is destroyed.
  TAnalysisRun(const TEventList& events, double levelOn);
  // Ends the thread, which finishes the event that it is at.
  ~TAnalysisRun();
  TAnalysisRun(const TAnalysisRun&) = delete;
  TAnalysisRun& operator=(const TAnalysisRun&) = delete;

  // Events so far.
  [[nodiscard]] std::size_t Done() const { return FDone.load(std::memory_order_relaxed); }
  // The result when it is there, and then never again. Throws what ended the thread, such as std::bad_alloc.
  [[nodiscard]] std::optional<TMissionAnalysis> Take();

 private:
  std::atomic<std::size_t> FDone = 0;
  std::stop_source FStop;
  std::future<TMissionAnalysis> FResult;
};
