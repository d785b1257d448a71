// How much memory this program may use on this machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Bytes that a mission may take at this moment: three quarters of the machine's memory, of a limit that was set for
// this process, and of what is available, whichever is the least. The rest stays for everybody else.
std::uint64_t MissionMemoryBytes();

// Bytes that programs can take without swapping, as the text of /proc/meminfo says; nothing when it does not.
std::optional<std::uint64_t> AvailableMemoryIn(std::string_view meminfo);

// While one lives, a block of 128 KiB or more takes memory only where it is used: for a library that asks for much and
// uses little of it. One at a time. Does nothing where the system's allocator cannot do that.
class TSparseBlocks {
 public:
  TSparseBlocks();
  ~TSparseBlocks();
  TSparseBlocks(const TSparseBlocks&) = delete;
  TSparseBlocks& operator=(const TSparseBlocks&) = delete;
};
