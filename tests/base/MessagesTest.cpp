#include "base/uMessages.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

namespace {

class TCountingPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override { Sum += message.lParam; }
  std::int64_t Sum = 0;  // no atomic: posts must not overlap
};

TEST(Messages, PortsGetTheirOwnMessagesWhileTheyAreOpen) {
  TCountingPort port;
  TCountingPort other;
  const TPortHandle otherHandle(other);
  std::uint64_t closed = 0;
  {
    const TPortHandle handle(port);
    closed = handle.Value();
    std::thread first([&] {
      for (int i = 0; i < 1000; ++i) PostToPort(closed, {1025, 11, 1});
    });
    std::thread second([&] {
      for (int i = 0; i < 1000; ++i) PostToPort(closed, {1025, 11, 1});
    });
    first.join();
    second.join();
  }
  PostToPort(closed, {1025, 11, 1});
  PostToPort(0, {1025, 11, 1});
  EXPECT_EQ(port.Sum, 2000);
  EXPECT_EQ(other.Sum, 0);
}

TEST(Messages, NothingIsReceivedAfterThePortIsClosed) {
  auto port = std::make_unique<TCountingPort>();
  auto handle = std::make_unique<TPortHandle>(*port);
  std::atomic<bool> stop = false;
  std::thread poster([&stop, value = handle->Value()] {
    while (!stop) PostToPort(value, {1025, 11, 1});
  });
  handle.reset();
  port.reset();  // a late Receive would touch freed memory
  stop = true;
  poster.join();
}

}  // namespace
