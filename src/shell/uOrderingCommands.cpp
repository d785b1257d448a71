#include "shell/uOrderingCommands.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "analysis/uEventOrdering.h"

namespace {

std::optional<std::size_t> FirstEvent(TDataset& table) {
  table.First();
  const auto id = table.FindField("ID");
  if (!id || table.Eof()) return std::nullopt;
  return static_cast<std::size_t>(table.Integer(table.CurrentRow(), *id));
}

void Step(TShownMission& mission, const TDataset& table, int steps, IMainScreen& screen) {
  if (table.RecordCount() == 0) return;
  // The table shares the rows of the shock event table, where an event's row is its index in the list.
  const auto selected = mission.SelectedEvent ? table.PositionOf(*mission.SelectedEvent) : std::nullopt;
  const auto last = static_cast<std::int64_t>(table.RecordCount()) - 1;
  const std::int64_t position =
      selected ? std::clamp<std::int64_t>(static_cast<std::int64_t>(*selected) + steps, 0, last) : 0;
  SelectEvent(mission, table.RowAt(static_cast<std::size_t>(position)), screen);
}

}  // namespace

void FillCompanion(TShownMission& mission) {
  mission.CLDS = mission.Tables.Events;
}

void SelectEvent(TShownMission& mission, std::optional<std::size_t> event, IMainScreen& screen) {
  mission.ChosenEvent = event;
  SelectForNow(mission, event, screen);
}

void SelectForNow(TShownMission& mission, std::optional<std::size_t> event, IMainScreen& screen) {
  if (event && *event >= mission.Events.Count()) event.reset();
  mission.SelectedEvent = event;
  screen.ShowSelectedEvent(event);
  screen.PositionEventGrids(event);
}

void ShockGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen) {
  if (const auto key = EventIndexKey(field)) {
    ToggleIndex(mission.Tables.Events, *key);
    ToggleIndex(mission.CLDS, *key);
  }
  mission.Tables.Events.First();
  const std::optional<std::size_t> first = FirstEvent(mission.CLDS);
  screen.RefreshGrid("dbgShocks");
  screen.RefreshGrid("dbgFilteredShocks");
  SelectEvent(mission, first, screen);
}

void SensorsGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen) {
  const auto key = SensorsIndexKey(field);
  if (key && ToggleIndex(mission.Tables.Sensors, *key)) screen.RefreshGrid("DBGrid2");
}

void BatteryGridTitleClick(TShownMission& mission, std::string_view field, IMainScreen& screen) {
  const auto key = BatteryIndexKey(field);
  if (key && ToggleIndex(mission.Tables.Battery, *key)) screen.RefreshGrid("DBGrid8");
}

void OrderEventsBy(TShownMission& mission, std::string_view index, IMainScreen& screen) {
  if (!mission.Tables.Events.SelectIndex(index) || !mission.CLDS.SelectIndex(index)) return;
  screen.RefreshGrid("dbgShocks");
  screen.RefreshGrid("dbgFilteredShocks");
  screen.PositionEventGrids(mission.SelectedEvent);
}

void OrderReadingsBy(TShownMission& mission, std::string_view sensors, std::string_view battery, IMainScreen& screen) {
  if (mission.Tables.Sensors.SelectIndex(sensors)) screen.RefreshGrid("DBGrid2");
  if (mission.Tables.Battery.SelectIndex(battery)) screen.RefreshGrid("DBGrid8");
}

void OrderMostImportantBy(TShownMission& mission, int entry, IMainScreen& screen) {
  const auto choice = static_cast<std::size_t>(entry);
  if (entry < 0 || choice >= kOrderByIndexes.size()) return;
  const std::string order = mission.Tables.Events.IndexName();
  FillMostImportantEvents(kOrderByIndexes[choice], mission.Tables);
  mission.Tables.Events.SelectIndex(order);
  screen.RefreshGrid("dbgMostImportant");
  screen.ShowSelectedEvent(mission.SelectedEvent);
  screen.PrepareReport(mission);
}

void StepEvent(TShownMission& mission, int steps, IMainScreen& screen) {
  Step(mission, mission.CLDS, steps, screen);
}

void StepEventInTime(TShownMission& mission, int steps, IMainScreen& screen) {
  TDataset inTime = mission.CLDS;
  inTime.SelectIndex("TimestampASC");
  Step(mission, inTime, steps, screen);
}
