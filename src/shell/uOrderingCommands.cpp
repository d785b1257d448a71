#include "shell/uOrderingCommands.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "analysis/uEventOrdering.h"

namespace {

// The chosen event stays as it is.
void SelectForNow(TShownMission& mission, std::optional<std::size_t> event, IMissionViews& views) {
  if (event && *event >= mission.Events.Count()) event.reset();
  mission.SelectedEvent = event;
  views.ShowSelectedEvent(event);
  views.PositionEventGrids(event);
}

void ApplyFilter(TShownMission& mission, IMissionViews& views) {
  FilterCompanion(mission);
  views.RebuildFilteredEvents();
  views.ShowFilter(mission);
  const auto event = VisibleOrFirst(mission.CLDS, mission.ChosenEvent);
  if (event != mission.SelectedEvent) SelectForNow(mission, event, views);
}

bool IsAwaitingAnalysis(const TShownMission& mission) {
  return mission.FilterActive && mission.Filter.NeedsAnalysis() && !mission.Analysis;
}

void ApplyOrAwait(TShownMission& mission, IMissionViews& views) {
  if (IsAwaitingAnalysis(mission)) {
    views.AwaitAnalysis();
  } else {
    ApplyFilter(mission, views);
  }
}

// The first events in the chosen order that pass the filter.
void RankImportant(TShownMission& mission) {
  mission.Important = mission.Tables.Events;
  const auto entry = static_cast<std::size_t>(mission.Settings.orderBy);
  if (entry < kOrderByIndexes.size()) mission.Important.SelectIndex(kOrderByIndexes[entry]);
  const std::vector<bool>& passes = mission.CLDS.ShownRows();
  std::vector<bool> ranked(mission.Important.RecordCount());
  std::size_t count = 0;
  for (std::size_t i = 0; i < ranked.size() && count < kMostImportantCount; ++i) {
    const std::size_t row = mission.Important.RowAt(i);
    if (!passes.empty() && !passes[row]) continue;
    ranked[row] = true;
    ++count;
  }
  mission.Important.SetShownRows(std::move(ranked));
}

std::optional<std::size_t> FirstEvent(TDataset& table) {
  table.First();
  const auto id = table.FindField("ID");
  if (!id || table.Eof()) return std::nullopt;
  return static_cast<std::size_t>(table.Integer(table.CurrentRow(), *id));
}

void Step(TShownMission& mission, const TDataset& table, int steps, IMissionViews& views) {
  if (table.RecordCount() == 0) return;
  // The table shares the rows of the shock event table, where an event's row is its index in the list.
  const auto selected = mission.SelectedEvent ? table.PositionOf(*mission.SelectedEvent) : std::nullopt;
  const auto last = static_cast<std::int64_t>(table.RecordCount()) - 1;
  const std::int64_t position =
      selected ? std::clamp<std::int64_t>(static_cast<std::int64_t>(*selected) + steps, 0, last) : 0;
  SelectEvent(mission, table.RowAt(static_cast<std::size_t>(position)), views);
}

}  // namespace

void FillCompanion(TShownMission& mission) {
  mission.CLDS = mission.Tables.Events;
}

void SelectEvent(TShownMission& mission, std::optional<std::size_t> event, IMissionViews& views) {
  mission.ChosenEvent = event;
  SelectForNow(mission, event, views);
}

void ShockGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views) {
  if (const auto key = EventIndexKey(field)) {
    ToggleIndex(mission.Tables.Events, *key);
    ToggleIndex(mission.CLDS, *key);
  }
  mission.Tables.Events.First();
  const std::optional<std::size_t> first = FirstEvent(mission.CLDS);
  views.RefreshGrid("dbgShocks");
  views.RefreshGrid("dbgFilteredShocks");
  SelectEvent(mission, first, views);
}

void SensorsGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views) {
  const auto key = SensorsIndexKey(field);
  if (key && ToggleIndex(mission.Tables.Sensors, *key)) views.RefreshGrid("DBGrid2");
}

void AnalysisGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views) {
  const auto key = AnalysisIndexKey(field);
  if (!key || !mission.Analysis || !ToggleIndex(mission.Analysis->Table, *key)) return;
  views.RefreshGrid("dbgAnalysis");
  SelectEvent(mission, FirstEvent(mission.Analysis->Table), views);
}

