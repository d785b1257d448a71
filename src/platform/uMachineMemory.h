// How much memory this program may use on this machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Bytes that a mission may take now: three quarters of the smallest of the machine's memory, this process's limit and
// the available memory.
std::uint64_t MissionMemoryBytes();

// The available bytes according to the text of /proc/meminfo; nothing if it does not say.
std::optional<std::uint64_t> AvailableMemoryIn(std::string_view meminfo);

// While one exists, a block of 128 KiB or more takes memory only where it is written: for a library that allocates much
// and uses little. One at a time. No effect if the allocator cannot do that.
class TSparseBlocks {
 public:
  TSparseBlocks();
  ~TSparseBlocks();
  TSparseBlocks(const TSparseBlocks&) = delete;
  TSparseBlocks& operator=(const TSparseBlocks&) = delete;
};
