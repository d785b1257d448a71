#include "platform/uTerminal.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>

namespace {

TEST(Terminal, SilentErrorsSilenceTheirOwnThreadOnly) {
  testing::internal::CaptureStderr();
  {
    const TSilentErrors silent;
    std::fputs("lost", stderr);
    std::thread([] { std::fputs("kept ", stderr); }).join();
  }
  std::fprintf(stderr, "%d", 7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "kept 7");
}

}  // namespace
