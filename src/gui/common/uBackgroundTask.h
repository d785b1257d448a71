// Runs work that may hang, such as reading a dead network drive, on its own thread. Nobody waits for the thread, not
// even the end of the program, so the work must not use anything of the program. Main thread only.
#pragma once

#include <QObject>
#include <functional>
#include <memory>

class TBackgroundTask : public QObject {
 public:
  // Runs a function in the main thread. False if the work was replaced or cancelled: it should end.
  using TReport = std::function<bool(std::function<void()>)>;
  // Runs on the thread and owns all that it uses. Work that throws reports nothing more.
  using TWork = std::function<void(const TReport&)>;

  explicit TBackgroundTask(QObject* parent);
  ~TBackgroundTask() override;

  // Replaces the earlier work and drops its pending reports. If too many threads hang, the latest work waits for one of
  // them. False if no thread can be started.
  [[nodiscard]] bool Start(TWork work);
  // Drops the pending reports of the work.
  void Cancel();

 private:
  struct TShared;
  static void Run(const std::shared_ptr<TShared>& shared, TWork work, quint64 number);

  std::shared_ptr<TShared> FShared;
};
