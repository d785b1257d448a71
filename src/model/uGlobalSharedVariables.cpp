#include "model/uGlobalSharedVariables.h"

#include "model/uEvents.h"
#include "model/uOtherSensors.h"

TMissionData MissionData;
TAxesPresent AxesPresent;
std::string ReadErrorText;

void ClearMission() {
  EventList.Clear();
  SensorList.Clear();
  MissionData = {};
  AxesPresent = {};
  ReadErrorText.clear();
}
