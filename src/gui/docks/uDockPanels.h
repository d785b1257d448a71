// The four dock panels around the views and what they hold.
#pragma once

#include <QMainWindow>
#include <array>

class TFoldingPanel;
class TGrid;
class TMissionDetails;
class TNavigatorChart;
class TPanelFolding;

struct TDockPanels {
  // Makes the panels in their designed places.
  explicit TDockPanels(QMainWindow& window);

  TFoldingPanel* navigator;
  TFoldingPanel* missionDetails;
  TFoldingPanel* sensorGridTemp;
  TFoldingPanel* sensorGridBattery;
  TPanelFolding* folding;
  TNavigatorChart* ChartNavigator;
  TMissionDetails* details;
  TGrid* DBGrid2;  // sensors
  TGrid* DBGrid8;  // battery

  [[nodiscard]] std::array<TFoldingPanel*, 4> All() const {
    return {navigator, missionDetails, sensorGridTemp, sensorGridBattery};
  }
};
