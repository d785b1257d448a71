// Events that are kept to be compared with others. A pinned event is a copy, so it outlives its recording. Any thread.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/uShockMetrics.h"
#include "model/uEvents.h"

inline constexpr std::size_t kMaxPins = 8;

struct TPinnedEvent {
  TEvent event;  // with all samples and peaks
  TThresholds levels{};
  TEventMetrics metrics;
  double missionStart = 0;  // a date-time
  std::string file;         // the recording, with its folder; UTF-8
};

TPinnedEvent CopyOfEvent(const TEvent& event, const TThresholds& levels, double missionStart, std::string file);

struct TPin {
  std::shared_ptr<const TPinnedEvent> event;
  std::size_t slot = 0;  // below kMaxPins, for its colour and dashes; stays while the event is pinned
  bool visible = true;

  bool operator==(const TPin&) const = default;
};

// What of two events is put at the same time.
enum class TAlignment { Start, SwitchOn, Peak, Correlation };
// As "aligned at the …" says it.
inline constexpr std::array<std::pair<std::string_view, TAlignment>, 4> kAlignments = {{
    {"start", TAlignment::Start},
    {"switch-on sample", TAlignment::SwitchOn},
    {"peak", TAlignment::Peak},
    {"best correlation", TAlignment::Correlation},
}};

struct TPins {
  std::vector<TPin> items;  // in the order of their slots
  TAlignment alignment = TAlignment::Start;
};

// "12 (drop)": the ID and the name of the recording.
std::string PinName(const TPinnedEvent& pinned);

struct TShift {
  double ms = 0;      // added to the times of the second event, both counted from the event's start
  bool found = true;  // false: one of the two has no such sample, and both stand at their starts
  // -1 … 1 of the two totals at this shift; NaN unless it was asked for
  double correlation = std::numeric_limits<double>::quiet_NaN();
};
TShift ShiftBetween(const TEvent& shown, const TThresholds& levels, const TPinnedEvent& pinned, TAlignment alignment);
