#include "base/uBackground.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace {

// Holds the work up until messages were processed three times; the first of them throws.
struct TImpatient final : IProgress {
  void SetStatus(std::string_view) override {}
  void SetPosition(double) override {}
  void ProcessMessages() override {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    if (++calls == 1) throw std::runtime_error("cancelled");
  }
  void WaitForThree() const {
    while (calls < 3) std::this_thread::yield();
  }
  std::thread::id caller = std::this_thread::get_id();
  std::atomic<int> calls = 0;
};

TEST(RunInBackground, CancelStopsTheWorkAndWaitsForIt) {
  TImpatient progress;
  bool done = false;
  const auto work = [&](const std::stop_token& stop) {
    EXPECT_NE(std::this_thread::get_id(), progress.caller);
    progress.WaitForThree();
    done = stop.stop_requested();
  };
  EXPECT_THROW(RunInBackground(work, progress), std::runtime_error);
  EXPECT_TRUE(done);
}

TEST(RunInBackground, AnExceptionOfTheWorkReachesTheCaller) {
  TNoProgress progress;
  EXPECT_THROW(RunInBackground([](const std::stop_token&) { throw std::invalid_argument("work"); }, progress),
               std::invalid_argument);
}

}  // namespace
