#include "gui/common/uBackgroundTask.h"

#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace {

constexpr int kMaxThreads = 4;

}  // namespace

// Outlives its owner for as long as a thread needs it.
struct TBackgroundTask::TShared {
  std::mutex Mutex;
  TBackgroundTask* Owner;  // null after its destruction
  quint64 Number = 0;      // of the latest work; changed only in the main thread
  int Threads = 0;
  TWork Waiting;  // the latest work, if too many hang
};

TBackgroundTask::TBackgroundTask(QObject* parent) : QObject(parent), FShared(std::make_shared<TShared>()) {
  FShared->Owner = this;
}

TBackgroundTask::~TBackgroundTask() {
  Cancel();
  const std::lock_guard lock(FShared->Mutex);
  FShared->Owner = nullptr;
}

void TBackgroundTask::Cancel() {
  const std::lock_guard lock(FShared->Mutex);
  ++FShared->Number;
  FShared->Waiting = {};
}

bool TBackgroundTask::Start(TWork work) {
  Cancel();
  const std::lock_guard lock(FShared->Mutex);
  if (FShared->Threads == kMaxThreads) {
    FShared->Waiting = std::move(work);
    return true;
  }
  try {
    std::thread([shared = FShared, work = std::move(work), number = FShared->Number]() mutable {
      Run(shared, std::move(work), number);
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  ++FShared->Threads;
  return true;
}

void TBackgroundTask::Run(const std::shared_ptr<TShared>& shared, TWork work, quint64 number) {
  const TReport report = [&shared, &number](std::function<void()> answer) {
    const std::lock_guard lock(shared->Mutex);
    if (shared->Owner == nullptr || shared->Number != number) return false;
    // The lock keeps the owner alive while posting; other work may replace this one before the function runs.
    const auto unlessReplaced = [shared, number, answer = std::move(answer)] {
      if (shared->Number == number) answer();
    };
    return QMetaObject::invokeMethod(shared->Owner, unlessReplaced, Qt::QueuedConnection);
  };
  while (work) {
    try {
      work(report);
    } catch (const std::exception&) {  // no memory for an answer
    }
    const std::lock_guard lock(shared->Mutex);
    work = std::exchange(shared->Waiting, {});
    number = shared->Number;
    if (!work) --shared->Threads;
  }
}
