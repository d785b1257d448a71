#include "gui/mainform/uExportActions.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QToolButton>
#include <string_view>
#include <type_traits>

#include "analysis/uMissionDatasets.h"
#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uMainParts.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uChartImages.h"
#include "shell/uExportCommands.h"

namespace {

struct TExportRow {
  const char* action;
  const char* button;
  const char* group;
  const char* caption;
  const char* tip;
  const char* icon;
  const char* keys;
  void (*execute)(TExportCommands&, TChartImages&);
  std::string_view whyDisabled = {};  // in the tool tip while the command is disabled and its group is in sight
};
using E = TExportCommands;
using I = TChartImages;
template <auto Command>
void Do(TExportCommands& exports, TChartImages& images) {
  if constexpr (std::is_invocable_v<decltype(Command), TExportCommands&>) {
    (exports.*Command)();
  } else {
    (images.*Command)();
  }
}
constexpr auto kCsvIcon = "text-csv";
constexpr auto kImageIcon = "image-x-generic";
constexpr auto kXlsxIcon = "x-office-spreadsheet";
constexpr auto kCopyTip = "The chart as it stands on the screen, on white, into the clipboard";
constexpr auto kBitmapTip = "The chart as it stands on the screen, on white; a bitmap under the name of a JPG";
constexpr auto kPngTip = "The chart as it stands on the screen, on white";
constexpr TExportRow kExports[] = {
    {"actEventsCSVAllShocks", "barbtnEventsCSVAllShocks", "btngrpEventsExport", "All events to CSV…",
     "A CSV file for each event, in a folder of the mission", kCsvIcon, "Ctrl+Alt+C",
     Do<&E::barbtnEventsCSVAllShocksClick>},
    {"actEventsCSVVisibleShocks", "barbtnEventsCSVVisibleShocks", "btngrpEventsExport", "Visible events to CSV…",
     "A CSV file for each event that the filter lets through", kCsvIcon, "", Do<&E::barbtnEventsCSVVisibleShocksClick>},
    {"actEventsCSVCalibration", "barbtnEventsCSVCalibration", "btngrpEventsExport", "Peaks of all events to CSV…",
     "A CSV file for each event, with axis and peak in its name", kCsvIcon, "",
     Do<&E::barbtnEventsCSVCalibrationClick>},
    {"actEventsCSVCalibrationVisible", "barbtnEventsCSVCalibrationVisible", "btngrpEventsExport",
     "Calibration of visible events to CSV…",
     "A CSV file for each event that the filter lets through, with axis and peak in its name", kCsvIcon, "",
     Do<&E::barbtnEventsCSVCalibrationVisibleClick>},
    {"actEventsXLSXAllShocks", "barbtnEventsXLSXAllShocks", "btngrpEventsExport", "All events to XLSX…",
     "A workbook with a sheet for each event", kXlsxIcon, "Ctrl+Alt+X", Do<&E::barbtnEventsXLSXAllShocksClick>},
    {"actEventsXLSXVisibileShocks", "barbtnEventsXLSXVisibileShocks", "btngrpEventsExport", "Visible events to XLSX…",
     "A workbook with a sheet for each event that the filter lets through", kXlsxIcon, "",
     Do<&E::barbtnEventsXLSXVisibileShocksClick>},

    {"actExportShockToCSV", "barbtnShockExportToCSV", "btngrpShockExport", "Event to CSV…",
     "What the chart of the selected event shows, as a CSV file", kCsvIcon, "Ctrl+Shift+C",
     Do<&E::actExportShockToCSVExecute>},
    {"actShockSaveChartAsXLSX", "barbtnShockSaveChartAsXLSX", "btngrpShockExport", "Event to XLSX…",
     "What the chart of the selected event shows, as a workbook", kXlsxIcon, "Ctrl+Shift+X",
     Do<&E::barbtnShockSaveChartAsXLSXClick>},

    {"actSensorsExportToXLSX", "barbtnSensorsExportToXLSX", "btngrpSensorsExport", "Sensors and battery to XLSX…",
     "A workbook with the readings of the sensors and of the battery", kXlsxIcon, "",
     Do<&E::barbtnSensorsExportToXLSXClick>},

    {"actTablesExportCSV", "barbtnTablesExportCSV", "btngrpTables", "Shock events to CSV…",
     "The table of the events that the filter lets through, as a CSV file", kCsvIcon, "",
     Do<&E::barbtnTablesExportCSVClick>},
    {"actTablesExportCSVSensors", "barbtnTablesExportCSVSensors", "btngrpTables", "Sensors to CSV…",
     "The table of the sensors, as a CSV file", kCsvIcon, "", Do<&E::barbtnTablesExportCSVSensorsClick>},
    {"actTablesExportCSVBattery", "barbtnTablesExportCSVBattery", "btngrpTables", "Battery to CSV…",
     "The table of the battery, as a CSV file", kCsvIcon, "", Do<&E::barbtnTablesExportCSVBatteryClick>, kNoBattery},
    {"actTablesExportXLSX", "barbtnTablesExportXLSX", "btngrpTables", "Shock events to XLSX…",
     "The table of the events that the filter lets through, as a workbook", kXlsxIcon, "",
     Do<&E::barbtnTablesExportXLSXClick>},
    {"actTablesExportXLSXSensors", "barbtnTablesExportXLSXSensors", "btngrpTables", "Sensors to XLSX…",
     "The table of the sensors, as a workbook", kXlsxIcon, "", Do<&E::barbtnTablesExportXLSXSensorsClick>},
    {"actTablesExportXLSXBattery", "barbtnTablesExportXLSXBattery", "btngrpTables", "Battery to XLSX…",
     "The table of the battery, as a workbook", kXlsxIcon, "", Do<&E::barbtnTablesExportXLSXBatteryClick>, kNoBattery},

    {"actEventsCopyChart", "barbtnEventsCopyChartToClipboard", "btngrpEventsImage", "Copy picture", kCopyTip,
     "edit-copy", "", Do<&I::barbtnEventsCopyChartToClipboardClick>},
    {"actEventsSaveChart", "barbtnEventsSaveChartasJPG", "btngrpEventsImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", Do<&I::barbtnEventsSaveChartasJPGClick>},
    {"actEventsSaveChartAsPNG", "barbtnEventsSaveChartAsPNG", "btngrpEventsImage", "Picture as PNG…", kPngTip,
     kImageIcon, "", Do<&I::barbtnEventsSaveChartAsPNGClick>},
    {"actShockCopyChart", "barbtnShockCopyChartToClipboard", "btngrpShockImage", "Copy picture", kCopyTip, "edit-copy",
     "", Do<&I::barbtnShockCopyChartToClipboardClick>},
    {"actShockSaveChart", "barbtnShockSaveChartAsImage", "btngrpShockImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", Do<&I::barbtnShockSaveChartAsImageClick>},
    {"actShockSaveChartAsPNG", "barbtnShockSaveChartAsPNG", "btngrpShockImage", "Picture as PNG…", kPngTip, kImageIcon,
     "", Do<&I::barbtnShockSaveChartAsPNGClick>},
    {"actSensorsCopyChart", "barbtnSensorsCopyChartToClipboard", "btngrpSensorsImage", "Copy picture", kCopyTip,
     "edit-copy", "", Do<&I::barbtnSensorsCopyChartToClipboardClick>},
    {"actSensorsSaveChart", "barbtnSensorsSaveAsJPG", "btngrpSensorsImage", "Picture as JPG…", kBitmapTip, kImageIcon,
     "", Do<&I::barbtnSensorsSaveAsJPGClick>},
    {"actSensorsSaveChartAsPNG", "barbtnSensorsSaveAsPNG", "btngrpSensorsImage", "Picture as PNG…", kPngTip, kImageIcon,
     "", Do<&I::barbtnSensorsSaveAsPNGClick>},
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

void MakeExport(TKorvexMainForm& form, TExportCommands& exports, TChartImages& images, const TExportRow& row) {
  QAction* action = MakeAction(form, row.action, row.caption, row.keys);
  action->setIcon(Icon(row.icon));
  const QString tip = QObject::tr(row.tip);
  action->setToolTip(tip);
  if (!row.whyDisabled.empty()) {
    const QString why = QObject::tr("Not available: %1").arg(QtText(row.whyDisabled));
    QObject::connect(action, &QAction::enabledChanged, action, [action, tip, why](bool enabled) {
      action->setToolTip(enabled ? tip : QString("%1\n%2").arg(tip, why));
    });
  }
  QObject::connect(action, &QAction::triggered, &form, [&form, &exports, &images, execute = row.execute] {
    Guarded(&form, [&] { execute(exports, images); });
  });
  form.findChild<TRibbonGroup*>(row.group)->AddSmall(action, row.button);
}

void MakeMenu(TKorvexMainForm& form, const TMenuRow& row) {
  auto* menu = new QMenu(QObject::tr(row.title), &form);
  menu->setObjectName(row.name);
  menu->setAccessibleName(menu->title());
  menu->setToolTipsVisible(true);
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

void MakeExportActions(TKorvexMainForm& form, TMainParts& parts, TExportCommands& exports, TChartImages& images) {
  for (const TExportRow& row : kExports) MakeExport(form, exports, images, row);
  for (const TMenuRow& row : kMenus) MakeMenu(form, row);
  for (const TOpenRow& row : kOpeners) MakeOpener(form, row);
  parts.shock->Shocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.shock->FilteredShocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.docks.DBGrid2->SetMenu(form.findChild<QMenu*>("mnuExportSensors"));
  parts.docks.DBGrid8->SetMenu(form.findChild<QMenu*>("mnuExportBattery"));
}
