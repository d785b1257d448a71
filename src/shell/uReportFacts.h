// What a report says of the shown mission: the figures of its part of the recording, and which events it lists. Main
// thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/uLimitProfile.h"
#include "analysis/uMissionSummary.h"
#include "analysis/uVerdict.h"
#include "shell/uReferenceFigures.h"
#include "shell/uReportConfig.h"
#include "shell/uShownMission.h"

struct TReportFacts {
  TDisplaySettings display;  // the mission's; with a profile in force, limits that it does not choose are infinite
  std::optional<TVerdictLimits> limits;  // in force
  TVerdictPart part;                     // what passes the event filter, and the time
  std::string filtered;                  // both in words; empty when nothing limits the report
  TVerdict verdict;
  std::optional<TJudgement> judgement;     // nothing without a profile
  std::optional<TReference> reference;     // the mission's, if the report compares with it
  std::vector<TReferenceFigure> compared;  // with the reference
  TEventGroups groups;
  // Rows of the event table, by time; the most important by "Order By".
  std::vector<std::uint32_t> events;
  std::vector<std::uint32_t> important;  // at most kMostImportantCount
  std::vector<std::uint32_t> cards;
};

TReportFacts FactsOf(const TShownMission& mission, const TReportConfig& config);

// Whether the report's part of the recording passes the profile in force, without a period; empty without one.
std::string JudgementText(const TReportFacts& facts);

// Which events have a card: "The first 12 events by Intensity (max)".
std::string CardsTitle(const TReportFacts& facts, const TReportConfig& config, const TShownMission& mission);
