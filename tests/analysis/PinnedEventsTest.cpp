// Pinned events: copies, and where they stand beside another event.
#include "analysis/uPinnedEvents.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kNoTime = std::numeric_limits<double>::quiet_NaN();

// 0 but for a half-sine of 20 g and 30 ms that begins `lead` ms after the start, sampled every `step` ms.
TEvent Pulse(double start, double lead, double step, double duration, float height = 20) {
  TEvent event(7);
  for (double ms = 0; ms <= duration; ms += step) {
    const double place = (ms - lead) / 30;
    const double g = place > 0 && place < 1 ? height * std::sin(place * 3.14159265358979) : 0;
    event.AddValues(start + ms, 0, static_cast<float>(g), 0);
  }
  return event;
}

constexpr TThresholds kLevels{5, 4, 1};

TShift Shift(const TEvent& shown, const TEvent& other, TAlignment alignment) {
  return ShiftBetween(shown, kLevels, CopyOfEvent(other, kLevels, 45000, "/drop.kshock"), alignment);
}

TEST(PinnedEvents, ACopyHasWhatTheEventHadAndNamesItsRecording) {
  const TPinnedEvent pinned = CopyOfEvent(Pulse(5000, 40, 1, 200), kLevels, 45000, "/a folder/dr\nop.kshock");
  EXPECT_EQ(pinned.event.Count(), 201U);
  EXPECT_EQ(pinned.event.Max, 20);
  EXPECT_EQ(pinned.event.MaxAxis, "Y-pos");
  EXPECT_EQ(pinned.event.GetItem(55).time, 5055);
  EXPECT_NEAR(pinned.metrics.totTotal, 25, 1);  // 20·sin(πt/30) is above 5 g for 25 ms
  EXPECT_EQ(PinName(pinned).find('\n'), std::string::npos);
  EXPECT_EQ(PinName(CopyOfEvent(TEvent(3), kLevels, 0, "/a/drop.kshock")), "3 (drop)");
}

TEST(PinnedEvents, EventsOfOtherRatesAndLengthsAreAlignedAtWhatWasChosen) {
  const TEvent shown = Pulse(1000, 100, 1, 400);
  const TEvent other = Pulse(90000, 30, 0.25, 150);
  EXPECT_EQ(Shift(shown, other, TAlignment::Start).ms, 0);
  EXPECT_EQ(Shift(shown, other, TAlignment::Peak).ms, 70);
  EXPECT_NEAR(Shift(shown, other, TAlignment::SwitchOn).ms, 70, 1);
  const TShift best = Shift(shown, other, TAlignment::Correlation);
  EXPECT_NEAR(best.ms, 70, 0.2);
  // The pulses are equal, their shares of the events are not: 5026/√(5635·5025) with ∑g² = 6000, ∑g = 382.
  EXPECT_NEAR(best.correlation, 0.944, 0.01);
  // The other way round it moves back by as much.
  EXPECT_NEAR(Shift(other, shown, TAlignment::Correlation).ms, -70, 0.2);
  // 1,000,001 samples: to a 4,095th of 10 s.
  EXPECT_NEAR(Shift(Pulse(0, 7000, 0.01, 10000), other, TAlignment::Correlation).ms, 6970, 2.5);
}

TEST(PinnedEvents, WithoutWhatTheyAreAlignedAtEventsStandAtTheirStarts) {
  const TEvent shown = Pulse(1000, 100, 1, 400);
  const TEvent low = Pulse(1000, 100, 1, 400, 2);
  TEvent odd(1);
  for (const double ms : {0.0, kNoTime, 3.0}) odd.AddValues(ms, std::numeric_limits<float>::quiet_NaN(), 0, 0);
  for (const auto& [name, alignment] : kAlignments) {
    for (const TEvent* other : std::initializer_list<const TEvent*>{&odd, &low}) {
      const TShift shift = Shift(shown, *other, alignment);
      const bool lacks = other == &odd ? alignment != TAlignment::Start : alignment == TAlignment::SwitchOn;
      EXPECT_EQ(shift.found, !lacks) << name;
      EXPECT_TRUE(!lacks || shift.ms == 0) << name;
    }
  }
  EXPECT_FALSE(Shift(TEvent(0), shown, TAlignment::Peak).found);
}

}  // namespace
