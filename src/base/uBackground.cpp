#include "base/uBackground.h"

#include <chrono>
#include <exception>
#include <future>

namespace {

constexpr std::chrono::milliseconds kBetweenMessages(20);

}  // namespace

void RunInBackground(const std::function<void(const std::stop_token&)>& work, IProgress& progress) {
  std::stop_source stop;
  std::future<void> done = std::async(std::launch::async, work, stop.get_token());
  std::exception_ptr cancel;
  std::future_status status{};
  do {
    status = done.wait_for(kBetweenMessages);
    try {
      progress.ProcessMessages();
    } catch (...) {
      cancel = std::current_exception();
      stop.request_stop();
    }
  } while (status != std::future_status::ready);
  if (cancel) std::rethrow_exception(cancel);
  done.get();
}
