// Calculates a response spectrum on other threads while the window lives. Main thread only.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <future>
#include <memory>
#include <stop_token>
#include <vector>

#include "analysis/uPinnedEvents.h"
#include "analysis/uShockResponse.h"

// What one result is made of. Borrowed events must live until it is there, or until Stop.
struct TResponseJob {
  std::vector<const TEvent*> events;
  TResponseRequest request;
  std::shared_ptr<const TPinnedEvent> pinned;  // owns the event; without it the events are borrowed
};

class TResponseTask : public QObject {
  Q_OBJECT

 public:
  using TFinished = std::function<void(std::vector<TShockResponse>)>;

  explicit TResponseTask(QObject* parent);
  ~TResponseTask() override;

  // Drops what runs. `finished` gets a result for each job; it is called before this returns where the calculation
  // takes some milliseconds, else from the event loop. The events are borrowed until Stop.
  void Start(std::vector<TResponseJob> jobs, TFinished finished);
  // What runs ends soon, and `finished` is not called.
  void Drop();
  // The same, and waits: nothing uses the events afterwards.
  void Stop();
  [[nodiscard]] bool IsRunning() const { return FRun != nullptr; }

 signals:
  // While the event loop waits for a calculation: how many events are done.
  void Progressed(std::size_t done, std::size_t count);

 private:
  struct TRun;
  void Poll();
  void Finish();

  std::unique_ptr<TRun> FRun;
  std::vector<std::unique_ptr<TRun>> FDropped;  // those that have not ended yet
  QTimer FPoll;
};
