#include "gui/mainform/uCommandCalls.h"

#include <QCursor>
#include <QMenu>

#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uGoToDialog.h"
#include "gui/mainform/uKeysDialog.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "shell/uLayoutCommands.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uPinCommands.h"
#include "shell/uReferenceCommands.h"

namespace {

void OpenMenu(command::TTargets on, const char* name) {
  on.form.findChild<QMenu*>(name)->popup(QCursor::pos());
}

}  // namespace

namespace command {

void SwitchFilter(TTargets on, bool checked) {
  if (!ActivateFilter(on.flow.Mission(), checked, on.views)) on.parts.filter->Open();
}

void AskWhereTo(TTargets on, bool /*checked*/) {
  AskAndGoTo(on.form, on.flow.Mission(), on.views);
}

void OpenFilter(TTargets on, bool /*checked*/) {
  on.parts.filter->Open();
}

void OpenAlarmLimits(TTargets on, bool /*checked*/) {
  const auto* button = on.form.findChild<QWidget*>("dxBarAlarmLimits");
  on.parts.alarmLimits->OpenBelow(button->isVisible() ? *button : *on.form.findChild<QWidget*>("btngrpAlarm"));
}

void SyncWithEvents(TTargets on, bool /*checked*/) {
  btnToolsShockSyncWNavClick(on.flow.Mission(), on.flow.View(), on.views, on.dialogs);
}

void SyncWithSensors(TTargets on, bool /*checked*/) {
  btnToolsSensorsChartSyncWNavClick(on.flow.Mission(), on.views, on.dialogs);
}

void DefaultLayout(TTargets on, bool /*checked*/) {
  LoadDefaultLayout(on.program, on.flow.View(), on.controls);
}

void UserLayout(TTargets on, bool /*checked*/) {
  LoadUserLayout(on.program, on.flow.View(), on.flow.Mission(), on.controls, on.dialogs, on.views);
}

void SaveLayout(TTargets on, bool /*checked*/) {
  SaveUserLayout(on.program, on.flow.Mission(), on.controls, on.dialogs);
}

void SwitchKeptReference(TTargets on, bool checked) {
  KeepReference(on.flow.Mission(), checked, on.views);
}

void UseShownAsReference(TTargets on, bool /*checked*/) {
  if (!on.flow.FileShown()) return;
  on.controls.ShowNotice(UseAsReference(on.flow.Mission(), on.flow.FileName(), on.views), {});
}

void SwitchSelectedPin(TTargets on, bool /*checked*/) {
  if (!on.flow.FileShown()) return;
  on.controls.ShowNotice(SwitchPin(on.flow.Mission(), on.flow.FileName(), on.views), {});
}

void SwitchFullScreen(TTargets on, bool /*checked*/) {
  on.form.setWindowState(on.form.windowState() ^ Qt::WindowFullScreen);
}

void ListKeys(TTargets on, bool /*checked*/) {
  ShowKeys(on.form);
}

void actExportShockGridToCSVExecute(TTargets on, bool /*checked*/) {
  OpenMenu(on, "mnuExportShocks");
}

void actExportFilteredShockGridToCSVExecute(TTargets on, bool /*checked*/) {
  OpenMenu(on, "mnuExportShocks");
}

void actExportSensorsGridToCSVExecute(TTargets on, bool /*checked*/) {
  OpenMenu(on, "mnuExportSensors");
}

void actExportBatteryGridToCSVExecute(TTargets on, bool /*checked*/) {
  OpenMenu(on, "mnuExportBattery");
}

TTimeChart& ShownEventsChart(TTargets on) {
  return on.flow.View() == TView::Shock ? *on.parts.shock->Chart20() : *on.parts.overview->Chart1();
}

TTimeChart& ShownEventChart(TTargets on) {
  return on.parts.shock->ChartInFront();
}

TTimeChart& AllSensorsChart(TTargets on) {
  return *on.parts.overview->ChartAllSensors();
}

}  // namespace command
