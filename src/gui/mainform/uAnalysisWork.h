// Computes the shock analysis of the shown mission in the background when a view asks for it, and shows in every
// TAnalysisBar how far it is. Main thread only.
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "shell/uIMissionViews.h"
#include "shell/uMissionLoad.h"

class QMainWindow;
class QWidget;
class TAnalysisBar;

class TAnalysisWork : public QObject {
  Q_OBJECT

 public:
  // Ends nothing while `views` is disabled: an export reads the tables then.
  TAnalysisWork(QMainWindow& window, const QWidget& views, IMissionViews& shown);

  // Another mission; the work for the one before ends here, so call it before the model changes. Null: none.
  void SetMission(TShownMission* mission);
  // Begins, unless it is done or being done.
  void Start();
  // The mission has its analysis.
  void Done();

 private:
  void Poll();
  void Cancel();
  void ShowRunning();
  // Of the work, with what every bar then shows.
  void End(void (TAnalysisBar::*show)());

  QMainWindow& FWindow;
  const QWidget& FViews;
  IMissionViews& FShown;
  TShownMission* FMission = nullptr;
  std::unique_ptr<TAnalysisRun> FRun;
  QTimer FTimer;
};
