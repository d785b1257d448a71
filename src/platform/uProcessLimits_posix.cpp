#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iterator>

#include "platform/uProcessLimits.h"

namespace fs = std::filesystem;

// A signal that is ignored would stay so in programs that are started, one with a handler does not.
void SurviveFileSizeLimit() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  sigaction(SIGXFSZ, &action, nullptr);
}

void RaiseOpenFileLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

std::size_t OpenFilesLeft() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
  std::error_code error;
  const auto open = std::distance(fs::directory_iterator("/dev/fd", error), fs::directory_iterator());
  return limit.rlim_cur - std::min<rlim_t>(limit.rlim_cur, static_cast<rlim_t>(open));
}
