#include "gui/mainform/uChartMenus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QToolButton>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/docks/uDockPanels.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMainScreen.h"
#include "gui/mainform/uStatisticsDialog.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/shock/uShockPanel.h"

namespace {

constexpr qsizetype kMostSensors = 40;  // in a menu

// The actions of the window that stand in a chart's menu, by name; "-" parts them.
struct TMenuRow {
  std::string_view chart;
  std::vector<const char*> actions;
};
const std::vector<TMenuRow>& MenuRows() {
  static const std::vector<const char*> events = {"actPreviousEvent",
                                                  "actNextEvent",
                                                  "-",
                                                  "actShockEventsToolsIndicator",
                                                  "-",
                                                  "actEventsCopyChart",
                                                  "actEventsSaveChart",
                                                  "actEventsSaveChartAsPNG",
                                                  "-",
                                                  "actEventsCSVVisibleShocks",
                                                  "actEventsXLSXVisibileShocks"};
  static const std::vector<const char*> shock = {"actShockShowX",
                                                 "actShockShowY",
                                                 "actShockShowZ",
                                                 "actShockShowTotal",
                                                 "-",
                                                 "actShockHPFilter",
                                                 "actShockSpecAnalysis",
                                                 "actShockToolsPoints",
                                                 "actShockToolsIndicator",
                                                 "actShockToolsNearest",
                                                 "-",
                                                 "actShockCopyChart",
                                                 "actShockSaveChart",
                                                 "actShockSaveChartAsPNG",
                                                 "-",
                                                 "actExportShockToCSV",
                                                 "actShockSaveChartAsXLSX"};
  static const std::vector<TMenuRow> rows = {
      {"Chart1", events},
      {"Chart20", events},
      {"Chart2", shock},
      {"chartSpecAnalysis", shock},
      {"ChartAllSensors",
       {"actSensorsToolsPoints", "actSensorsToolsIndicator", "actSensorsToolsNearest", "-", "actSensorsCopyChart",
        "actSensorsSaveChart", "actSensorsSaveChartAsPNG", "-", "actSensorsExportToXLSX"}},
      {"ChartNavigator",
       {"actNavSetIntAll", "actNavSetIntYear", "actNavSetIntMonth", "actNavSetIntWeek", "actNavSetIntDay",
        "actNavSetIntHour", "actNavSetIntMin", "-", "actNavRwd", "actNavFwd", "-", "actSyncWithEvents",
        "actSyncWithSensors"}}};
  return rows;
}

void AddNamed(QMenu& menu, const TKorvexMainForm& form, const char* name) {
  if (std::string_view(name) == "-") {
    menu.addSeparator();
    return;
  }
  auto* action = form.findChild<QAction*>(name);
  if (action == nullptr) throw std::logic_error(std::string("the window has no action ") + name);
  // The menu says which chart is meant, the action's own text says it, too.
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  QAction* entry = menu.addAction(action->icon(), action->iconText() + (keys.isEmpty() ? keys : "\t" + keys));
  entry->setObjectName(name);
  entry->setEnabled(action->isEnabled());
  entry->setCheckable(action->isCheckable());
  entry->setChecked(action->isChecked());
  QObject::connect(entry, &QAction::triggered, action, &QAction::trigger);
}

QString CursorsText(const TTimeChart& chart) {
  if (chart.Cursors().Times()[1]) return QObject::tr("Take the cursors away");
  return chart.Cursors().Times()[0] ? QObject::tr("Set cursor B") : QObject::tr("Set cursor A");
}

void TellStatistics(TKorvexMainForm& form, const TTimeChart& chart) {
  const TRangeTable statistics = chart.VisibleStatistics();
  if (!statistics.rows.empty()) ShowStatistics(form, chart.accessibleName(), statistics);
}

void AddSensors(QMenu& menu, TSensorsChart& chart) {
  QMenu* sensors = menu.addMenu(QObject::tr("Sensors"));
  constexpr std::pair<TSensorAxis, const char*> kAxes[] = {{TSensorAxis::LeftOuter, "Left outer axis"},
                                                           {TSensorAxis::LeftInner, "Left inner axis"},
                                                           {TSensorAxis::RightInner, "Right inner axis"},
                                                           {TSensorAxis::RightOuter, "Right outer axis"}};
  for (const std::size_t index : chart.Sensors().Listed()) {
    const TSensorSeries& sensor = chart.Sensors().Series()[index];
    if (sensors->actions().size() == kMostSensors) {
      sensors->addAction("…")->setEnabled(false);
      break;
    }
    QMenu* one = sensors->addMenu(QString(sensor.name).replace('&', "&&"));
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

void ShowMenu(TKorvexMainForm& form, TTimeChart& chart, const QPoint& at) {
  auto* menu = new QMenu(&chart);
  menu->setObjectName("mnuChart");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (qobject_cast<TNavigatorChart*>(&chart) == nullptr) {
    // The keys are the chart's own, so they stand in the text alone.
    const auto add = [&](const char* name, const char* icon, const QString& text, const std::function<void()>& run) {
      QAction* action = menu->addAction(Icon(icon), text);
      action->setObjectName(name);
      action->setEnabled(chart.HasData());
      QObject::connect(action, &QAction::triggered, &form, [&form, run] { Guarded(&form, run); });
    };
    add("mnuChartReset", "zoom-fit-best", QObject::tr("Reset zoom\tF"), [&chart] { chart.Range().ResetByUser(); });
    add("mnuChartStatistics", "view-statistics", QObject::tr("Statistics of the visible range…\tR"),
        [&form, &chart] { TellStatistics(form, chart); });
    add("mnuChartCursors", "measure", CursorsText(chart) + "\tC", [&chart] { chart.Gestures().StepCursors(); });
    menu->addSeparator();
  }
  if (auto* sensors = qobject_cast<TSensorsChart*>(&chart)) AddSensors(*menu, *sensors);
  for (const auto& [name, actions] : MenuRows()) {
    if (chart.objectName().toStdString() != name) continue;
    for (const char* action : actions) AddNamed(*menu, form, action);
  }
  menu->popup(at);
}

using TChartOf = TTimeChart* (*)(TKorvexMainForm&, const TMainParts&);
TTimeChart* ShownEventsChart(TKorvexMainForm& form, const TMainParts& parts) {
  return form.Flow().View() == TView::Shock ? parts.shock->Chart20() : parts.overview->Chart1();
}
TTimeChart* SelectedEventChart(TKorvexMainForm& /*form*/, const TMainParts& parts) {
  TTimeChart* spectrum = parts.shock->ChartSpecAnalysis();
  return spectrum->isVisible() ? spectrum : parts.shock->Chart2();
}
TTimeChart* SensorsChart(TKorvexMainForm& /*form*/, const TMainParts& parts) {
  return parts.overview->ChartAllSensors();
}

struct TChartRow {
  const char* group;
  const char* cursors;  // action and button
  const char* cursorsButton;
  const char* statistics;
  const char* statisticsButton;
  TChartOf chart;
};
constexpr TChartRow kCharts[] = {{"btngrpEventsChart", "actEventsCursors", "dxBarEventsCursors", "actEventsStatistics",
                                  "dxBarEventsStatistics", ShownEventsChart},
                                 {"btngrpShockTools", "actShockCursors", "dxBarShockCursors", "actShockStatistics",
                                  "dxBarShockStatistics", SelectedEventChart},
                                 {"btngrpSensorsTools", "actSensorsCursors", "dxBarSensorsCursors",
                                  "actSensorsStatistics", "dxBarSensorsStatistics", SensorsChart}};

void AddCommands(TKorvexMainForm& form, TMainParts& parts, const TChartRow& row) {
  auto* group = form.findChild<TRibbonGroup*>(row.group);
  const auto add = [&](const char* name, const char* button, const char* icon, const QString& caption,
                       const QString& tip, const std::function<void(TTimeChart&)>& run) {
    auto* action = new QAction(Icon(icon), QString("%1: %2").arg(group->accessibleName(), caption), &form);
    action->setObjectName(name);
    action->setIconText(caption);
    action->setToolTip(tip);
    QObject::connect(action, &QAction::triggered, &form,
                     [&form, &parts, run, chart = row.chart] { Guarded(&form, [&] { run(*chart(form, parts)); }); });
    form.addAction(action);
    group->AddSmall(action, button);
  };
  add(row.cursors, row.cursorsButton, "measure", QObject::tr("Cursors"),
      QObject::tr("Set line A, then B, then take both away (C in the chart); drag moves them, Esc takes them away.\n"
                  "Between them stand B − A in time, its reciprocal, and the change of each series from the sample\n"
                  "nearest in time to A to that nearest to B."),
      [](TTimeChart& chart) { chart.Gestures().StepCursors(); });
  add(row.statistics, row.statisticsButton, "view-statistics", QObject::tr("Statistics"),
      QObject::tr("Count, extremes, mean and RMS of what is in sight (R in the chart)"),
      [&form](TTimeChart& chart) { TellStatistics(form, chart); });
}

}  // namespace

void MakeChartMenus(TKorvexMainForm& form, TMainParts& parts) {
  for (const TChartRow& row : kCharts) AddCommands(form, parts, row);
  // The events are stepped through in every view that shows them; the buttons of one command go with their groups.
  auto* events = form.findChild<TRibbonGroup*>("btngrpEventsChart");
  for (const auto& [name, button] :
       {std::pair("actPreviousEvent", "dxBarEventsPrevious"), {"actNextEvent", "dxBarEventsNext"}}) {
    auto* action = form.findChild<QAction*>(name);
    action->setProperty(kNeedsEvents, true);
    events->AddSmall(action, button);
  }
  for (TTimeChart* chart : form.findChildren<TTimeChart*>()) {
    QObject::connect(chart, &TTimeChart::MenuRequested, &form,
                     [&form, chart](const QPoint& at) { Guarded(&form, [&] { ShowMenu(form, *chart, at); }); });
    QObject::connect(chart, &TTimeChart::StatisticsRequested, &form,
                     [&form, chart] { Guarded(&form, [&] { TellStatistics(form, *chart); }); });
  }
}
