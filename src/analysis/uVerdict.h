// How bad a recording is against the limits in force: what the overview's strip and the report's verdict say. Pure
// functions, main thread only. Times are date-times, durations ms.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/uAlarmLimits.h"
#include "analysis/uEventFilter.h"
#include "analysis/uMissionDatasets.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"
#include "model/uQuantities.h"

// Where a limit comes from. One from the file is the trigger level, which events exceed by design; a default limit was
// never chosen by anybody.
enum class TLimitSource { Default, User, File };

struct TJudgedLimits {
  TLimits values;
  TLimitSource minSource = TLimitSource::User;
  TLimitSource maxSource = TLimitSource::User;
  bool operator==(const TJudgedLimits&) const = default;
};
using TVerdictLimits = std::array<TJudgedLimits, kLimitedQuantityCount>;

// The part of the recording that is judged. The time counts for events by their start, as in the event filter.
struct TVerdictPart {
  TRange time;
  std::vector<bool> events;  // those that count, by row; empty: all
};

struct TPeakVerdict {
  std::size_t event;      // index in the list
  float value;            // g, TEvent::Max
  float axisValue;        // g, TEvent::MaxSingle
  std::string_view axis;  // "X-pos" … "Z-neg", "None"
  double time;            // the event's start
  bool clipped;           // the true peak is higher
};

struct TIntensityVerdict {
  std::size_t event;
  double value;  // g·ms, IoT total
  double time;   // the event's start
  bool clipped;
};

struct TEventsAbove {
  std::size_t count = 0;  // "Acceleration max" outside the limits
  TJudgedLimits limits;
};

// Neighbouring readings beyond one limit, without a gap between them.
struct TExcursion {
  double begin;     // date-time
  double duration;  // ms
  float extreme;    // the reading that is farthest from the limit
};

// One limit of one sensor.
struct TLimitVerdict {
  double limit = 0;
  TLimitSource source = TLimitSource::User;
  double timeOut = 0;  // ms, the sum of the excursions
  std::size_t excursions = 0;
  std::optional<TExcursion> first = {}, longest = {};  // of equally long ones the first

  [[nodiscard]] bool IsOut() const { return excursions > 0; }
  [[nodiscard]] bool IsOutOfDefault() const { return IsOut() && source == TLimitSource::Default; }
  [[nodiscard]] bool IsOutOfChosen() const { return IsOut() && source != TLimitSource::Default; }
};

struct TReadingAt {
  float value;
  double time;
};

struct TSensorVerdict {
  std::size_t sensor;                  // index in the list
  const TQuantityRow* quantity;        // never null; it has limits
  std::optional<TReadingAt> min, max;  // the first of each, over the readings that count and are numbers
  TLimitVerdict below, above;          // empty while no limits are in force

  [[nodiscard]] bool IsOut() const { return below.IsOut() || above.IsOut(); }
};

// The sensor that was out of limits for the longest time in all; of equals the first of the list. One that is only
// beyond default limits is named only when no other is out.
struct TWorstSensor {
  std::size_t index;     // in TVerdict::sensors
  bool byDefaultLimits;  // else its time beyond default limits is left out
  double timeOut;        // ms
};

struct TVerdict {
  std::size_t events = 0;                  // in the part
  std::optional<TPeakVerdict> peak;        // the first with the largest value; nothing without events
  std::optional<TIntensityVerdict> worst;  // the first with the largest value, if any is above 0
  std::vector<std::size_t> clipped;        // indexes of the clipped events
  std::optional<TEventsAbove> above;       // nothing while no limits are in force
  std::vector<TSensorVerdict> sensors;     // those of a quantity with limits, in the order of the list
  std::optional<TWorstSensor> worstSensor;
  // Of the whole recording: the earliest and latest time of a sample or reading; nothing when there is none.
  std::optional<double> firstTime, lastTime;
  bool damaged = false;  // for the caller to say; the model does not know

  // Sensors that are beyond default limits only, or those beyond a limit that somebody chose.
  [[nodiscard]] std::size_t SensorsOut(bool byDefaultLimits) const;
};

// The events of a part, by row; empty: all.
std::vector<bool> EventsIn(const TVerdictPart& part, const TMissionDatasets& tables, const TEventList& events);

// `tables` are those of the two lists; nothing for `limits` while the alarm is off.
//
// A reading counts until the next one that is a number, at most kGapIntervals median intervals; the last one counts one
// median interval, at most until the recording ends. What lies outside the part's time is cut off. A step back in time
// ends an excursion as a gap does, and so does a change from below to above. NaN is no reading.
TVerdict JudgeMission(const TEventList& events, const TSensorList& sensors, const TMissionDatasets& tables,
                      const std::optional<TVerdictLimits>& limits, const TVerdictPart& part = {});
