// A recording of three events whose every ranking is another one, one of as many as wanted, and one of triangles.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tests/support/uTestRecording.h"

// Of X, Y, Z, temperature, humidity and battery; switched on and off at 2 g, which is where IoT starts too.
inline TTestRecording ShocksOf(const std::vector<TTestRecord>& records) {
  return TTestRecording()
      .Creator()
      .StartTime(45123.25)
      .MissionHeader(2, 2)
      .Channels({"ACC x", "ACC y", "ACC z", "T", "RH", "BAT"})
      .Data(records);
}

// Samples a millisecond apart on x, events a minute apart.
//
//   event   acceleration   ToT total   ToT max   IoT total   IoT max   Temp.   Battery
//   0       20 g           11 ms       2 ms      10 g·ms     2 g·ms    20      3.4
//   1       9 g            3 ms        3 ms      14 g·ms     14 g·ms   22      3.6
//   2       5 g            4 ms        4 ms      9 g·ms      9 g·ms    21      3.5
inline TTestRecording ThreeEvents() {
  const std::vector<float> heights[] = {
      {0, 4, 4, 0, 4, 4, 0, 4, 4, 0, 4, 4, 0, 4, 4, 0, 20, 0}, {0, 9, 9, 9, 0}, {0, 5, 5, 5, 5, 0}};
  const std::vector<float> slow[] = {{20, 50, 3.4F}, {22, 50, 3.6F}, {21, 50, 3.5F}};
  std::vector<TTestRecord> records;
  for (std::size_t event = 0; event < 3; ++event) {
    double ms = 60000.0 * static_cast<double>(event);
    for (const float height : heights[event]) {
      const bool first = height == 0 && (records.empty() || std::isnan(records.back().readings[0]));
      records.push_back({ms++, {height, 0, 0, kNone, kNone, kNone}});
      if (first) std::ranges::copy(slow[event], records.back().readings.begin() + 3);
    }
    records.push_back({ms, {kEnd, kEnd, kEnd, kNone, kNone, kNone}});
  }
  return ShocksOf(records);
}

// So many events a minute apart, each higher than the one before.
inline TTestRecording RisingEvents(int count) {
  std::vector<TTestRecord> records;
  for (int event = 0; event < count; ++event) {
    const double ms = 60000.0 * event;
    for (int sample = 0; sample < 4; ++sample) {
      const float height = sample == 1 || sample == 2 ? 5.0F + static_cast<float>(event) : 0.0F;
      records.push_back({ms + sample, {height, 0, 0, kNone, kNone, kNone}});
    }
    records.push_back({ms + 4, {kEnd, kEnd, kEnd, kNone, kNone, kNone}});
  }
  return ShocksOf(records);
}

// Triangles on x of seven samples, 0 to the peak and back to 0, after ten samples of 0; the last event is a single
// sample and so has no pulse. Events are a minute apart.
//
//   event   peak   step   velocity change   direction
//   0       30 g   1 ms   0.8826 m/s        X-pos
//   1       60 g   1 ms   1.7652 m/s        X-pos
//   2      -15 g   3 ms   1.3239 m/s        X-neg
//   3       40 g   1 ms   none
inline TTestRecording Triangles() {
  struct TTriangle {
    float peak;
    double step;  // ms
  };
  std::vector<TTestRecord> records;
  const auto add = [&records](double ms, float x) { records.push_back({ms, {x, 0, 0, kNone, kNone, kNone}}); };
  double start = 0;
  for (const auto& [peak, step] : {TTriangle{30, 1}, TTriangle{60, 1}, TTriangle{-15, 3}, TTriangle{40, 1}}) {
    const bool spike = peak == 40;
    for (int i = -10; i < 20; ++i) {
      const float height = static_cast<float>(std::max(0, 3 - std::abs(i - 3))) / 3;
      add(start + (i + 10) * step, spike && i != 3 ? 0 : peak * height);
    }
    records.push_back({start + 30 * step, {kEnd, kEnd, kEnd, kNone, kNone, kNone}});
    start += 60000;
  }
  return ShocksOf(records);
}
