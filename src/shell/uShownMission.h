// What the shell keeps of the mission that is shown: its tables and what is selected. Main thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "analysis/uAlarmLimits.h"
#include "analysis/uEventFilter.h"
#include "analysis/uMissionDatasets.h"
#include "analysis/uMissionSummary.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"
#include "navigation/uTimeNavigator.h"
#include "shell/uSettings.h"

struct TShownMission {
  // The model. It belongs to the reader while a file is read.
  const TMissionData& Data = MissionData;
  const TEventList& Events = EventList;
  const TSensorList& Sensors = SensorList;
  const TAxesPresent& Axes = AxesPresent;

  // The shock event table is ClientDataSet4, its companion CLDS holds the events that the filter lets through. Both
  // carry the same index.
  TMissionDatasets Tables;
  TDataset CLDS;
  TMissionSummary Summary;
  std::string Damage;  // what is wrong with the recording, in words; empty when it is whole
  // Both outlive the mission. The window's controls keep the settings up to date.
  TSettings Settings;
  TDisplaySettings Display;                  // in force
  TTimeSpan Band{0, 0};                      // of the navigator
  std::optional<std::size_t> SelectedEvent;  // index in Events
  // What the user chose, who may be hidden by the filter for now: another event is selected in its place.
  std::optional<std::size_t> ChosenEvent;

  // The conditions stay while the filter is off, also when another file is opened. It is never on without one.
  TEventFilter Filter;
  bool FilterActive = false;
};
