#include "model/uEvents.h"

#include <gtest/gtest.h>

#include "model/uOtherSensors.h"

namespace {

struct TPeakCase {
  std::vector<std::array<float, 3>> samples;
  float max, maxSingle;
  const char* axis;
};

TEST(Event, KeepsThePeaksOfItsSamples) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const TPeakCase cases[] = {
      {{}, 0, 0, "None"},
      {{{3, -4, 0}}, 5, 4, "Y-neg"},
      {{{2, 0, 0}, {-2, 0, 0}}, 2, 2, "X-pos"},      // a tie keeps the earlier sample
      {{{-2, 2, 2}}, std::sqrt(12.0F), 2, "X-neg"},  // and the earlier axis
      {{{0, 0, 0}}, 0, 0, "None"},
      {{{1, 2, -3}}, std::sqrt(14.0F), 3, "Z-neg"},  // each axis against what the one before it left
      {{{nan, -2, 1}, {1, 1, 1}}, 2, 2, "Y-neg"},    // no magnitude with a NaN, but the other axes count
      {{{0.1F, 0.2F, 0.2F}}, 0.3F, 0.2F, "Y-pos"},   // the root of the squares in double, kept as single
      {{{1e30F, -1e30F, 0}}, 1.41421356e30F, 1e30F, "X-pos"}};
  for (const TPeakCase& c : cases) {
    TEvent event(0);
    for (const auto& [x, y, z] : c.samples) event.AddValues(0, x, y, z);
    EXPECT_EQ(event.Max, c.max);
    EXPECT_EQ(event.MaxSingle, c.maxSingle);
    EXPECT_EQ(event.MaxAxis, c.axis);
  }
}

TEST(EventList, OpensAnEventWithTheNextSampleOnly) {
  TEventList events;
  events.AddValues(1, 1, 1, 1);
  EXPECT_EQ(events.Count(), 0U) << "samples before the first event are dropped";
  events.NewEvent();
  events.NewEvent();
  EXPECT_EQ(events.Count(), 0U);
  events.AddValues(5, 1, 1, 1);
  events.AddValues(6, 2, 1, 1);
  events.NewEvent();
  events.AddValues(7, 1, 1, 1);
  ASSERT_EQ(events.Count(), 2U);
  EXPECT_EQ(events.GetItem(0).Count(), 2U);
  EXPECT_EQ(events.GetItem(0).GetStartTime(), 5);
  EXPECT_EQ(events.GetItem(1).ID, 1);
  EXPECT_THROW(static_cast<void>(events.GetItem(2)), std::out_of_range);
}

TEST(SensorList, AddsToTheLastSensorAndNeverCreatesOne) {
  TSensorList sensors;
  sensors.NewSensor();
  sensors.AddValues(1, 1);
  EXPECT_EQ(sensors.Count(), 0U);
  sensors.Add("Temperature");
  sensors.Add("RH");
  sensors.NewSensor();
  sensors.AddValues(2, 50);
  EXPECT_EQ(sensors.GetItem(0).GetStartTime(), 0.0);
  EXPECT_EQ(sensors.GetItem(1).Count(), 1U);
  EXPECT_EQ(sensors.GetItem(1).ID, 1);
}

}  // namespace
