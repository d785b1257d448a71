// The shock analysis of a mission, computed on a thread of its own that only reads the events. Main thread only.
#pragma once

#include <atomic>
#include <cstddef>
#include <future>
#include <optional>
#include <stop_token>

#include "analysis/uAnalysisTable.h"
#include "model/uEvents.h"

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
