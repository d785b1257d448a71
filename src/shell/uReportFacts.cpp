#include "shell/uReportFacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uFilterWords.h"
#include "shell/uShownVerdict.h"

namespace {

// "Acceleration max from 6 g · time from 2026-03-04 06:00:00"
std::string FilteredWords(const TShownMission& mission, const TRange& time) {
  std::string words = mission.FilterActive ? FilterWords(mission.Filter, mission.Display) : std::string();
  if (time.IsSet()) AppendListItem(words, TimeWords("time", time, mission.Display), " · ");
  return words;
}

// The rows that `counts` marks, by an index of the event table; at most `count`.
std::vector<std::uint32_t> RowsBy(std::string_view index, const std::vector<bool>& counts, const TShownMission& mission,
                                  std::size_t count) {
  TDataset table = mission.Tables.Events;
  table.SelectIndex(index);
  table.SetShownRows(counts);
  std::vector<std::uint32_t> rows = VisibleEvents(table);
  if (rows.size() > count) rows.resize(count);
  return rows;
}

// Only what somebody chose: the profile does not judge by the others.
void ShowLimits(const TVerdictLimits& limits, TDisplaySettings& display) {
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const TJudgedLimits& judged = limits[i];
    display.limits[i] = {judged.minSource == TLimitSource::Default ? -kNoLimit : judged.values.min,
                         judged.maxSource == TLimitSource::Default ? kNoLimit : judged.values.max};
  }
}

std::size_t OrderBy(const TShownMission& mission) {
  const auto entry = static_cast<std::size_t>(mission.Settings.orderBy);
  return entry < kOrderByIndexes.size() ? entry : 0;
}

// Without the limits that nobody chose: every event exceeds the trigger level.
TLimits ChosenOf(const TJudgedLimits& judged) {
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  return {judged.minSource == TLimitSource::User ? judged.values.min : -kNoLimit,
          judged.maxSource == TLimitSource::User ? judged.values.max : kNoLimit};
}

std::vector<std::uint32_t> CardRows(const TReportFacts& facts, const TReportConfig& config,
                                    const TShownMission& mission) {
  switch (config.cardEvents) {
    case TCardEvents::All: {
      const TVerdictPart inTime{config.time, {}};
      return RowsBy("TimestampASC", EventsIn(inTime, mission.Tables, mission.Events), mission, mission.Events.Count());
    }
    case TCardEvents::Filtered:
      return facts.events;
    case TCardEvents::Worst:
      return RowsBy(kOrderByIndexes[OrderBy(mission)], facts.part.events, mission, config.worstCount);
    case TCardEvents::AboveAlarm:
      break;
  }
  std::vector<std::uint32_t> rows;
  if (!facts.limits) return rows;
  const TLimits limits = ChosenOf((*facts.limits)[static_cast<std::size_t>(TQuantity::Acceleration)]);
  std::ranges::copy_if(facts.events, std::back_inserter(rows),
                       [&](std::uint32_t row) { return IsOutside(limits, mission.Events.GetItem(row).Max); });
  return rows;
}

}  // namespace

TReportFacts FactsOf(const TShownMission& mission, const TReportConfig& config) {
  TReportFacts facts;
  facts.display = mission.Display;
  facts.filtered = FilteredWords(mission, config.time);
  facts.limits = LimitsInForce(mission.Display);
  if (facts.limits && mission.Display.profile) ShowLimits(*facts.limits, facts.display);
  facts.part = {config.time, mission.FilterActive ? mission.CLDS.ShownRows() : std::vector<bool>()};
  facts.part.events = EventsIn(facts.part, mission.Tables, mission.Events);
  facts.verdict = JudgeMission(mission.Events, mission.Sensors, mission.Tables, facts.limits, facts.part);
  facts.verdict.damaged = !mission.Damage.empty();
  facts.judgement = JudgementOf(facts.verdict, mission.Display);
  const bool isWhole = facts.filtered.empty();
  if (const TReference* reference = ReferenceFor(mission, !isWhole)) {
    facts.reference = *reference;
    facts.compared = ReferenceFigures(*facts.reference, facts.verdict, isWhole, mission.Display);
  }
  std::optional<TLimits> acceleration;
  if (facts.verdict.above) acceleration = facts.verdict.above->limits.values;
  facts.groups = GroupEvents(mission.Events, mission.Tables.Metrics, acceleration, facts.part.events);
  facts.events = RowsBy("TimestampASC", facts.part.events, mission, mission.Events.Count());
  facts.important = RowsBy(kOrderByIndexes[OrderBy(mission)], facts.part.events, mission, kMostImportantCount);
  facts.cards = CardRows(facts, config, mission);
  return facts;
}

std::string JudgementText(const TReportFacts& facts) {
  if (!facts.judgement) return "";
  return JudgementSentence(*facts.judgement, facts.verdict, *facts.display.profile, facts.display,
                           !facts.filtered.empty());
}

std::string CardsTitle(const TReportFacts& facts, const TReportConfig& config, const TShownMission& mission) {
  const std::string events = Counted(facts.cards.size(), "event");
  switch (config.cardEvents) {
    case TCardEvents::All:
      return events;
    case TCardEvents::Filtered:
      return mission.FilterActive ? events + " that pass the filter" : events;
    case TCardEvents::Worst:
      return fmt::format("The first {} by {}", events, kOrderByCaptions[OrderBy(mission)]);
    case TCardEvents::AboveAlarm:
      break;
  }
  if (!facts.limits) return "No limits are set, so no event is above one.";
  const TJudgedLimits& acceleration = (*facts.limits)[static_cast<std::size_t>(TQuantity::Acceleration)];
  if (AreEventsJudged(acceleration)) return events + " above the alarm limit";
  return acceleration.maxSource == TLimitSource::File
             ? "Limits from the file are the trigger level; set limits to choose events by them."
             : "Nobody chose the default limits for this recording; set limits to choose events by them.";
}
