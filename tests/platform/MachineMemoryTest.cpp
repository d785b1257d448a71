#include "platform/uMachineMemory.h"

#include <gtest/gtest.h>

namespace {

TEST(MachineMemory, WhatIsAvailableIsReadFromItsLine) {
  EXPECT_EQ(
      AvailableMemoryIn("MemTotal:       24684100 kB\nMemFree:  7 kB\nMemAvailable:   23506532 kB\nBuffers: 9 kB\n"),
      24070688768U);
  EXPECT_EQ(AvailableMemoryIn("MemAvailable: 0 kB"), 0U);
  for (const char* none : {"", "MemFree: 7 kB\n", "MemAvailable:", "MemAvailable: x kB\n", "MemAvailable: 7 MB\n",
                           "HugeMemAvailable: 7 kB\n", "MemAvailable: -7 kB\n"}) {
    EXPECT_EQ(AvailableMemoryIn(none), std::nullopt) << none;
  }
}

TEST(MachineMemory, AMissionMayTakeSomeOfItButNotAll) {
  EXPECT_GT(MissionMemoryBytes(), 1'000'000U);
  EXPECT_LT(MissionMemoryBytes(), 1ULL << 50) << "there is a limit";
}

}  // namespace
