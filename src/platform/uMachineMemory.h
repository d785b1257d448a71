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

// Takes memory from the system in larger steps and keeps up to one of them when it is freed, so that the pages of a
// recording serve the next one too. Called once, at the start. Does nothing where the allocator cannot do that.
void TakeMemoryInLargeSteps();

// While one lives, an allocation of 128 KiB or more takes memory only for the pages that are used: for a library that
// allocates much and uses little. One at a time. Does nothing where the allocator cannot do that.
class TSparseBlocks {
 public:
  TSparseBlocks();
  ~TSparseBlocks();
  TSparseBlocks(const TSparseBlocks&) = delete;
  TSparseBlocks& operator=(const TSparseBlocks&) = delete;
};
