// The editor of the event filter, a dock panel. Valid input applies at once, Enter applies everything, Esc closes the
// panel. The panel changes no filter itself: it emits FilterChanged.
#pragma once

#include <QDockWidget>
#include <QPointer>
#include <array>

#include "shell/uShownMission.h"

class QAction;
class QCheckBox;
class QDateTimeEdit;
class QGridLayout;
class QLabel;
class QLineEdit;
class THistogramStrip;

class TFilterPanel : public QDockWidget {
  Q_OBJECT

 public:
  explicit TFilterPanel(QWidget* parent);
  // A check box for the action that switches the filter.
  void AddActiveButton(QAction* active);

  // Shows the panel and takes the focus; Esc returns it.
  void Open();
  // Borrows the mission until the next call; null: no file.
  void SetMission(const TShownMission* mission);
  // The mission's filter or its result changed.
  void ShowFilter();
  // The mission has its shock analysis.
  void ShowAnalysis();
  // Sets the time condition (date-times).
  void SetTimeSpan(double from, double to);

 signals:
  void FilterChanged(const TEventFilter& filter);
  void NavigatorSpanRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  struct TRangeEdits {
    QLineEdit* from;
    QLineEdit* to;
  };
  struct TTimeEnd {
    QCheckBox* on;
    QDateTimeEdit* edit;
  };

  [[nodiscard]] QWidget* MakeConditions();
  void MakeRanges(QGridLayout& grid, QWidget* parent);
  [[nodiscard]] QWidget* MakeAxes(QWidget* parent);
  [[nodiscard]] QWidget* MakeTimes(QWidget* parent);
  [[nodiscard]] QWidget* MakeButtons(QWidget* parent);
  QLineEdit* MakeEdit(std::size_t quantity, bool from, QWidget* parent);
  TTimeEnd MakeTimeEnd(bool from, QWidget* parent);

  // The filter that the controls show; an invalid edit keeps its previous limit.
  void Edited();
  void Apply();
  [[nodiscard]] TEventFilter Read();
  void Write(const TEventFilter& filter);
  void WriteTimes(const TRange& time);
  void ChooseQuantity(std::size_t quantity);
  void RefreshHistogram();
  void ShowState();
  // The bar of the shock analysis, while the velocity change is chosen or limited.
  void ShowAnalysisBar();

  const TShownMission* FMission = nullptr;
  TEventFilter FFilter;  // as the controls show it
  QString FProblem;      // with the input; empty if none
  std::array<TRangeEdits, kFilterQuantities.size()> FRanges{};
  std::array<QCheckBox*, kPeakAxes.size()> FAxes{};
  std::array<TTimeEnd, 2> FTime{};
  QCheckBox* FAboveAlarm = nullptr;
  QLabel* FHistogramTitle = nullptr;
  THistogramStrip* FHistogram = nullptr;
  QWidget* FAnalysis = nullptr;  // has the bar
  QLabel* FState = nullptr;
  QWidget* FButtons = nullptr;
  std::size_t FQuantity = 0;      // of the histogram
  bool FHistogramIsStale = true;  // until the panel is visible
  bool FWriting = false;          // the program is changing the controls
  QPointer<QWidget> FFocusedBefore;
};
