// Posted messages: the one way in which a worker thread talks to the window. A 64-bit handle names a port; a post to a
// handle that names none is dropped. Any thread may post.
#pragma once

#include <cstdint>

struct TMessage {
  std::uint32_t Msg;
  std::uint64_t wParam;
  std::int64_t lParam;
};

// Receives on the posting thread and should return at once: a window queues the message, a test records it.
class IMessagePort {
 public:
  virtual ~IMessagePort() = default;
  virtual void Receive(const TMessage& message) noexcept = 0;
};

// A port's registration under a handle of its own. When the destructor has returned, no Receive runs or comes.
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
