#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

#include "base/uText.h"
#include "platform/uMachineMemory.h"

namespace {

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();
constexpr int kLargeStep = 32 * 1024 * 1024;

// The number in a file; no limit when there is no such file or it says "max".
std::uint64_t LimitIn(const std::filesystem::path& file) {
  std::uint64_t limit = kNoLimit;
  std::ifstream(file) >> limit;
  return limit == 0 ? kNoLimit : limit;
}

// The minimum limit of the process's control group and its parents.
std::uint64_t GroupLimit() {
  std::uint64_t limit = LimitIn("/sys/fs/cgroup/memory/memory.limit_in_bytes");
  std::ifstream groups("/proc/self/cgroup");
  for (std::string line; std::getline(groups, line);) {
    if (!line.starts_with("0::/")) continue;
    std::filesystem::path group = "/sys/fs/cgroup" + line.substr(3);
    for (; group.string().size() >= std::string_view("/sys/fs/cgroup").size(); group = group.parent_path()) {
      limit = std::min(limit, LimitIn(group / "memory.max"));
    }
  }
  return limit;
}

std::uint64_t AddressSpaceLimit() {
  rlimit limit{};
  return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY ? limit.rlim_cur : kNoLimit;
}

std::uint64_t Available() {
  std::ifstream file("/proc/meminfo");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  return AvailableMemoryIn(text).value_or(kNoLimit);
}

}  // namespace

std::optional<std::uint64_t> AvailableMemoryIn(std::string_view meminfo) {
  constexpr std::string_view kName = "MemAvailable:";
  while (!meminfo.empty()) {
    std::string_view line = TakeUntil(meminfo, "\n");
    if (!line.starts_with(kName)) continue;
    line.remove_prefix(std::min(line.find_first_not_of(' ', kName.size()), line.size()));
    const auto kibibytes = NumberIn<std::uint64_t>(TakeUntil(line, " "));
    return kibibytes && line == "kB" ? std::optional(*kibibytes * 1024) : std::nullopt;
  }
  return std::nullopt;
}

std::uint64_t MissionMemoryBytes() {
  const auto installed =
      static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::uint64_t>(sysconf(_SC_PAGE_SIZE));
  return std::min({installed, AddressSpaceLimit(), GroupLimit(), Available()}) / 4 * 3;
}

#ifdef M_MMAP_THRESHOLD
void TakeMemoryInLargeSteps() {
  mallopt(M_TOP_PAD, kLargeStep);
  mallopt(M_MMAP_THRESHOLD, kLargeStep);  // a smaller block would take new pages each time
}

// Blocks from the threshold on are mapped and cost nothing until they are used; smaller ones are cleared on the heap.
// Unless it is set, the allocator raises the threshold up to 32 MiB as blocks are freed.
TSparseBlocks::TSparseBlocks() {
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

TSparseBlocks::~TSparseBlocks() {
  mallopt(M_MMAP_THRESHOLD, kLargeStep);
}
#else
void TakeMemoryInLargeSteps() {}
TSparseBlocks::TSparseBlocks() = default;
TSparseBlocks::~TSparseBlocks() = default;
#endif
