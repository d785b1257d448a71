#include "gui/mainform/uCommands.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMenu>
#include <QToolButton>
#include <vector>

#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uEventsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"
#include "gui/docks/uDockPanels.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uNotice.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/report/uEventCardList.h"
#include "gui/report/uReportPanel.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"
#include "gui/welcome/uWellcomePanel.h"

namespace {

using namespace command;

struct TTabRow {
  const char* name;
  const char* caption;
};
constexpr TTabRow kTabs[] = {{"tabFile", "File"},    {"tabHome", "Home"},       {"tabEvents", "Events"},
                             {"tabShock", "Shock"},  {"tabSensors", "Sensors"}, {"tabTables", "Tables"},
                             {"tabReport", "Report"}};

// The menu of a table.
struct TMenuRow {
  const char* name;
  const char* title;
  std::vector<const char*> entries;  // actions
  std::vector<const char*> openers;  // actions that open it
};

// The tool tip of a disabled command says why. A command without a need is disabled while its group is hidden, which
// shows no tip, and while a recording is read.
void ShowWhyDisabled(QAction* action, unsigned traits) {
  QString why = (traits & kOfFile) != 0 ? QObject::tr("no recording was opened, or one is being read")
                                        : QObject::tr("a recording is being read");
  for (const TNeed& need : Needs()) {
    if ((traits & need.trait) != 0) why = QtText(need.why);
  }
  const QString enabledTip = action->toolTip();
  const QString disabledTip = QString("%1\n%2").arg(enabledTip, QObject::tr("Not available: %1").arg(why));
  QObject::connect(action, &QAction::enabledChanged, action, [action, enabledTip, disabledTip](bool enabled) {
    action->setToolTip(enabled ? enabledTip : disabledTip);
  });
}

void Connect(QAction* action, const TCommandTargets& targets, const TCommand& row) {
  if (row.execute == nullptr) return;
  // Whatever switches a kept one does what a click does: a key, the settings, a click on a legend.
  const auto signal = (row.traits & kKept) != 0 ? &QAction::toggled : &QAction::triggered;
  QObject::connect(action, signal, &targets.form, [targets, execute = row.execute](bool checked) {
    Guarded(&targets.form, [&] { execute(targets, checked); });
  });
}

QAction* MakeAction(const TCommandTargets& targets, const TCommand& row, const TRibbonGroup* group) {
  const QString caption = QObject::tr(row.caption);
  const bool ofChart = (row.traits & kOfChart) != 0;
  auto* action =
      new QAction(ofChart ? QString("%1: %2").arg(group->accessibleName(), caption) : caption, &targets.form);
  action->setObjectName(row.action);
  // Under an icon the text stands without the dots that announce a dialog.
  action->setIconText(QString(caption).remove('&').remove("…"));
  if (*row.tip != '\0') action->setToolTip(QObject::tr(row.tip));
  action->setCheckable((row.traits & (kCheckable | kView | kKept)) != 0);
  action->setChecked((row.traits & kOn) != 0);
  action->setProperty(kTraits, row.traits);
  ShowWhyDisabled(action, row.traits);
  if ((row.traits & kOfFile) != 0) action->setEnabled(false);
  if ((row.traits & kKept) != 0) {
    action->setProperty(kKeptBySettings, true);
    row.execute(targets, action->isChecked());
  }
  // What the last command wrote is not said beside this one.
  QObject::connect(action, &QAction::triggered, targets.parts.notice, &TNotice::Clear);
  Connect(action, targets, row);
  return action;
}

QAction* ActionOf(const TCommandTargets& targets, const TCommand& row, const TRibbonGroup* group) {
  if ((row.traits & kAgain) != 0) return targets.form.findChild<QAction*>(row.action);
  QAction* action = (row.traits & kPanel) != 0 ? targets.form.findChild<QDockWidget*>(row.action)->toggleViewAction()
                                               : MakeAction(targets, row, group);
  if ((row.traits & kPanel) != 0) action->setToolTip(QObject::tr(row.tip));
  if (*row.icon != '\0') action->setIcon(Icon(row.icon));
  if (*row.keys != '\0') action->setShortcut(QKeySequence(row.keys));
  targets.form.addAction(action);
  return action;
}

void MakeMenus(TKorvexMainForm& form, TMainParts& parts) {
  const TMenuRow rows[] = {
      {"mnuExportShocks",
       "Export the shock events",
       {"actTablesExportCSV", "actTablesExportXLSX"},
       {"actExportShockGridToCSV", "actExportFilteredShockGridToCSV"}},
      {"mnuExportAnalysis",
       "Export the shock analysis",
       {"actTablesExportCSVAnalysis", "actTablesExportXLSXAnalysis"},
       {}},
      {"mnuExportSensors",
       "Export the sensors",
       {"actTablesExportCSVSensors", "actTablesExportXLSXSensors"},
       {"actExportSensorsGridToCSV"}},
      {"mnuExportBattery",
       "Export the battery",
       {"actTablesExportCSVBattery", "actTablesExportXLSXBattery"},
       {"actExportBatteryGridToCSV"}},
  };
  for (const TMenuRow& row : rows) {
    auto* menu = new QMenu(QObject::tr(row.title), &form);
    menu->setObjectName(row.name);
    menu->setAccessibleName(menu->title());
    menu->setToolTipsVisible(true);
    for (const char* entry : row.entries) menu->addAction(form.findChild<QAction*>(entry));
    // A menu can be opened when its entries can be chosen.
    for (const char* opener : row.openers) {
      QObject::connect(menu->actions().constFirst(), &QAction::enabledChanged, form.findChild<QAction*>(opener),
                       &QAction::setEnabled);
    }
  }
  parts.shock->Shocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.shock->FilteredShocks()->SetMenu(form.findChild<QMenu*>("mnuExportShocks"));
  parts.shock->Analysis()->SetMenu(form.findChild<QMenu*>("mnuExportAnalysis"));
  parts.docks.DBGrid2->SetMenu(form.findChild<QMenu*>("mnuExportSensors"));
  parts.docks.DBGrid8->SetMenu(form.findChild<QMenu*>("mnuExportBattery"));
  for (TGrid* grid : {parts.shock->Shocks(), parts.shock->FilteredShocks(), parts.overview->MostImportant()}) {
    grid->AddToMenu({form.findChild<QAction*>("actEventPin"), form.findChild<QAction*>("actNoteAdd"),
                     form.findChild<QAction*>("actNotes")});
  }
  parts.shock->Analysis()->AddToMenu({form.findChild<QAction*>("actEventPin")});
  parts.report->Cards()->addAction(form.findChild<QAction*>("actEventPin"));
}

// A click on a legend switches as the button does.
void FollowLegends(TKorvexMainForm& form, const TMainParts& parts) {
  const auto follow = [&form](TSeries series, bool visible) {
    constexpr const char* kActions[] = {"actShockShowX", "actShockShowY", "actShockShowZ", "actShockShowTotal"};
    form.findChild<QAction*>(kActions[static_cast<std::size_t>(series)])->setChecked(visible);
  };
  for (const TAccelerationChart* chart : parts.shock->EventCharts()) {
    QObject::connect(chart, &TAccelerationChart::SeriesVisibleChanged, &form, follow);
  }
  // The two events charts look alike.
  TEventsChart* const overview = parts.overview->Chart1();
  TEventsChart* const shock = parts.shock->Chart20();
  QObject::connect(overview, &TEventsChart::SeriesVisibleChanged, shock, &TEventsChart::SetSeriesVisible);
  QObject::connect(shock, &TEventsChart::SeriesVisibleChanged, overview, &TEventsChart::SetSeriesVisible);
}

void FillBackstageAndWelcome(TKorvexMainForm& form, TMainParts& parts) {
  auto* open = form.findChild<QAction*>("actFileOpen");
  auto* demo = form.findChild<QAction*>("actFileOpenDemo");
  auto* exit = form.findChild<QAction*>("actFileExit");
  exit->setMenuRole(QAction::QuitRole);
  form.insertActions(exit, {parts.ribbon->FoldAction(), parts.ribbon->BackstageAction()});
  parts.backstage->AddAction(open, "backstageOpen");
  parts.backstage->AddAction(demo, "backstageDemo");
  parts.backstage->AddAction(exit, "backstageExit");
  parts.welcome->AddButton(open, "btnWellcomeOpen");
  parts.welcome->AddButton(demo, "btnWellcomeDemo");
}

}  // namespace

void MakeCommands(const TCommandTargets& targets) {
  TKorvexMainForm& form = targets.form;
  TRibbon& ribbon = *targets.parts.ribbon;
  for (const auto& [name, caption] : kTabs) ribbon.AddTab(name, QObject::tr(caption));
  for (const TGroup& group : Groups()) ribbon.AddGroup(group.tab, group.name, QObject::tr(group.title));
  auto* views = new QActionGroup(&form);
  auto* eventModes = new QActionGroup(&form);
  eventModes->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
  for (const TCommand& row : Commands()) {
    auto* group = row.group == nullptr ? nullptr : form.findChild<TRibbonGroup*>(row.group);
    QAction* action = ActionOf(targets, row, group);
    if ((row.traits & kView) != 0) views->addAction(action);
    if ((row.traits & kEventMode) != 0) eventModes->addAction(action);
    if (group == nullptr) continue;
    if ((row.traits & kLarge) != 0) {
      group->AddLarge(action, row.button);
    } else {
      group->AddSmall(action, row.button);
    }
  }
  MakeMenus(form, targets.parts);
  FollowLegends(form, targets.parts);
  FillBackstageAndWelcome(form, targets.parts);
}
