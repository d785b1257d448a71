// Limits under a name, with how much beyond each is allowed, and whether a recording passes them. Pure functions, main
// thread only.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/uDamageBoundary.h"
#include "analysis/uVerdict.h"

// How long each sensor of a quantity may be beyond its limits in all: whole ms; 0: never.
struct TAllowedTimes {
  double below = 0;
  double above = 0;
  bool operator==(const TAllowedTimes&) const = default;
};

struct TLimitProfile {
  std::string name;
  TVerdictLimits limits;                                               // nothing fails by a default one
  bool accelerationFromFile = false;                                   // as the setting of that name
  std::size_t allowedEvents = 0;                                       // outside the acceleration limits
  std::array<TAllowedTimes, kLimitedQuantityCount> allowedTimes = {};  // by TQuantity; not of the acceleration
  std::optional<TFragility> product = {};                              // for the damage boundary; judges nothing

  bool operator==(const TLimitProfile&) const = default;
};

enum class TJudgementOutcome { NotJudged, Passed, Failed };

// What is beyond limits that somebody chose: events, or a sensor beyond one of its limits.
struct TFinding {
  std::optional<std::size_t> sensor;  // index in TVerdict::sensors; nothing: events
  bool below = false;                 // a sensor: its lower limit
  double amount = 0;                  // events, or ms
  double allowed = 0;                 // the same
  bool fails = false;                 // more than is allowed, which is then not all of it
};

struct TJudgement {
  TJudgementOutcome outcome = TJudgementOutcome::NotJudged;  // no limit was chosen, or there is nothing to judge
  std::vector<TFinding> findings;                            // events first, then by sensor
  bool eventsJudged = false;           // the acceleration limits are neither default nor the trigger level
  std::vector<TQuantity> notRecorded;  // quantities with chosen limits, but without a reading that counts
  bool empty = false;                  // neither an event nor a reading that counts
};

// Whether somebody chose a limit that a peak can be beyond. Peaks have no sign, so a lower limit counts only above 0.
bool AreEventsJudged(const TJudgedLimits& acceleration);

// `verdict` is by the profile's limits in force. Times count to the millisecond. A single reading beyond a limit has no
// length, and fails only where no time is allowed.
TJudgement JudgeByProfile(const TVerdict& verdict, const TLimitProfile& profile);
