#include "gui/docks/uDockPanels.h"

#include "analysis/uEventOrdering.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uGrid.h"
#include "gui/docks/uFoldingPanel.h"
#include "gui/docks/uMissionDetails.h"
#include "gui/docks/uPanelFolding.h"

namespace {

// As designed, in px.
constexpr QSize kNavigatorSize(1200, 80);
constexpr QSize kDetailsSize(300, 300);
constexpr QSize kGridSize(300, 220);

}  // namespace

TDockPanels::TDockPanels(QMainWindow& window)
    : ChartNavigator(new TNavigatorChart(&window)),
      details(new TMissionDetails(&window)),
      DBGrid2(new TGrid("DBGrid2", QObject::tr("Sensors"), SensorsIndexKey, &window)),
      DBGrid8(new TGrid("DBGrid8", QObject::tr("Battery"), BatteryIndexKey, &window)) {
  DBGrid2->SetPlaceholder(QObject::tr("No readings of sensors"));
  DBGrid8->SetPlaceholder(QObject::tr("No readings of the battery"));
  Named(ChartNavigator, "ChartNavigator", QObject::tr("Time navigator"));
  const auto make = [&window](const char* name, const QString& title, QWidget* content, const QSize& size) {
    return new TFoldingPanel(name, title, content, size, &window);
  };
  navigator = make("dxDockPanelNavigator", QObject::tr("Navigator"), ChartNavigator, kNavigatorSize);
  missionDetails = make("dxDockPanelMissionDetails", QObject::tr("Mission Details"), details, kDetailsSize);
  sensorGridTemp = make("dxDockPanelSensorGridTemp", QObject::tr("Sensors"), DBGrid2, kGridSize);
  sensorGridBattery = make("dxDockPanelSensorGridBattery", QObject::tr("Battery"), DBGrid8, kGridSize);

  window.setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
  window.setCorner(Qt::BottomRightCorner, Qt::BottomDockWidgetArea);
  window.setDockOptions(QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks);
  window.addDockWidget(Qt::BottomDockWidgetArea, navigator);
  window.addDockWidget(Qt::RightDockWidgetArea, missionDetails);
  window.addDockWidget(Qt::RightDockWidgetArea, sensorGridTemp);
  window.splitDockWidget(missionDetails, sensorGridTemp, Qt::Vertical);
  window.tabifyDockWidget(sensorGridTemp, sensorGridBattery);
  sensorGridTemp->raise();
  window.resizeDocks({navigator}, {kNavigatorSize.height()}, Qt::Vertical);
  window.resizeDocks({missionDetails}, {kDetailsSize.width()}, Qt::Horizontal);
  window.resizeDocks({missionDetails, sensorGridTemp}, {kDetailsSize.height(), kGridSize.height()}, Qt::Vertical);
  folding = new TPanelFolding(window, {navigator, missionDetails, sensorGridTemp, sensorGridBattery},
                              {missionDetails, sensorGridTemp, sensorGridBattery});
}
