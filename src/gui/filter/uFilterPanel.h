// The filter's editor: a dock panel with the filter's conditions. What is typed counts at once where it makes sense,
// Enter applies all of it, Esc closes the panel. The panel changes no filter itself: it says what the user wants.
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

  // Shows the panel and takes the keyboard; Esc gives it back.
  void Open();
  // Borrows the mission's tables until the next call; null: there is no file.
  void SetMission(const TShownMission* mission);
  // The mission's filter, or what it lets through, changed.
  void ShowFilter();
  // What the user asked for: puts this span of date-times into the time condition.
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

  // Tells what the controls say; an edit whose text is no number keeps the end that it had.
  void Edited();
  void Apply();
  [[nodiscard]] TEventFilter Read();
  void Write(const TEventFilter& filter);
  void WriteTimes(const TRange& time);
  void ChooseQuantity(std::size_t quantity);
  void RefreshHistogram();
  void TellState();

  const TShownMission* FMission = nullptr;
  TEventFilter FFilter;  // as the controls show it
  QString FProblem;      // with what was typed; empty when there is none
  std::array<TRangeEdits, kMetrics.size()> FRanges{};
  std::array<QCheckBox*, kPeakAxes.size()> FAxes{};
  std::array<TTimeEnd, 2> FTime{};
  QCheckBox* FAboveAlarm = nullptr;
  QLabel* FHistogramTitle = nullptr;
  THistogramStrip* FHistogram = nullptr;
  QLabel* FState = nullptr;
  QWidget* FButtons = nullptr;
  std::size_t FQuantity = 0;      // of the histogram
  bool FHistogramIsStale = true;  // it waits for the panel to be seen
  bool FWriting = false;          // the program, not the user, changes the controls
  QPointer<QWidget> FFocusedBefore;
};
