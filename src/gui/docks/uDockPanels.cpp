#include "gui/docks/uDockPanels.h"

#include <QAbstractButton>
#include <QDockWidget>

#include "analysis/uEventOrdering.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/common/uGrid.h"
#include "gui/docks/uMissionDetails.h"

namespace {

void NameTitleButton(const QDockWidget& panel, const char* name, const QString& text) {
  if (auto* button = panel.findChild<QAbstractButton*>(name)) {
    button->setAccessibleName(text);
    button->setToolTip(text);
  }
}

template <class TContent>
QDockWidget* MakePanel(QMainWindow& window, const QString& name, const QString& title, TContent* content) {
  auto* panel = new QDockWidget(title, &window);
  panel->setObjectName(name);
  panel->setWidget(content);
  NameTitleButton(*panel, "qt_dockwidget_floatbutton", QObject::tr("Float or dock %1").arg(title));
  NameTitleButton(*panel, "qt_dockwidget_closebutton", QObject::tr("Close %1").arg(title));
  return panel;
}

}  // namespace

TDockPanels::TDockPanels(QMainWindow& window)
    : ChartNavigator(new TNavigatorChart(&window)),
      details(new TMissionDetails(&window)),
      DBGrid2(new TGrid("DBGrid2", QObject::tr("Sensors"), SensorsIndexKey, &window)),
      DBGrid8(new TGrid("DBGrid8", QObject::tr("Battery"), BatteryIndexKey, &window)) {
  DBGrid2->SetPlaceholder(QObject::tr("No readings of sensors"));
  DBGrid8->SetPlaceholder(QObject::tr("No readings of the battery"));
  ChartNavigator->setObjectName("ChartNavigator");
  ChartNavigator->setAccessibleName(QObject::tr("Time navigator"));
  navigator = MakePanel(window, "dxDockPanelNavigator", QObject::tr("Navigator"), ChartNavigator);
  missionDetails = MakePanel(window, "dxDockPanelMissionDetails", QObject::tr("Mission Details"), details);
  sensorGridTemp = MakePanel(window, "dxDockPanelSensorGridTemp", QObject::tr("Sensors"), DBGrid2);
  sensorGridBattery = MakePanel(window, "dxDockPanelSensorGridBattery", QObject::tr("Battery"), DBGrid8);

  window.setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
  window.setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
  window.setDockOptions(QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks);
  window.addDockWidget(Qt::BottomDockWidgetArea, navigator);
  window.addDockWidget(Qt::RightDockWidgetArea, missionDetails);
  window.addDockWidget(Qt::RightDockWidgetArea, sensorGridTemp);
  window.splitDockWidget(missionDetails, sensorGridTemp, Qt::Vertical);
  window.tabifyDockWidget(sensorGridTemp, sensorGridBattery);
  sensorGridTemp->raise();
  window.resizeDocks({navigator}, {130}, Qt::Vertical);
  window.resizeDocks({missionDetails}, {300}, Qt::Horizontal);
  window.resizeDocks({missionDetails, sensorGridTemp}, {300, 220}, Qt::Vertical);
}
