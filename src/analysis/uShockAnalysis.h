// What shock analysis says about one event: its pulse and its drop height, or why not. Pure functions; any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "analysis/uDropHeight.h"
#include "analysis/uPulse.h"
#include "model/uEvents.h"

struct TShockAnalysis {
  TPulse pulse;                      // of the samples less the level before the shock
  TFall fall;                        // of the samples as they are
  std::optional<TDropBracket> drop;  // where there is a pulse
  std::string reason;                // sentences on what is missing; empty when nothing is
};

// `levelOn` is the switch-on level in g, which ends what counts as before the shock.
TShockAnalysis AnalyseShock(const TEvent& event, double levelOn);

// The first event with the largest velocity change; nothing when none has a pulse.
struct TLargestVelocityChange {
  std::size_t event;      // its index in the list
  double velocityChange;  // m/s
};
std::optional<TLargestVelocityChange> LargestVelocityChange(const TEventList& events, double levelOn);

// The drop height with its brackets: "305 mm (303 to 307), 150 to 600 mm by velocity change", "at least 92 mm"; empty
// without a fall and a pulse.
std::string DropHeightText(const TShockAnalysis& analysis);
