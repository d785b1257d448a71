#include "shell/uAnalysisRun.h"

#include <chrono>

namespace {

struct TStopped {};

}  // namespace

TAnalysisRun::TAnalysisRun(const TEventList& events, double levelOn)
    : FResult(std::async(std::launch::async, [this, &events, levelOn, stop = FStop.get_token()] {
        return AnalyseMission(events, levelOn, [this, &stop](std::size_t done) {
          if (stop.stop_requested()) throw TStopped();
          FDone.store(done, std::memory_order_relaxed);
        });
      })) {}

TAnalysisRun::~TAnalysisRun() {
  FStop.request_stop();
  if (FResult.valid()) FResult.wait();
}

std::optional<TMissionAnalysis> TAnalysisRun::Take() {
  if (!FResult.valid() || FResult.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return std::nullopt;
  return FResult.get();
}
