#include "gui/mainform/uMainActions.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QToolButton>

#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/docks/uDockPanels.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uMainParts.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/welcome/uWellcomePanel.h"

namespace {

struct TTabRow {
  const char* name;
  const char* caption;
};
constexpr TTabRow kTabs[] = {{"tabFile", "File"},    {"tabHome", "Home"},       {"tabEvents", "Events"},
                             {"tabShock", "Shock"},  {"tabSensors", "Sensors"}, {"tabTables", "Tables"},
                             {"tabReport", "Report"}};

struct TGroupRow {
  const char* tab;
  const char* name;
  const char* title;
};
// Every group of the ribbon, in the order in which they stand.
constexpr TGroupRow kGroups[] = {{"tabHome", "btngrpFile", "File"},
                                 {"tabHome", "btngrpView", "View"},
                                 {"tabHome", "btngrpNavigator", "Navigator"},
                                 {"tabHome", "btngrpFiltering", "Filtering"},
                                 {"tabHome", "btngrpAlarm", "Alarm"},
                                 {"tabHome", "btngrpLayout", "Layout"},
                                 {"tabEvents", "btngrpEventsChart", "Events chart"},
                                 {"tabEvents", "btngrpEventsExport", "Export events"},
                                 {"tabEvents", "btngrpEventsImage", "Chart picture"},
                                 {"tabEvents", "btngrpEvents", "Overview"},
                                 {"tabShock", "btngrpShock", "Selected event"},
                                 {"tabShock", "btngrpFilter", "Filter and spectrum"},
                                 {"tabShock", "btngrpShockSeries", "Selected event chart"},
                                 {"tabShock", "btngrpShockTools", "Selected event tools"},
                                 {"tabShock", "btngrpShockExport", "Export selected event"},
                                 {"tabShock", "btngrpShockImage", "Chart picture"},
                                 {"tabShock", "btngrpShockOutput", "Shock view"},
                                 {"tabSensors", "btngrpSensorsTools", "Sensors chart"},
                                 {"tabSensors", "btngrpSensorsAxes", "Axis zoom locks"},
                                 {"tabSensors", "btngrpSensorsExport", "Export sensors"},
                                 {"tabSensors", "btngrpSensorsImage", "Chart picture"},
                                 {"tabTables", "btngrpTables", "Export tables"},
                                 {"tabReport", "btngrpReport", "Report"}};

using TExecute = void (TKorvexMainForm::*)();

struct TActionRow {
  const char* action;
  const char* button;  // none: only a shortcut
  const char* group;
  const char* caption;
  const char* icon;
  const char* keys;
  enum class TKind { Command, View, Toggle } kind;
  bool large;
  TExecute execute;
};
using F = TKorvexMainForm;
using enum TActionRow::TKind;
constexpr TActionRow kActions[] = {
    {"actFileOpen", "dxBarOpenNewFile", "btngrpFile", "&Open…", "document-open", "Ctrl+O", Command, true,
     &F::actFileOpenExecute},
    {"actFileOpenDemo", "barbtnlrgOpenDemoFile", "btngrpFile", "&Demo recording…", "media-playback-start", "Ctrl+D",
     Command, true, &F::barbtnlrgOpenDemoFileClick},
    {"actFileReload", "dxBarReload", "btngrpFile", "&Reload", "view-refresh", "F5", Command, false,
     &F::actFileReloadExecute},
    {"actFileClose", nullptr, "", "&Close file", "document-close", "Ctrl+W", Command, false, &F::actFileCloseExecute},
    {"actSetViewOverview", "dxBarOverview", "btngrpView", "O&verview", "view-statistics", "Ctrl+1", View, true,
     &F::actSetViewOverviewExecute},
    {"actSetViewShock", "dxBarLargeShockView", "btngrpView", "&Shock events", "office-chart-line", "Ctrl+2", View, true,
     &F::actSetViewShockExecute},
    {"actSetViewReport", "dxBarReport", "btngrpView", "Re&port", "document-preview", "Ctrl+3", View, true,
     &F::actSetViewReportExecute},
    {"actNavSetIntAll", "dxBarNavSetIntAll", "btngrpNavigator", "&All", "zoom-fit-width", "Ctrl+0", Command, true,
     &F::actNavSetIntAllExecute},
    {"actNavSetIntYear", "dxBarNavSetIntYear", "btngrpNavigator", "Year", "view-calendar", "Shift+Y", Command, false,
     &F::actNavSetIntYearExecute},
    {"actNavSetIntMonth", "dxBarNavSetIntMonth", "btngrpNavigator", "Month", "view-calendar-month", "Shift+M", Command,
     false, &F::actNavSetIntMonthExecute},
    {"actNavSetIntWeek", "dxBarNavSetIntWeek", "btngrpNavigator", "Week", "view-calendar-week", "Shift+W", Command,
     false, &F::actNavSetIntWeekExecute},
    {"actNavSetIntDay", "dxBarNavSetIntDay", "btngrpNavigator", "Day", "view-calendar-day", "Shift+D", Command, false,
     &F::actNavSetIntDayExecute},
    {"actNavSetIntHour", "dxBarNavSetIntHour", "btngrpNavigator", "Hour", "chronometer", "Shift+H", Command, false,
     &F::actNavSetIntHourExecute},
    {"actNavSetIntMin", "dxBarNavSetIntMin", "btngrpNavigator", "Min", "chronometer", "Shift+I", Command, false,
     &F::actNavSetIntMinExecute},
    {"actNavRwd", "dxBarNavRwd", "btngrpNavigator", "Rewind", "media-seek-backward", "Ctrl+Left", Command, false,
     &F::actNavRwdExecute},
    {"actNavFwd", "dxBarNavFwd", "btngrpNavigator", "Forward", "media-seek-forward", "Ctrl+Right", Command, false,
     &F::actNavFwdExecute},
    {"actSyncWithEvents", "btnToolsShockSyncWNav", "btngrpNavigator", "Sync to events", "zoom-select-x", "Ctrl+E",
     Command, false, &F::btnToolsShockSyncWNavClick},
    {"actSyncWithSensors", "btnToolsSensorsChartSyncWNav", "btngrpNavigator", "Sync to sensors", "zoom-select-x",
     "Ctrl+Shift+E", Command, false, &F::btnToolsSensorsChartSyncWNavClick},
    {"actFilterEdit", "dxBarFilterEdit", "btngrpFiltering", "Edit &filter", "view-filter", "Ctrl+F", Command, true,
     &F::actFilterEditExecute},
    {"actFilterActive", "dxBarFilterActive", "btngrpFiltering", "Filter &on", "dialog-ok-apply", "Ctrl+Shift+F", Toggle,
     true, &F::actFilterActiveExecute},
    {"actAlarmSet", "barbtnlrgAlarm", "btngrpAlarm", "&Alarm", "notifications", "Ctrl+Shift+A", Toggle, true,
     &F::actAlarmSetExecute},
    {"actAlarmLimits", "dxBarAlarmLimits", "btngrpAlarm", "Alarm limi&ts…", "configure", "Ctrl+Alt+A", Command, true,
     &F::actAlarmLimitsExecute},
    {"actDefaultLayout", "dxBarDefaultLayout", "btngrpLayout", "Default &layout", "view-restore", "Ctrl+Shift+L",
     Command, false, &F::actDefaultLayoutExecute},
    {"actLoadUserLayout", "dxBarLoadUserLayout", "btngrpLayout", "Load &user layout", "document-revert", "Ctrl+U",
     Command, false, &F::actLoadUserLayoutExecute},
    {"actSaveUserLayout", "dxBarSaveUserLayout", "btngrpLayout", "Save user la&yout", "document-save", "Ctrl+Shift+U",
     Command, false, &F::actSaveUserLayoutExecute},
    {"actOverviewPrint", "dxBarOverviewPrint", "btngrpEvents", "Print…", "document-print", "", Command, true,
     &F::actPrintViewExecute},
    {"actOverviewExport", "dxBarOverviewExport", "btngrpEvents", "Save as PDF…", "document-export", "", Command, true,
     &F::actExportViewExecute},
    {"actPreviousEvent", "dxBarPreviousEvent", "btngrpShock", "Previous event", "go-previous", "P", Command, true,
     &F::actPreviousEventExecute},
    {"actNextEvent", "dxBarNextEvent", "btngrpShock", "Next event", "go-next", "N", Command, true,
     &F::actNextEventExecute},
    {"actShockPrint", "dxBarShockPrint", "btngrpShockOutput", "Print…", "document-print", "", Command, true,
     &F::actPrintViewExecute},
    {"actShockExport", "dxBarShockExport", "btngrpShockOutput", "Save as PDF…", "document-export", "", Command, true,
     &F::actExportViewExecute},
    {"actReportPrint", "dxBarReportPrintOnly", "btngrpReport", "Print…", "document-print", "", Command, true,
     &F::actPrintViewExecute},
    {"actReportExport", "dxBarReportExportOnly", "btngrpReport", "Save as PDF…", "document-export", "", Command, true,
     &F::actExportViewExecute},
    {"actFullScreen", nullptr, "", "Full screen", "", "F11", Command, false, &F::actFullScreenExecute},
    {"actKeys", nullptr, "", "All keys", "", "F2", Command, false, &F::actKeysExecute},
};

QAction* MakeAction(TKorvexMainForm& form, const TActionRow& row) {
  auto* action = new QAction(QObject::tr(row.caption), &form);
  action->setObjectName(row.action);
  // Under an icon the text stands without the dots that announce a dialog.
  action->setIconText(QObject::tr(row.caption).remove('&').remove("…"));
  if (*row.icon != '\0') action->setIcon(Icon(row.icon));
  if (*row.keys != '\0') action->setShortcut(QKeySequence(row.keys));
  action->setCheckable(row.kind != Command);
  QObject::connect(action, &QAction::triggered, &form,
                   [&form, execute = row.execute] { Guarded(&form, [&] { (form.*execute)(); }); });
  form.addAction(action);
  return action;
}

void AddDockButtons(TKorvexMainForm& form, TMainParts& parts) {
  struct TDockRow {
    QDockWidget* panel;
    const char* button;
    const char* group;
    const char* keys;
    const char* icon;
  };
  const TDockRow rows[] = {
      {parts.docks.navigator, "dxBarShowNavigator", "btngrpLayout", "Ctrl+Shift+N", "view-calendar-timeline"},
      {parts.docks.missionDetails, "dxBarShowMissionDetails", "btngrpLayout", "Ctrl+Shift+M", "view-list-text"},
      {parts.docks.sensorGridTemp, "dxBarShowSensorGrid", "btngrpLayout", "Ctrl+Shift+S", "view-list-details"},
      {parts.docks.sensorGridBattery, "dxBarShowBatteryGrid", "btngrpLayout", "Ctrl+Shift+B", "battery-100"},
  };
  for (const TDockRow& row : rows) {
    QAction* action = row.panel->toggleViewAction();
    action->setShortcut(QKeySequence(row.keys));
    action->setIcon(Icon(row.icon));
    form.addAction(action);
    form.findChild<TRibbonGroup*>(row.group)->AddSmall(action, row.button);
  }
}

}  // namespace

