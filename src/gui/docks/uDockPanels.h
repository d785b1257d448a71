// The four dock panels around the views and what they hold.
#pragma once

#include <QMainWindow>
#include <array>

class QDockWidget;
class TGrid;
class TMissionDetails;
class TNavigatorChart;

struct TDockPanels {
  // Makes the panels in their designed places.
  explicit TDockPanels(QMainWindow& window);

  QDockWidget* navigator;
  QDockWidget* missionDetails;
  QDockWidget* sensorGridTemp;
  QDockWidget* sensorGridBattery;
  TNavigatorChart* ChartNavigator;
  TMissionDetails* details;
  TGrid* DBGrid2;  // sensors
  TGrid* DBGrid8;  // battery

  [[nodiscard]] std::array<QDockWidget*, 4> All() const {
    return {navigator, missionDetails, sensorGridTemp, sensorGridBattery};
  }
};
