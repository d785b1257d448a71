#include "gui/mainform/uChartMenus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "gui/charts/uSensorsChart.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uNamedChild.h"
#include "gui/mainform/uStatisticsDialog.h"

namespace {

constexpr qsizetype kMaxSensors = 40;  // in a menu
constexpr std::string_view kNavigator = "ChartNavigator";

// Names of the window's actions; "-" parts them.
constexpr auto kEventsMenu =
    "actPreviousEvent actNextEvent - actShockEventsToolsIndicator actSyncWithEvents - actEventPin actNoteAdd actNotes "
    "- "
    "actEventsCopyChart actEventsSaveChart actEventsSaveChartAsPNG actEventsSaveChartAsSVG - actEventsCSVVisibleShocks "
    "actEventsXLSXVisibileShocks";
constexpr auto kOfShock =
    "actShockShowX actShockShowY actShockShowZ actShockShowTotal - actShockHPFilter actShockSpecAnalysis "
    "actShockResponse actShockToolsPoints actShockToolsIndicator actShockToolsNearest - actEventPin actNoteAdd - "
    "actShockCopyChart actShockSaveChart actShockSaveChartAsPNG actShockSaveChartAsSVG - actExportShockToCSV "
    "actShockSaveChartAsXLSX";
constexpr auto kSensorsMenu =
    "actSensorsToolsPoints actSensorsToolsIndicator actSensorsToolsNearest actSyncWithSensors - actNoteAdd actNotes - "
    "actSensorsCopyChart actSensorsSaveChart actSensorsSaveChartAsPNG actSensorsSaveChartAsSVG - "
    "actSensorsExportToXLSX";
constexpr auto kOfNavigator =
    "actNavSetIntAll actNavSetIntYear actNavSetIntMonth actNavSetIntWeek actNavSetIntDay actNavSetIntHour "
    "actNavSetIntMin - actNavRwd actNavFwd - actSyncWithEvents actSyncWithSensors - actNoteAdd actNotes - "
    "actExportPart";
constexpr auto kAnalysisMenu =
    "actAnalysisCopyChart actAnalysisSaveChart actAnalysisSaveChartAsPNG actAnalysisSaveChartAsSVG - "
    "actAnalysisExportCSV";

// What stands in the menu of a chart; that of the spectrum has two rows.
constexpr std::pair<std::string_view, const char*> kMenus[] = {
    {"Chart1", kEventsMenu},
    {"Chart20", kEventsMenu},
    {"Chart2", kOfShock},
    {"chartSpecAnalysis", "actShockLogFrequency actShockLogValues -"},
    {"chartSpecAnalysis", kOfShock},
    {"chartResponse", kOfShock},
    {"ChartAllSensors", kSensorsMenu},
    {kNavigator, kOfNavigator},
    {"ChartDamage", kAnalysisMenu},
    {"ChartByDay", kAnalysisMenu},
    {"ChartByHour", kAnalysisMenu},
    {"ChartByDirection", kAnalysisMenu},
    {"ChartHistogram", kAnalysisMenu},
    {"ChartExceedance", kAnalysisMenu}};

void AddNamed(QMenu& menu, const TKorvexMainForm& form, const QString& name) {
  if (name == "-") {
    menu.addSeparator();
    return;
  }
  auto* action = &NamedChild<QAction>(form, Utf8(name));
  // The menu says which chart is meant, the action's own text says it, too.
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  QAction* entry = menu.addAction(action->icon(), action->iconText() + (keys.isEmpty() ? keys : "\t" + keys));
  entry->setObjectName(name);
  entry->setEnabled(action->isEnabled());
  entry->setCheckable(action->isCheckable());
  entry->setChecked(action->isChecked());
  QObject::connect(entry, &QAction::triggered, action, &QAction::trigger);
}

void AddActionsOf(std::string_view chart, QMenu& menu, const TKorvexMainForm& form) {
  for (const auto& [name, actions] : kMenus) {
    if (name != chart) continue;
    for (const QString& action : QString(actions).split(' ')) AddNamed(menu, form, action);
  }
}

QString CursorsText(const TTimeChart& chart) {
  if (chart.Cursors().Times()[1]) return QObject::tr("Take the cursors away");
  return chart.Cursors().Times()[0] ? QObject::tr("Set cursor B") : QObject::tr("Set cursor A");
}

void AddSensors(QMenu& menu, TSensorsChart& chart) {
  QMenu* sensors = menu.addMenu(QObject::tr("Sensors"));
  constexpr std::pair<TSensorAxis, const char*> kAxes[] = {{TSensorAxis::LeftOuter, "Left outer axis"},
                                                           {TSensorAxis::LeftInner, "Left inner axis"},
                                                           {TSensorAxis::RightInner, "Right inner axis"},
                                                           {TSensorAxis::RightOuter, "Right outer axis"}};
  for (const std::size_t index : chart.Sensors().Listed()) {
    const TSensorSeries& sensor = chart.Sensors().Series()[index];
    if (sensors->actions().size() == kMaxSensors) {
      sensors->addAction("…")->setEnabled(false);
      break;
    }
    QMenu* one = sensors->addMenu(QString(sensor.look.name).replace('&', "&&"));
    QAction* show = one->addAction(QObject::tr("Show"));
    show->setCheckable(true);
    show->setChecked(sensor.visible);
    QObject::connect(show, &QAction::toggled, &chart, [&chart, index](bool on) { chart.SetSensorVisible(index, on); });
    one->addSection(QObject::tr("Move to"));
    auto* group = new QActionGroup(one);
    for (const auto& [axis, caption] : kAxes) {
      QAction* move = one->addAction(QObject::tr(caption));
      move->setCheckable(true);
      move->setChecked(axis == sensor.look.axis);
      group->addAction(move);
      const TSensorAxis to = axis;
      QObject::connect(move, &QAction::triggered, &chart, [&chart, index, to] { chart.MoveSensor(index, to); });
    }
  }
  sensors->setEnabled(!sensors->isEmpty());
}

QMenu* MakeMenu(const char* name, TTimeChart& chart) {
  auto* menu = Named(new QMenu(&chart), name);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return menu;
}

void ShowMenu(TKorvexMainForm& form, TTimeChart& chart, const QPoint& at) {
  auto* menu = MakeMenu("mnuChart", chart);
  const std::string own = chart.objectName().toStdString();
  if (own != kNavigator) {
    // The keys are the chart's own, so they stand in the text alone.
    const auto add = [&](const char* name, const char* icon, const QString& text, const std::function<void()>& run) {
      QAction* action = menu->addAction(Icon(icon), text);
      action->setObjectName(name);
      action->setEnabled(chart.HasData());
      QObject::connect(action, &QAction::triggered, &form, [&form, run] { Guarded(&form, run); });
    };
    add("mnuChartReset", "zoom-fit-best", QObject::tr("Reset zoom\tF"), [&chart] { chart.Range().ResetByUser(); });
    add("mnuChartStatistics", "view-statistics", QObject::tr("Statistics of the visible range…\tR"),
        [&form, &chart] { ShowStatistics(form, chart); });
    add("mnuChartCursors", "measure", CursorsText(chart) + "\tC", [&chart] { chart.Gestures().StepCursors(); });
    menu->addSeparator();
  }
  if (auto* sensors = qobject_cast<TSensorsChart*>(&chart)) AddSensors(*menu, *sensors);
  AddActionsOf(own, *menu, form);
  // Whatever tab of the ribbon is in front.
  if (own != kNavigator) {
    menu->addSeparator();
    AddActionsOf(kNavigator, *menu->addMenu(QObject::tr("Navigator")), form);
  }
  menu->popup(at);
}

// Both ways out of "Not Synced".
void ShowSyncMenu(TKorvexMainForm& form, TTimeChart& chart, const QPoint& at) {
  auto* menu = MakeMenu("mnuChartSync", chart);
  const bool sensors = qobject_cast<TSensorsChart*>(&chart) != nullptr;
  auto* sync = form.findChild<QAction*>(sensors ? "actSyncWithSensors" : "actSyncWithEvents");
  QObject::connect(menu->addAction(QObject::tr("Use this span everywhere")), &QAction::triggered, sync,
                   &QAction::trigger);
  QObject::connect(menu->addAction(QObject::tr("Back to the navigator's span")), &QAction::triggered, &chart,
                   [&chart] { chart.Range().ResetByUser(); });
  menu->popup(at);
}

}  // namespace

void ConnectChartMenus(TKorvexMainForm& form) {
  for (TTimeChart* chart : form.findChildren<TTimeChart*>()) {
    QObject::connect(chart, &TTimeChart::SyncMenuRequested, &form,
                     [&form, chart](const QPoint& at) { Guarded(&form, [&] { ShowSyncMenu(form, *chart, at); }); });
    QObject::connect(chart, &TTimeChart::MenuRequested, &form,
                     [&form, chart](const QPoint& at) { Guarded(&form, [&] { ShowMenu(form, *chart, at); }); });
    QObject::connect(chart, &TTimeChart::StatisticsRequested, &form,
                     [&form, chart] { Guarded(&form, [&] { ShowStatistics(form, *chart); }); });
  }
}
