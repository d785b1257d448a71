// The overview: events chart, sensors chart and the most important events. The charts have the same side margins, so
// that their times are aligned.
#pragma once

#include <QWidget>

class QComboBox;
class TEventsChart;
class TGrid;
class TSensorsChart;

class TMainOverviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TMainOverviewPanel(QWidget* parent);

  [[nodiscard]] TEventsChart* Chart1() const { return FChart1; }
  [[nodiscard]] TSensorsChart* ChartAllSensors() const { return FChartAllSensors; }
  [[nodiscard]] TGrid* MostImportant() const { return FMostImportant; }

 Q_SIGNALS:
  // Another entry of "Order By" was chosen.
  void OrderByChosen(int entry);

 private:
  [[nodiscard]] QWidget* MakeMostImportantEvents();

  TEventsChart* FChart1;
  TSensorsChart* FChartAllSensors;
  TGrid* FMostImportant;
  QComboBox* FOrderBy;
};
