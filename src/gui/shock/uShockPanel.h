// The shock view: the events chart, both event grids with the four cards of the selected event above them, and the
// selected event's samples as curves, as a spectrum or as a response spectrum and, if wanted, in numbers.
#pragma once

#include <QWidget>
#include <array>
#include <optional>

class QLabel;
class QSplitter;
class QStackedWidget;
class QTabWidget;
struct TMissionData;
struct TPins;
class TAccelerationChart;
class TChoiceBar;
class TEventCards;
class TEventsChart;
class TFrequencyChart;
class TGrid;
class TPinBar;
class TEventList;
class TResponseChart;
class TResponsePanel;
class TSelectedEventChart;
class TShockValuesGrid;
class TSpectrumChart;

class TMainShockPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TMainShockPanel(QWidget* parent);

  [[nodiscard]] TEventsChart* Chart20() const { return FChart20; }
  [[nodiscard]] TSelectedEventChart* Chart2() const { return FChart2; }
  [[nodiscard]] TSpectrumChart* ChartSpecAnalysis() const { return FSpectrum; }
  [[nodiscard]] TResponseChart* ChartResponse() const;
  [[nodiscard]] TResponsePanel* Response() const { return FResponse; }
  // The three charts of the selected event.
  [[nodiscard]] std::array<TAccelerationChart*, 3> EventCharts() const;
  // Of the selected event.
  [[nodiscard]] TAccelerationChart& ChartInFront() const;
  [[nodiscard]] TGrid* Shocks() const { return FShocks; }
  [[nodiscard]] TGrid* FilteredShocks() const { return FFilteredShocks; }
  [[nodiscard]] TGrid* Analysis() const { return FAnalysis; }
  [[nodiscard]] bool IsAnalysisInFront() const;
  [[nodiscard]] TEventCards* Cards() const { return FCards; }
  [[nodiscard]] TShockValuesGrid* Values() const { return FValues; }
  // Shows an event in its charts, which borrow it; nullopt empties them.
  void ShowEvent(const TEventList& events, std::optional<std::size_t> event, const TMissionData& mission);
  // Other events beside it, and the list of them.
  void ShowPins(const TPins& pins);
  [[nodiscard]] TPinBar* PinBar() const { return FPins; }
  // The spectrum or the response spectrum in place of the curves.
  void SetSpectrumVisible(bool visible);
  void SetResponseVisible(bool visible);
  // What the chart in front shows of the selected event, in numbers beside it; hidden at first.
  void SetValuesVisible(bool visible);
  // How many events pass the filter, in the tabs' titles; `conditions` is empty while the filter is off. When it is
  // switched on, the filtered events come to the front.
  void ShowFilter(std::size_t passing, std::size_t all, const QString& conditions);
  // Says beside the tabs that the selected event is clipped.
  void ShowClipped(bool clipped);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void CaptionTabs();
  void ShowListBeside(bool values);
  void TakeRoomForValues(bool visible);
  void ConnectValues();
  void ShowInFront(QWidget* chart, bool visible);
  // nullptr while the curves are in front.
  [[nodiscard]] TFrequencyChart* FrequenciesInFront() const;
  void ShowValues();
  // Of a moment of the chart in front.
  void MarkValue(double pointed);
  [[nodiscard]] QWidget* MakeEventList();

  QSplitter* FBelow;  // list, chart and values
  TEventsChart* FChart20;
  TSelectedEventChart* FChart2;
  TSpectrumChart* FSpectrum;
  TChoiceBar* FSpectrumChoices;
  TResponsePanel* FResponse;
  TPinBar* FPins;
  QStackedWidget* FEventCharts;
  TShockValuesGrid* FValues;
  TGrid* FShocks;
  TGrid* FFilteredShocks;
  TGrid* FAnalysis;
  TEventCards* FCards;
  QTabWidget* FTabs;
  std::array<QStringList, 3> FTabWords;  // from the longest
  QLabel* FConditions;
  QLabel* FClipped;
  std::optional<int> FValuesWidth;  // px, when the table was last visible
  int FFromList = 0;                // px that the list gave to the visible table
};
