// The overview: the verdict, events chart, sensors chart and the most important events. The two charts are one
// instrument: they share the side margins, the pointer's time and, while they show the same span, the date axis.
//
// The most important events have room for three to ten rows, until the user or a layout moves the splitter: five at 800
// px of height, ten at 1000. In a low window verdict and charts give way.
#pragma once

#include <QWidget>
#include <optional>

class QComboBox;
class QLabel;
class QSplitter;
class QToolButton;
class TEventsChart;
class TGrid;
class TSensorsChart;
class TVerdictStrip;

class TMainOverviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TMainOverviewPanel(QWidget* parent);

  [[nodiscard]] TVerdictStrip* Verdict() const { return FVerdict; }
  [[nodiscard]] TEventsChart* Chart1() const { return FChart1; }
  [[nodiscard]] TSensorsChart* ChartAllSensors() const { return FChartAllSensors; }
  [[nodiscard]] TGrid* MostImportant() const { return FMostImportant; }
  // Makes the event current where it is listed; the line that names it shows while its row is out of sight.
  void ShowSelectedEvent(std::optional<std::size_t> event, const QString& words);
  // The words of that line; the list stays where it is.
  void SetSelectedWords(const QString& words);

  // The charts show other data: one that has none leaves its height to the other.
  void FitToData();
  // Gives the list its share of the height, now and whenever the height changes; or leaves the splitter as it is.
  void SetSharesHeight(bool shares);

 Q_SIGNALS:
  // Another entry of "Order By" was chosen.
  void OrderByChosen(int entry);
  // The selected event is not listed here, and the user wants to see it.
  void EventAskedFor();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QWidget* MakeMostImportantEvents();
  void ShareHeight();
  void UpdateSelectedLine();

  TVerdictStrip* FVerdict;
  QSplitter* FSplitter;
  TEventsChart* FChart1;
  TSensorsChart* FChartAllSensors;
  TGrid* FMostImportant;
  QComboBox* FOrderBy;
  QLabel* FSelected;          // names the selected event
  QToolButton* FShow;         // and leads to it
  bool FHasEvent = false;     // one is selected
  bool FSharesHeight = true;  // until the user or a layout moves the splitter
};
