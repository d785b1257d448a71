#include "shell/uSettingsCommands.h"

#include <fmt/format.h>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "shell/uFilterCommands.h"

namespace {

// The limits of the recording stand beside the user's, which rest.
void TellAccelerationLimits(const TShownMission& mission, IMainScreen& screen) {
  const bool fromFile = std::get<bool>(screen.Value("chboxLoadAccAlarmFromFile"));
  for (const std::string_view spin : {"dxBarSpinAlarmAccMin", "dxBarSpinAlarmAccMax"}) {
    screen.SetEnabled(spin, !fromFile);
  }
  std::string text;
  if (fromFile && mission.Data.bValid) {
    const TLimits& limits = mission.Display.LimitsOf(TQuantity::Acceleration);
    text = fmt::format("from the file: {} … {} g", GeneralFloat(limits.least), GeneralFloat(limits.largest));
  }
  screen.SetText("lblAlarmAccFromFile", text);
}

}  // namespace

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
  TellAccelerationLimits(mission, screen);
  if (!changed) return;
  screen.RefreshDisplay(mission);
  if (limitsChanged) AlarmLimitsChanged(mission, screen);
}
