// How much memory this program may use on this machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Bytes that a mission may take now: three quarters of the minimum of installed memory, available memory and the limits
// of this process.
std::uint64_t MissionMemoryBytes();

// POSIX only: the available memory in bytes from the text of /proc/meminfo; no value when it is missing or malformed.
std::optional<std::uint64_t> AvailableMemoryIn(std::string_view meminfo);

// While one lives, an allocation of 128 KiB or more takes memory only for the pages that are used: for a library that
// allocates much and uses little. One at a time. Does nothing where the allocator cannot do that.
class TSparseBlocks {
 public:
  TSparseBlocks();
  ~TSparseBlocks();
  TSparseBlocks(const TSparseBlocks&) = delete;
  TSparseBlocks& operator=(const TSparseBlocks&) = delete;
};
