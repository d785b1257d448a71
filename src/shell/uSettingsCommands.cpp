#include "shell/uSettingsCommands.h"

#include "base/uDateTime.h"
#include "shell/uFilterCommands.h"

namespace {

// The user's limits rest while the recording's count.
void EnableAccelerationLimits(IMainScreen& screen) {
  const bool fromFile = std::get<bool>(screen.Value("chboxLoadAccAlarmFromFile"));
  for (const std::string_view spin : {"dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"}) {
    screen.SetEnabled(spin, !fromFile);
  }
}

}  // namespace

std::vector<TFigure> NamedSensorFigures(const TShownMission& mission) {
  std::vector<TFigure> figures = SensorFigures(mission.Summary);
  for (TFigure& figure : figures) {
    for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
      const std::string& name = mission.Display.AnalogNames[i];
      if (figure.label == kAnalogInputs[i] && !name.empty()) {
        figure.label = name;
        break;
      }
    }
  }
  return figures;
}

void ApplySettings(TShownMission& mission, IMainScreen& screen) {
  TDisplaySettings now = ReadDisplaySettings(mission.Data, screen);
  const bool changed = now != mission.Display;
  const bool limitsChanged = now.Limits != mission.Display.Limits;
  if (changed) {
    mission.Display = std::move(now);
    SetShortDateFormat(mission.Display.DateFormat);
    ApplyDateFormat(mission.Tables);
    ApplyAnalogNames(mission.Display.AnalogNames, mission.Tables);
  }
  EnableAccelerationLimits(screen);
  if (!changed) return;
  screen.RefreshDisplay(mission);
  if (limitsChanged) AlarmLimitsChanged(mission, screen);
}
