#include "shell/uFilterCommands.h"

#include "shell/uOrderingCommands.h"

namespace {

void Apply(TShownMission& mission, IMainScreen& screen) {
  FilterCompanion(mission);
  screen.RebuildFilteredEvents();
  screen.ShowFilter(mission);
  const auto event = VisibleOrFirst(mission.CLDS, mission.ChosenEvent);
  if (event != mission.SelectedEvent) SelectForNow(mission, event, screen);
}

}  // namespace

void FilterCompanion(TShownMission& mission) {
  mission.CLDS.SetShownRows(mission.FilterActive ? EventsThrough(mission.Filter, mission.Tables.Events, mission.Events,
                                                                 mission.Display.LimitsOf(TQuantity::Acceleration))
                                                 : std::vector<bool>());
}

void ChangeFilter(TShownMission& mission, const TEventFilter& filter, IMainScreen& screen) {
  mission.Filter = filter;
  mission.FilterActive = filter.HasCondition();
  Apply(mission, screen);
}

bool ActivateFilter(TShownMission& mission, bool active, IMainScreen& screen) {
  const bool possible = !active || mission.Filter.HasCondition();
  mission.FilterActive = active && possible;
  Apply(mission, screen);
  return possible;
}

void AlarmLimitsChanged(TShownMission& mission, IMainScreen& screen) {
  if (mission.FilterActive && mission.Filter.aboveAlarm) Apply(mission, screen);
}