void BatteryGridTitleClick(TShownMission& mission, std::string_view field, IMissionViews& views) {
  const auto key = BatteryIndexKey(field);
  if (key && ToggleIndex(mission.Tables.Battery, *key)) views.RefreshGrid("DBGrid8");
}

void OrderEventsBy(TShownMission& mission, std::string_view index, IMissionViews& views) {
  if (!mission.Tables.Events.SelectIndex(index) || !mission.CLDS.SelectIndex(index)) return;
  views.RefreshGrid("dbgShocks");
  views.RefreshGrid("dbgFilteredShocks");
  views.PositionEventGrids(mission.SelectedEvent);
}

void OrderReadingsBy(TShownMission& mission, std::string_view sensors, std::string_view battery, IMissionViews& views) {
  if (mission.Tables.Sensors.SelectIndex(sensors)) views.RefreshGrid("DBGrid2");
  if (mission.Tables.Battery.SelectIndex(battery)) views.RefreshGrid("DBGrid8");
}

void OrderMostImportantBy(TShownMission& mission, int entry, IMissionViews& views) {
  const auto choice = static_cast<std::size_t>(entry);
  if (entry < 0 || choice >= kOrderByIndexes.size()) return;
  const std::string order = mission.Tables.Events.IndexName();
  FillMostImportantEvents(kOrderByIndexes[choice], mission.Tables);
  mission.Tables.Events.SelectIndex(order);
  mission.Settings.orderBy = entry;
  RankImportant(mission);
  views.RefreshGrid("dbgMostImportant");
  views.ShowSelectedEvent(mission.SelectedEvent);
  views.PrepareReport(mission);
}

void StepEvent(TShownMission& mission, int steps, IMissionViews& views) {
  Step(mission, mission.CLDS, steps, views);
}

void StepEventInAnalysis(TShownMission& mission, int steps, IMissionViews& views) {
  Step(mission, mission.Analysis ? mission.Analysis->Table : mission.CLDS, steps, views);
}

void StepEventInTime(TShownMission& mission, int steps, IMissionViews& views) {
  TDataset inTime = mission.CLDS;
  inTime.SelectIndex("TimestampASC");
  Step(mission, inTime, steps, views);
}

void FilterCompanion(TShownMission& mission) {
  std::vector<bool> through;
  if (mission.FilterActive) {
    through = EventsThrough(mission.Filter, mission.Tables.Events, mission.Events,
                            mission.Display.LimitsOf(TQuantity::Acceleration),
                            mission.Analysis ? &mission.Analysis->Table : nullptr);
  }
  if (mission.Analysis) mission.Analysis->Table.SetShownRows(through);
  mission.CLDS.SetShownRows(std::move(through));
  RankImportant(mission);
}

void ChangeFilter(TShownMission& mission, const TEventFilter& filter, IMissionViews& views) {
  mission.Filter = filter;
  mission.FilterActive = filter.HasCondition();
  ApplyOrAwait(mission, views);
}

bool ActivateFilter(TShownMission& mission, bool active, IMissionViews& views) {
  const bool possible = !active || mission.Filter.HasCondition();
  mission.FilterActive = active && possible;
  ApplyOrAwait(mission, views);
  return possible;
}

void AlarmLimitsChanged(TShownMission& mission, IMissionViews& views) {
  if (mission.FilterActive && mission.Filter.aboveAlarm) ApplyFilter(mission, views);
}

void TakeAnalysis(TShownMission& mission, TMissionAnalysis analysis, IMissionViews& views) {
  const bool awaited = IsAwaitingAnalysis(mission);
  mission.Analysis = std::move(analysis);
  ApplyDateFormat(*mission.Analysis);
  mission.Analysis->Table.SetShownRows(mission.CLDS.ShownRows());
  if (mission.ReferenceIsShown) AddPulses(*mission.Analysis, mission.Tables, *mission.Reference);
  views.ShowAnalysis(mission);
  if (awaited) ApplyFilter(mission, views);
}

void GiveUpAnalysis(TShownMission& mission, IMissionViews& views) {
  if (!IsAwaitingAnalysis(mission)) return;
  mission.Filter.ranges[kVelocityChangePlace] = {};
  mission.FilterActive = mission.Filter.HasCondition();
  ApplyFilter(mission, views);
}