void MakeMainActions(TKorvexMainForm& form, TMainParts& parts) {
  for (const auto& [name, caption] : kTabs) parts.ribbon->AddTab(name, QObject::tr(caption));
  for (const auto& [tab, name, title] : kGroups) parts.ribbon->AddGroup(tab, name, QObject::tr(title));
  auto* views = new QActionGroup(&form);
  for (const TActionRow& row : kActions) {
    QAction* action = MakeAction(form, row);
    if (row.kind == View) views->addAction(action);
    if (*row.group == '\0') continue;
    auto* group = form.findChild<TRibbonGroup*>(row.group);
    if (row.large) {
      group->AddLarge(action, row.button);
    } else {
      group->AddSmall(action, row.button);
    }
  }
  AddDockButtons(form, parts);
  form.addAction(parts.ribbon->FoldAction());
  form.addAction(parts.ribbon->BackstageAction());

  auto* open = form.findChild<QAction*>("actFileOpen");
  auto* demo = form.findChild<QAction*>("actFileOpenDemo");
  auto* exit = new QAction(Icon("application-exit"), QObject::tr("E&xit"), &form);
  exit->setObjectName("actFileExit");
  exit->setMenuRole(QAction::QuitRole);
  exit->setShortcut(QKeySequence("Ctrl+Q"));
  QObject::connect(exit, &QAction::triggered, &form, &QWidget::close);
  form.addAction(exit);
  parts.backstage->AddAction(open, "backstageOpen");
  parts.backstage->AddAction(demo, "backstageDemo");
  parts.backstage->AddAction(exit, "backstageExit");
  parts.welcome->AddButton(open, "btnWellcomeOpen");
  parts.welcome->AddButton(demo, "btnWellcomeDemo");
}
