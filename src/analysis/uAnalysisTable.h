// The shock analysis of all events: the sixth table of a mission, and the pulses that it is made of. It is computed
// when somebody asks for it, not when a file is loaded.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/uDataset.h"
#include "analysis/uShockAnalysis.h"

// The name that commands know the table by.
inline constexpr std::string_view kAnalysisTable = "analysis";

// Fields of the table, which are null where an event has no pulse, and the reason for what is missing.
inline constexpr std::string_view kVelocityChangeField = "Delta-v (m/s)";
inline constexpr std::string_view kReasonField = "Reason";

struct TMissionAnalysis {
  // A row for each event, in the order of the list: "ID", "Timestamp", figures of the pulse, "Direction", "Drop
  // height", "Reason". Indexes by all numbers.
  TDataset Table;
  std::vector<TPulse> Pulses;  // of each event
};

// Calls `report` before each event with the number of events that are done; what it throws ends the work. `levelOn` is
// that of AnalyseShock. Timestamps have no mask until ApplyDateFormat. Any thread.
TMissionAnalysis AnalyseMission(const TEventList& events, double levelOn,
                                const std::function<void(std::size_t done)>& report = {});

// As those of uEventOrdering.
std::optional<std::string_view> AnalysisIndexKey(std::string_view field);

// Gives the timestamps their mask from the short date format. Main thread only.
void ApplyDateFormat(TMissionAnalysis& analysis);
