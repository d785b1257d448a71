// Reads a recording into the mission model, for commands that then look at it.
#pragma once

#include <string>

#include "analysis/uMissionDatasets.h"
#include "base/uMessages.h"
#include "cli/uConsole.h"
#include "model/uReadFileThread.h"

struct TRecording {
  TMessage message{};  // the last that the reader posted
  TReadExtent extent;
  bool displayable = false;
  TStatus status = TStatus::Done;
  std::string complaint;  // what is wrong with it, in sentences; empty when nothing is
  const TMissionData& mission = MissionData;
  const TEventList& events = EventList;
  const TSensorList& sensors = SensorList;
  const TAxesPresent& axes = AxesPresent;

  // Something was read that a command can show.
  [[nodiscard]] bool HasMission() const;
};

// Replaces the model by what the file holds and says on the console's err what is wrong with it. `file` is UTF-8.
TRecording ReadRecording(const std::string& file, const TConsole& console, TReadAhead ahead = TReadAhead::Yes);

// The tables of the recording, as they stand after loading.
TMissionDatasets TablesOf(const TRecording& recording);

// The shock analysis of all events.
TDataset AnalysisOf(const TRecording& recording);

// Complains when there is no such event.
bool HasEvent(const std::string& file, const TRecording& recording, std::size_t event, const TConsole& console);

// Says why there is no result, and returns the status.
TStatus NoResult(const std::string& file, const TRecording& recording, const std::string& why, const TConsole& console);
