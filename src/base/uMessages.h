// Posted messages: how a worker thread talks to the window. A 64-bit handle names a port; a message to an unknown
// handle is dropped. Any thread may post.
#pragma once

#include <cstdint>

struct TMessage {
  std::uint32_t Msg;
  std::uint64_t wParam;
  std::int64_t lParam;
};

// Receive runs on the posting thread and should return at once: a window queues the message, a test records it.
class IMessagePort {
 public:
  virtual ~IMessagePort() = default;
  virtual void Receive(const TMessage& message) noexcept = 0;
};

// Registers a port under a new handle. After the destructor has returned, no Receive runs any more.
class TPortHandle {
 public:
  explicit TPortHandle(IMessagePort& port);
  ~TPortHandle();
  TPortHandle(const TPortHandle&) = delete;
  TPortHandle& operator=(const TPortHandle&) = delete;

  [[nodiscard]] std::uint64_t Value() const { return FHandle; }

 private:
  std::uint64_t FHandle;
};

void PostToPort(std::uint64_t handle, const TMessage& message);
