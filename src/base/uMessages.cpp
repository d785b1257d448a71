#include "base/uMessages.h"

#include <mutex>
#include <unordered_map>

namespace {

struct TPorts {
  std::mutex mutex;
  std::uint64_t lastHandle = 0;
  std::unordered_map<std::uint64_t, IMessagePort*> byHandle;
};

TPorts& Ports() {
  static TPorts ports;
  return ports;
}

}  // namespace

TPortHandle::TPortHandle(IMessagePort& port) {
  const std::lock_guard lock(Ports().mutex);
  FHandle = ++Ports().lastHandle;
  Ports().byHandle.emplace(FHandle, &port);
}

TPortHandle::~TPortHandle() {
  const std::lock_guard lock(Ports().mutex);
  Ports().byHandle.erase(FHandle);
}

void PostToPort(std::uint64_t handle, const TMessage& message) {
  // The lock is held while the port receives, so a port never goes away under a message.
  const std::lock_guard lock(Ports().mutex);
  const auto found = Ports().byHandle.find(handle);
  if (found != Ports().byHandle.end()) found->second->Receive(message);
}
