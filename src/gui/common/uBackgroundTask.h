// Work that may hang, such as a question to a dead network drive, on a thread of its own: it holds up that thread and
// not the window. Nobody waits for it, not even the end of the program; it holds on to nothing of it. Main thread only.
#pragma once

#include <QObject>
#include <functional>
#include <memory>

class TBackgroundTask : public QObject {
 public:
  // Has something done in the main thread. False when nobody waits for that any more: the work should end.
  using TReport = std::function<bool(std::function<void()>)>;
  // Runs on the thread. It owns all that it uses. Work that throws reports no more.
  using TWork = std::function<void(const TReport&)>;

  explicit TBackgroundTask(QObject* parent);
  ~TBackgroundTask() override;

  // Replaces the work before: what that still has to report is dropped. While several works hang, the latest waits for
  // one of them. False when there is no thread to be had.
  [[nodiscard]] bool Start(TWork work);
  // Drops what the work still has to report.
  void Cancel();

 private:
  struct TShared;
  static void Run(const std::shared_ptr<TShared>& shared, TWork work, quint64 number);

  std::shared_ptr<TShared> FShared;
};
