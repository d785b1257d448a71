// Brings the messages of worker threads to the window's thread. Progress is thinned out: of many messages that tell how
// far something is only the latest arrives, at most every few hundredths of a second; an end message arrives at once
// and after all progress. So a fast reader neither floods nor blocks the window.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <mutex>
#include <optional>

#include "base/uMessages.h"

class TPostedMessages : public QObject, private IMessagePort {
  Q_OBJECT

 public:
  // `handle` runs in the thread of this object.
  explicit TPostedMessages(std::function<void(const TMessage&)> handle, QObject* parent = nullptr);
  // What threads post to.
  [[nodiscard]] std::uint64_t Handle() const { return FHandle.Value(); }

  bool event(QEvent* event) override;

 private:
  void Receive(const TMessage& message) noexcept override;
  void Post() noexcept;
  void Deliver();

  std::function<void(const TMessage&)> FDeliver;
  QTimer FPause;  // runs while progress waits
  std::mutex FMutex;
  std::optional<TMessage> FProgress;
  std::optional<TMessage> FEnd;  // a thread posts one, last
  bool FPosted = false;          // an event is on its way, or the pause will look
  TPortHandle FHandle;           // last: from its end on nothing is received
};
