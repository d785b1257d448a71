#include "shell/uSettingsCommands.h"

#include <fmt/format.h>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uOrderingCommands.h"

TFormats FormatsOf(const TDisplaySettings& settings) {
  return [&settings](TQuantity quantity) { return settings.FormatOf(quantity); };
}

std::vector<TFigure> NamedSensorFigures(const TShownMission& mission) {
  std::vector<TFigure> figures = SensorFigures(mission.Summary, FormatsOf(mission.Display));
  for (TFigure& figure : figures) {
    for (std::size_t i = 0; i < kAnalogInputs.size(); ++i) {
      const std::string& name = mission.Display.analogNames[i];
      if (figure.label == kAnalogInputs[i]->sensorName && !name.empty()) {
        figure.label = name;
        break;
      }
    }
  }
  return figures;
}

void ShowLimitsInForce(const TShownMission* mission, IControls& screen) {
  const bool wanted = mission != nullptr && mission->Display.accelerationFromFile;
  const bool fromFile = wanted && mission->Display.fileNamesLimits;
  std::string text;
  if (fromFile) {
    const TLimits& limits = mission->Display.LimitsOf(TQuantity::Acceleration);
    text = fmt::format("from the file: {} … {} g", GeneralFloat(limits.min), GeneralFloat(limits.max));
  } else if (wanted) {
    text = "the file names no level";
  }
  screen.SetText("lblAlarmAccFromFile", text);
  for (const std::string_view edit : {"dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"}) {
    screen.SetEnabled(edit, !fromFile);
  }
}

void ApplySettings(TShownMission& mission, IMissionViews& views) {
  UpdateProfile(mission.Settings.display);
  TDisplaySettings now = DisplayInForce(mission.Settings.display, mission.Data);
  if (now == mission.Display) return;
  const bool limitsChanged = now.limits != mission.Display.limits;
  mission.Display = std::move(now);
  SetShortDateFormat(std::string(mission.Display.DateFormat()));
  ApplyDateFormat(mission.Tables);
  if (mission.Analysis) ApplyDateFormat(*mission.Analysis);
  ApplyAnalogNames(mission.Display.analogNames, mission.Tables);
  views.RefreshDisplay(mission);
  if (limitsChanged) AlarmLimitsChanged(mission, views);
}
