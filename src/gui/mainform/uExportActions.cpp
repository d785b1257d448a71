#include "gui/mainform/uExportActions.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QToolButton>

#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uMainParts.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uExportCommands.h"

namespace {

struct TGroupRow {
  const char* tab;
  const char* name;
  const char* title;
};
constexpr TGroupRow kGroups[] = {{"tabEvents", "btngrpEventsExport", "Export events"},
                                 {"tabShock", "btngrpShockExport", "Export selected event"},
                                 {"tabSensors", "btngrpSensorsExport", "Export sensors"},
                                 {"tabTables", "btngrpTables", "Export tables"}};

struct TExportRow {
  const char* action;
  const char* button;
  const char* group;
  const char* caption;
  const char* tip;
  const char* icon;
  const char* keys;
  void (TExportCommands::*execute)();
};
using E = TExportCommands;
constexpr auto kCsvIcon = "text-csv";
constexpr auto kXlsxIcon = "x-office-spreadsheet";
constexpr TExportRow kExports[] = {
    {"actEventsCSVAllShocks", "barbtnEventsCSVAllShocks", "btngrpEventsExport", "All events to CSV…",
     "A CSV file for each event, in a folder of the mission", kCsvIcon, "Ctrl+Alt+C",
     &E::barbtnEventsCSVAllShocksClick},
    {"actEventsCSVVisibleShocks", "barbtnEventsCSVVisibleShocks", "btngrpEventsExport", "Visible events to CSV…",
     "A CSV file for each event that the filter lets through", kCsvIcon, "", &E::barbtnEventsCSVVisibleShocksClick},
    {"actEventsCSVCalibration", "barbtnEventsCSVCalibration", "btngrpEventsExport", "Peaks of all events to CSV…",
     "A CSV file for each event, with axis and peak in its name", kCsvIcon, "", &E::barbtnEventsCSVCalibrationClick},
    {"actEventsCSVCalibrationVisible", "barbtnEventsCSVCalibrationVisible", "btngrpEventsExport",
     "Calibration of visible events to CSV…",
     "A CSV file for each event that the filter lets through, with axis and peak in its name", kCsvIcon, "",
     &E::barbtnEventsCSVCalibrationVisibleClick},
    {"actEventsXLSXAllShocks", "barbtnEventsXLSXAllShocks", "btngrpEventsExport", "All events to XLSX…",
     "A workbook with a sheet for each event", kXlsxIcon, "Ctrl+Alt+X", &E::barbtnEventsXLSXAllShocksClick},
    {"actEventsXLSXVisibileShocks", "barbtnEventsXLSXVisibileShocks", "btngrpEventsExport", "Visible events to XLSX…",
     "A workbook with a sheet for each event that the filter lets through", kXlsxIcon, "",
     &E::barbtnEventsXLSXVisibileShocksClick},

    {"actExportShockToCSV", "barbtnShockExportToCSV", "btngrpShockExport", "Event to CSV…",
     "What the chart of the selected event shows, as a CSV file", kCsvIcon, "Ctrl+Shift+C",
     &E::actExportShockToCSVExecute},
    {"actShockSaveChartAsXLSX", "barbtnShockSaveChartAsXLSX", "btngrpShockExport", "Event to XLSX…",
     "What the chart of the selected event shows, as a workbook", kXlsxIcon, "Ctrl+Shift+X",
     &E::barbtnShockSaveChartAsXLSXClick},

    {"actSensorsExportToXLSX", "barbtnSensorsExportToXLSX", "btngrpSensorsExport", "Sensors and battery to XLSX…",
     "A workbook with the readings of the sensors and of the battery", kXlsxIcon, "",
     &E::barbtnSensorsExportToXLSXClick},

    {"actTablesExportCSV", "barbtnTablesExportCSV", "btngrpTables", "Shock events to CSV…",
     "The table of the events that the filter lets through, as a CSV file", kCsvIcon, "",
     &E::barbtnTablesExportCSVClick},
    {"actTablesExportCSVSensors", "barbtnTablesExportCSVSensors", "btngrpTables", "Sensors to CSV…",
     "The table of the sensors, as a CSV file", kCsvIcon, "", &E::barbtnTablesExportCSVSensorsClick},
    {"actTablesExportCSVBattery", "barbtnTablesExportCSVBattery", "btngrpTables", "Battery to CSV…",
     "The table of the battery, as a CSV file", kCsvIcon, "", &E::barbtnTablesExportCSVBatteryClick},
    {"actTablesExportXLSX", "barbtnTablesExportXLSX", "btngrpTables", "Shock events to XLSX…",
     "The table of the events that the filter lets through, as a workbook", kXlsxIcon, "",
     &E::barbtnTablesExportXLSXClick},
    {"actTablesExportXLSXSensors", "barbtnTablesExportXLSXSensors", "btngrpTables", "Sensors to XLSX…",
     "The table of the sensors, as a workbook", kXlsxIcon, "", &E::barbtnTablesExportXLSXSensorsClick},
    {"actTablesExportXLSXBattery", "barbtnTablesExportXLSXBattery", "btngrpTables", "Battery to XLSX…",
     "The table of the battery, as a workbook", kXlsxIcon, "", &E::barbtnTablesExportXLSXBatteryClick},
};

struct TMenuRow {
  const char* name;
  const char* title;
  const char* csv;  // actions
  const char* xlsx;
};
constexpr TMenuRow kMenus[] = {
    {"mnuExportShocks", "Export the shock events", "actTablesExportCSV", "actTablesExportXLSX"},
    {"mnuExportSensors", "Export the sensors", "actTablesExportCSVSensors", "actTablesExportXLSXSensors"},
    {"mnuExportBattery", "Export the battery", "actTablesExportCSVBattery", "actTablesExportXLSXBattery"},
};

// Actions that open a table's menu at the mouse cursor.
struct TOpenRow {
  const char* action;
  const char* menu;
  const char* caption;
  const char* keys;
};
constexpr TOpenRow kOpeners[] = {
    {"actExportShockGridToCSV", "mnuExportShocks", "Export the shock events…", "Ctrl+Alt+E"},
    {"actExportFilteredShockGridToCSV", "mnuExportShocks", "Export the filtered shock events…", "Ctrl+Alt+F"},
    {"actExportSensorsGridToCSV", "mnuExportSensors", "Export the sensors…", "Ctrl+Alt+S"},
    {"actExportBatteryGridToCSV", "mnuExportBattery", "Export the battery…", "Ctrl+Alt+B"},
};

QAction* MakeAction(TKorvexMainForm& form, const char* name, const char* caption, const char* keys) {
  auto* action = new QAction(QObject::tr(caption), &form);
  action->setObjectName(name);
  action->setIconText(QObject::tr(caption).remove("…"));
  if (*keys != '\0') action->setShortcut(QKeySequence(keys));
  form.addAction(action);
  return action;
}

void MakeExport(TKorvexMainForm& form, TExportCommands& commands, const TExportRow& row) {
  QAction* action = MakeAction(form, row.action, row.caption, row.keys);
  action->setIcon(Icon(row.icon));
  action->setToolTip(QObject::tr(row.tip));
  QObject::connect(action, &QAction::triggered, &form,
                   [&form, &commands, execute = row.execute] { Guarded(&form, [&] { (commands.*execute)(); }); });
  form.findChild<TRibbonGroup*>(row.group)->AddSmall(action, row.button);
}

void MakeMenu(TKorvexMainForm& form, const TMenuRow& row) {
  auto* menu = new QMenu(QObject::tr(row.title), &form);
  menu->setObjectName(row.name);
  menu->setAccessibleName(menu->title());
  for (const char* action : {row.csv, row.xlsx}) menu->addAction(form.findChild<QAction*>(action));
}

// A menu can be opened when its entries can be chosen.
void MakeOpener(TKorvexMainForm& form, const TOpenRow& row) {
  QAction* action = MakeAction(form, row.action, row.caption, row.keys);
  auto* menu = form.findChild<QMenu*>(row.menu);
  QObject::connect(action, &QAction::triggered, menu, [menu] { menu->popup(QCursor::pos()); });
  const QAction* entry = menu->actions().constFirst();
  QObject::connect(entry, &QAction::enabledChanged, action, &QAction::setEnabled);
}

}  // namespace

void MakeExportActions(TKorvexMainForm& form, TMainParts& parts, TExportCommands& commands) {
  for (const auto& [tab, name, title] : kGroups) parts.ribbon->AddGroup(tab, name, QObject::tr(title));
  for (const TExportRow& row : kExports) MakeExport(form, commands, row);
  for (const TMenuRow& row : kMenus) MakeMenu(form, row);
  for (const TOpenRow& row : kOpeners) MakeOpener(form, row);
  parts.shock->Shocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.shock->FilteredShocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.docks.DBGrid2->SetMenu(form.findChild<QMenu*>("mnuExportSensors"));
  parts.docks.DBGrid8->SetMenu(form.findChild<QMenu*>("mnuExportBattery"));
}
