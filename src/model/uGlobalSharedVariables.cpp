#include "model/uGlobalSharedVariables.h"

#include "model/uEvents.h"
#include "model/uOtherSensors.h"

TMissionData MissionData;
TAxesPresent AxesPresent;
std::string ReadErrorText;

void ClearMission() {
  EventList.Clear();
  SensorList.Clear();
  const bool firstRead = MissionData.bFirstReadKorvex;
  MissionData = {};
  MissionData.bFirstReadKorvex = firstRead;
  AxesPresent = {};
  ReadErrorText.clear();
}
