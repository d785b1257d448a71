#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>

#include "platform/uMachineMemory.h"

namespace {

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

// A control group's limit; its file holds a number, or the word "max".
std::uint64_t GroupLimit(const char* path) {
  std::uint64_t limit = kNoLimit;
  std::ifstream(path) >> limit;
  return limit == 0 ? kNoLimit : limit;
}

std::uint64_t AddressSpaceLimit() {
  rlimit limit{};
  return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY ? limit.rlim_cur : kNoLimit;
}

}  // namespace

std::uint64_t MachineMemoryBytes() {
  const auto installed =
      static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::uint64_t>(sysconf(_SC_PAGE_SIZE));
  return std::min({installed, AddressSpaceLimit(), GroupLimit("/sys/fs/cgroup/memory.max"),
                   GroupLimit("/sys/fs/cgroup/memory/memory.limit_in_bytes")});
}
