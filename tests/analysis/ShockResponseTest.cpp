#include "analysis/uShockResponse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

struct TShape {
  int before = 10, after = 60;  // samples
  double ceiling = 1000;        // g, where the sensor ends
  double jitter = 0;            // steps
};

// A half-sine of 50 g and 11 ms on x, 1 g on z.
TEvent EventOf(int id, const TShape& shape) {
  TEvent event(id);
  for (int i = -shape.before; i < 18 + shape.after; ++i) {
    const double ms = i / 1.6;
    const double g = i >= 0 && i < 18 ? std::min(shape.ceiling, 50 * std::sin(std::numbers::pi * ms / 11)) : 0;
    event.AddValues(1000 + ms + shape.jitter * (i & 1) / 1.6, static_cast<float>(g), 0, 1);
  }
  return event;
}

// Of an event of each shape.
TShockResponse Calc(const std::vector<TShape>& shapes, std::size_t threads, std::vector<double> hertz = {}) {
  TResponseRequest request;
  request.frequencies = std::move(hertz);
  std::vector<TEvent> events;
  for (const TShape& shape : shapes) events.push_back(EventOf(static_cast<int>(events.size()), shape));
  std::vector<const TEvent*> borrowed;
  for (const TEvent& event : events) borrowed.push_back(&event);
  request.levelOn = 3;
  TResponseProgress progress;
  TShockResponse response = CalcShockResponse(borrowed, request, threads, progress);
  EXPECT_EQ(progress.events.load(), events.size());
  return response;
}

TEST(ShockResponse, OfOneEventSaysWhatLimitsItsUse) {
  const TShockResponse good = Calc({TShape()}, 1);
  EXPECT_THAT(good.remarks, IsEmpty());
  EXPECT_EQ(good.baseline, "mean of 11 samples before the shock subtracted");
  EXPECT_NEAR(good.lines.front().hertz, 1600 / 87.0, 1600 / 87.0 * 0.06) << "1/duration";
  EXPECT_LT(good.lines.front().z, 1e-9) << "gravity was before the shock, too";
  const std::pair<TShape, const char*> doubts[] = {
      {{.before = 6}, "no baseline subtracted, fewer than 8 samples before the shock"},
      {{.after = -9}, "the record ends before the shock does"},
      {{.ceiling = 40}, "the sensor was at the end of its range"},
      {{.jitter = 0.2}, "times off the grid by up to 0.1"}};
  for (const auto& [shape, words] : doubts) {
    EXPECT_THAT(Calc({shape}, 1).remarks, ElementsAre(StartsWith(words))) << words;
  }
  EXPECT_THAT(Calc({TShape()}, 1, {5, 100}).remarks, ElementsAre(StartsWith("below 18.391 Hz")));
  const TShockResponse none = Calc({{.jitter = 2}}, 1);
  EXPECT_THAT(none.lines, IsEmpty());
  EXPECT_EQ(none.reason, "0: The times of the samples repeat or go back.");
}

TEST(ShockResponse, TheEnvelopeCountsDoubtsAndDoesNotDependOnTheNumberOfThreads) {
  const std::vector<TShape> events = {{}, {.jitter = 2}, {.ceiling = 20}, {.before = 0, .after = -9}, {}};
  const TShockResponse alone = Calc(events, 1);
  EXPECT_THAT(alone.remarks,
              ElementsAre("1 of 5 events left out; event 1: The times of the samples repeat or go back.",
                          StartsWith("1 of 5 events: no baseline"), StartsWith("1 of 5 events: the record ends"),
                          StartsWith("1 of 5 events: the sensor")));
  EXPECT_EQ(alone.baseline, "");
  for (const std::size_t threads : {2, 3, 16}) {
    const TShockResponse shared = Calc(events, threads);
    EXPECT_EQ(shared.remarks, alone.remarks);
    ASSERT_EQ(shared.lines.size(), alone.lines.size());
    for (std::size_t i = 0; i < alone.lines.size(); ++i) {
      EXPECT_EQ(shared.lines[i].x, alone.lines[i].x) << threads;
      EXPECT_EQ(shared.lines[i].total, alone.lines[i].total) << threads;
    }
  }
  const TShockResponse first = Calc({TShape()}, 1, {100});
  const TShockResponse all = Calc(events, 2, {100});
  EXPECT_GE(all.lines[0].x, first.lines[0].x);
  EXPECT_THAT(Calc({}, 2).lines, IsEmpty());
}

TEST(ShockResponse, AsksForFrequenciesThatTheSamplesAllow) {
  const TShockResponse none = Calc({TShape()}, 1, {500, 900});
  EXPECT_EQ(none.reason,
            "0: None of the frequencies lies between a millionth and a quarter of the sampling rate of 1600 Hz.");
  const TShockResponse some = Calc({TShape()}, 1, {160, 320, 640});
  std::vector<TResponseRange> ranges;
  for (const TResponseLine& line : some.lines) ranges.push_back(line.range);
  using enum TResponseRange;
  EXPECT_THAT(ranges, ElementsAre(Valid, Rough, None));
  EXPECT_TRUE(std::isnan(some.lines[2].total));
}

}  // namespace
