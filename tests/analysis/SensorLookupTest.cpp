#include "analysis/uSensorLookup.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/uDateTime.h"

namespace {

constexpr double kStart = 45123.25;

float Linear(const TSensor& sensor, double startTime, double dateTime) {
  const auto values = sensor.Values();
  for (std::size_t j = 0; j < values.size(); ++j) {
    const double time = startTime + values[j].time / 86400000;
    if (!(time >= dateTime)) continue;
    if (time == dateTime || j == 0) return values[j].xvalue;
    const double earlier = startTime + values[j - 1].time / 86400000;
    return std::fabs(dateTime - time) > std::fabs(dateTime - earlier) ? values[j - 1].xvalue : values[j].xvalue;
  }
  return values.back().xvalue;
}

TEST(SensorLookup, TakesTheNearestSampleAndTheLaterOfTwo) {
  TSensorList sensors;
  TSensor& sensor = sensors.Add("Temperature");
  const double day = kMsPerDay;
  for (const double days : {1.0, 2.0, 4.0}) sensor.AddValues(days * day, static_cast<float>(days));
  const TSensorLookup lookup(sensors, 0);
  const std::pair<double, float> cases[] = {{0, 1}, {1, 1}, {1.4, 1}, {1.5, 2}, {2.9, 2}, {3, 4}, {9, 4}};
  for (const auto& [time, value] : cases) EXPECT_EQ(lookup.SensorValueAt(0, time), value) << time;
  sensors.Add("RH");
  const TSensorLookup withEmpty(sensors, 0);
  EXPECT_THROW(static_cast<void>(withEmpty.SensorValueAt(1, 1)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(withEmpty.SensorValueAt(2, 1)), std::out_of_range);
}

TEST(SensorLookup, EqualsTheLinearSearchForTimesInAnyOrder) {
  std::mt19937 random(1);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (int round = 0; round < 300; ++round) {
    TSensorList sensors;
    TSensor& sensor = sensors.Add("Temperature");
    // Few different times, so that equal ones and ties come often; some rounds are nearly in order, some not at all.
    double time = 0;
    for (unsigned i = 0; i < 1 + random() % 30; ++i) {
      time = round % 3 == 0 ? static_cast<double>(random() % 20) : time + static_cast<double>(random() % 4) - 0.6;
      sensor.AddValues((round % 7 == 0 && random() % 5 == 0 ? nan : time) * 1000, static_cast<float>(i));
    }
    for (const double start : {kStart, 0.0, nan}) {
      const TSensorLookup lookup(sensors, start);
      for (double at = -2; at < 24; at += 0.5) {
        const double dateTime = DateTimeOf(start, at * 1000);
        ASSERT_EQ(lookup.SensorValueAt(0, dateTime), Linear(sensor, start, dateTime)) << "round " << round;
      }
      ASSERT_EQ(lookup.SensorValueAt(0, nan), Linear(sensor, start, nan)) << "no sample is at or after no time";
    }
  }
}

}  // namespace
