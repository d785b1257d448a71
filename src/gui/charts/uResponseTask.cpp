#include "gui/charts/uResponseTask.h"

#include <chrono>
#include <thread>
#include <utility>

namespace {

constexpr std::chrono::milliseconds kWait(40);  // shorter than a person notices
constexpr std::chrono::milliseconds kBetweenPolls(20);

bool IsReady(const std::future<TShockResponse>& result) {
  return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace

struct TResponseTask::TRun {
  std::vector<const TEvent*> events;
  TResponseRequest request;
  TFinished finished;
  std::stop_source stop;
  TResponseProgress progress{stop.get_token()};
  std::future<TShockResponse> result;
};

TResponseTask::TResponseTask(QObject* parent) : QObject(parent) {
  connect(&FPoll, &QTimer::timeout, this, &TResponseTask::Poll);
}

TResponseTask::~TResponseTask() {
  Stop();
}

void TResponseTask::Start(std::vector<const TEvent*> events, const TResponseRequest& request, TFinished finished) {
  Drop();
  FRun = std::make_unique<TRun>();
  FRun->events = std::move(events);
  FRun->request = request;
  FRun->finished = std::move(finished);
  FRun->result = std::async(std::launch::async, [run = FRun.get()] {
    return CalcShockResponse(run->events, run->request, std::thread::hardware_concurrency(), run->progress);
  });
  if (FRun->result.wait_for(kWait) == std::future_status::ready) return Finish();
  emit Progressed(FRun->progress.events, FRun->events.size());
  FPoll.start(kBetweenPolls);
}

// Fitting the times of a very long event cannot be stopped, and nobody waits for it.
void TResponseTask::Drop() {
  FPoll.stop();
  std::erase_if(FDropped, [](const auto& run) { return IsReady(run->result); });
  if (FRun == nullptr) return;
  FRun->stop.request_stop();
  FDropped.push_back(std::move(FRun));
}

void TResponseTask::Stop() {
  Drop();
  for (const auto& run : FDropped) run->result.wait();
  FDropped.clear();
}

void TResponseTask::Poll() {
  if (IsReady(FRun->result)) return Finish();
  emit Progressed(FRun->progress.events, FRun->events.size());
}

void TResponseTask::Finish() {
  FPoll.stop();
  const std::unique_ptr<TRun> run = std::move(FRun);
  run->finished(run->result.get());
}
