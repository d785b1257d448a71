// The sixth table of a mission: shock analysis. It is filled when somebody asks for it, not when a file is loaded.
// Main thread only.
#pragma once

#include <span>
#include <string_view>

#include "analysis/uDataset.h"
#include "analysis/uShockAnalysis.h"

// The name that commands know it by.
inline constexpr std::string_view kAnalysisTable = "analysis";

// A row for each event, in the order of the list: "ID", "Timestamp", figures of the pulse, "Direction", "Drop height",
// "Reason". Figures are null where an event has no pulse. `analyses` are those of the events. Indexes by all numbers.
void FillAnalysisTable(const TEventList& events, std::span<const TShockAnalysis> analyses, TDataset& table);
