#include "base/uBeside.h"

#include <chrono>
#include <exception>
#include <future>

namespace {

constexpr std::chrono::milliseconds kBetweenMessages(20);

}  // namespace

void RunBeside(const std::function<void()>& work, IProgress& progress) {
  std::future<void> done = std::async(std::launch::async, work);
  std::exception_ptr wanted;
  while (done.wait_for(kBetweenMessages) != std::future_status::ready) {
    try {
      progress.ProcessMessages();
    } catch (...) {
      wanted = std::current_exception();
    }
  }
  if (wanted) std::rethrow_exception(wanted);
  done.get();
}
