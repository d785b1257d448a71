#include "gui/charts/uResponseTask.h"

#include <chrono>
#include <thread>
#include <utility>

namespace {

constexpr std::chrono::milliseconds kWait(40);  // shorter than a person notices
constexpr std::chrono::milliseconds kBetweenPolls(20);

bool IsReady(const std::future<std::vector<TShockResponse>>& results) {
  return results.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace

struct TResponseTask::TRun {
  std::vector<TResponseJob> jobs;
  std::size_t count = 0;  // of the events of all
  TFinished finished;
  std::stop_source stop;
  TResponseProgress progress{stop.get_token()};
  std::future<std::vector<TShockResponse>> results;
};

TResponseTask::TResponseTask(QObject* parent) : QObject(parent) {
  connect(&FPoll, &QTimer::timeout, this, &TResponseTask::Poll);
}

TResponseTask::~TResponseTask() {
  Stop();
}

void TResponseTask::Start(std::vector<TResponseJob> jobs, TFinished finished) {
  Drop();
  FRun = std::make_unique<TRun>();
  FRun->jobs = std::move(jobs);
  for (const TResponseJob& job : FRun->jobs) FRun->count += job.events.size();
  FRun->finished = std::move(finished);
  FRun->results = std::async(std::launch::async, [run = FRun.get()] {
    std::vector<TShockResponse> results;
    for (const auto& [events, request, pinned] : run->jobs) {
      if (run->stop.stop_requested()) break;
      results.push_back(CalcShockResponse(events, request, std::thread::hardware_concurrency(), run->progress));
    }
    return results;
  });
  if (FRun->results.wait_for(kWait) == std::future_status::ready) return Finish();
  emit Progressed(FRun->progress.events, FRun->count);
  FPoll.start(kBetweenPolls);
}

// Fitting the times of a very long event cannot be stopped, and nobody waits for it.
void TResponseTask::Drop() {
  FPoll.stop();
  std::erase_if(FDropped, [](const auto& run) { return IsReady(run->results); });
  if (FRun == nullptr) return;
  FRun->stop.request_stop();
  FDropped.push_back(std::move(FRun));
}

void TResponseTask::Stop() {
  Drop();
  for (const auto& run : FDropped) run->results.wait();
  FDropped.clear();
}

void TResponseTask::Poll() {
  if (IsReady(FRun->results)) return Finish();
  emit Progressed(FRun->progress.events, FRun->count);
}

void TResponseTask::Finish() {
  FPoll.stop();
  const std::unique_ptr<TRun> run = std::move(FRun);
  run->finished(run->results.get());
}
