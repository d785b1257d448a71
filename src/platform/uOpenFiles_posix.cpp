#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "platform/uOpenFiles.h"

namespace fs = std::filesystem;

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
