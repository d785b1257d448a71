// How much memory this program may use on this machine.
#pragma once

#include <cstdint>

// Bytes: the machine's memory or, where it is smaller, the limit that was set for this process.
std::uint64_t MachineMemoryBytes();
