#include <windows.h>

#include <algorithm>

#include "platform/uMachineMemory.h"

std::uint64_t MissionMemoryBytes() {
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof memory;
  if (GlobalMemoryStatusEx(&memory) == 0) return 0;
  return std::min({memory.ullTotalPhys, memory.ullAvailPhys, memory.ullAvailPageFile, memory.ullAvailVirtual}) / 4 * 3;
}

void TakeMemoryInLargeSteps() {}

TSparseBlocks::TSparseBlocks() = default;
TSparseBlocks::~TSparseBlocks() = default;
