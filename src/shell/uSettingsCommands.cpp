#include "shell/uSettingsCommands.h"

#include <fmt/format.h>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uOrderingCommands.h"

std::vector<TFigure> NamedSensorFigures(const TShownMission& mission) {
  std::vector<TFigure> figures = SensorFigures(mission.Summary);
  for (TFigure& figure : figures) {
    for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
      const std::string& name = mission.Display.AnalogNames[i];
      if (figure.label == kAnalogInputs[i]->sensorName && !name.empty()) {
        figure.label = name;
        break;
      }
    }
  }
  return figures;
}

void ShowLimitsInForce(const TShownMission* mission, IControls& screen) {
  const bool fromFile = mission != nullptr && mission->Display.AccelerationFromFile;
  std::string text;
  if (fromFile) {
    const TLimits& limits = mission->Display.LimitsOf(TQuantity::Acceleration);
    text = fmt::format("from the file: {} … {} g", GeneralFloat(limits.least), GeneralFloat(limits.largest));
  } else if (mission != nullptr && mission->Display.NoLevelInFile) {
    text = "the file names no level";
  }
  screen.SetText("lblAlarmAccFromFile", text);
  for (const std::string_view edit : {"dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"}) {
    screen.SetEnabled(edit, !fromFile);
  }
}

void ApplySettings(TShownMission& mission, IControls& screen, IMissionViews& views) {
  TDisplaySettings now = ReadDisplaySettings(mission.Data, screen);
  if (now == mission.Display) return;
  const bool limitsChanged = now.Limits != mission.Display.Limits;
  mission.Display = std::move(now);
  SetShortDateFormat(mission.Display.DateFormat);
  ApplyDateFormat(mission.Tables);
  ApplyAnalogNames(mission.Display.AnalogNames, mission.Tables);
  views.RefreshDisplay(mission);
  if (limitsChanged) AlarmLimitsChanged(mission, views);
}
