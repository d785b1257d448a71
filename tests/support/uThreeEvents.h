// A recording of three events whose every ranking is another one, and one of as many as wanted.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/support/uTestRecording.h"

// Samples a millisecond apart on x, events a minute apart; switched on and off at 2 g, which is where IoT starts too.
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
  return TTestRecording()
      .Creator()
      .StartTime(45123.25)
      .MissionHeader(2, 2)
      .Channels({"ACC x", "ACC y", "ACC z", "T", "RH", "BAT"})
      .Data(records);
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
  return TTestRecording()
      .Creator()
      .StartTime(45123.25)
      .MissionHeader(2, 2)
      .Channels({"ACC x", "ACC y", "ACC z", "T", "RH", "BAT"})
      .Data(records);
}
