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
  std::exception_ptr wanted;
  std::future_status status{};
  do {
    status = done.wait_for(kBetweenMessages);
    try {
      progress.ProcessMessages();
    } catch (...) {
      wanted = std::current_exception();
      stop.request_stop();
    }
  } while (status != std::future_status::ready);
  if (wanted) std::rethrow_exception(wanted);
  done.get();
}
