// The shown mission: its tables, selection and filter. Main thread only.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "analysis/uAlarmLimits.h"
#include "analysis/uAnalysisTable.h"
#include "analysis/uEventFilter.h"
#include "analysis/uMissionDatasets.h"
#include "analysis/uMissionSummary.h"
#include "analysis/uPinnedEvents.h"
#include "analysis/uReference.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"
#include "navigation/uTimeNavigator.h"
#include "shell/uSettings.h"

class TNotes;

// The notes on the recording, and where they stand in it.
struct TShownNotes {
  std::shared_ptr<TNotes> file;  // null while none is shown, and when they cannot be read
  std::string problem;           // why they cannot be read, or that they were written for another content
  std::map<std::size_t, std::string> ofEvents;  // the texts, by the event's index
  std::string current;                          // the ID of the one that was last stepped to
};

struct TShownMission {
  // The model. Only the reader may use it while a file is read.
  const TMissionData& Data = MissionData;
  const TEventList& Events = EventList;
  const TSensorList& Sensors = SensorList;
  const TAxesPresent& Axes = AxesPresent;

  // CLDS, the companion of Tables.Events, has the rows that pass the filter. Both have the same index selected.
  TMissionDatasets Tables;
  TDataset CLDS;
  TDataset Important;  // a companion, too: the most important of the events that pass the filter, as "Order By" says
  // Shock analysis, once it was asked for; its table shows the rows that pass the filter.
  std::optional<TMissionAnalysis> Analysis;
  TMissionSummary Summary;
  std::string Damage;  // in words; empty for a whole recording
  // Both outlive the mission. The window's controls keep the settings up to date.
  TSettings Settings;
  TDisplaySettings Display;  // in force
  TShownNotes Notes;
  TTimeSpan Band{0, 0};                      // of the navigator
  std::optional<std::size_t> SelectedEvent;  // index in Events
  // The user's choice. While the filter hides it, another event is selected in its place.
  std::optional<std::size_t> ChosenEvent;

  // The conditions stay while the filter is off and when another file is opened. Without conditions it is off.
  TEventFilter Filter;
  bool FilterActive = false;

  // They stay when another file is opened.
  TPins Pins;
  std::optional<TReference> Reference;
  bool ReferenceIsKept = false;   // with the user layout when that is saved
  bool ReferenceIsShown = false;  // it was made of this mission
};

// What the mission, or a part of it, is compared with; null without a reference, and for a whole mission that is the
// reference itself.
inline const TReference* ReferenceFor(const TShownMission& mission, bool isPart) {
  return mission.Reference && (isPart || !mission.ReferenceIsShown) ? &*mission.Reference : nullptr;
}
