// What a click in a grid, a chart, the navigator, the filter or the verdict does. It only calls the sequences of the
// shell.
#pragma once

#include <QObject>
#include <cstddef>
#include <functional>

#include "shell/uShownMission.h"
#include "shell/uVerdictCells.h"

class QMainWindow;
class TControls;
class TFileFlow;
class TMissionViews;
class TNoteCommands;
struct TMainParts;

class TViewActions : public QObject {
  Q_OBJECT

 public:
  // Connects the views. Make it after the commands: the filter panel has a button of one.
  TViewActions(QMainWindow& window, TMainParts& parts, TFileFlow& flow, TControls& controls, TMissionViews& views,
               TNoteCommands& notes);

 private:
  void ConnectGrids();
  void ConnectCharts();
  void ConnectNavigator();
  void ConnectFilter();
  void ConnectEventCards();
  void ConnectPins();
  // Goes where a button of the verdict leads.
  void OpenVerdict(TVerdictQuestion question, TVerdictAnswer answer);
  // Nothing while no file is shown.
  void OnMission(const std::function<void(TShownMission&)>& command);
  void Select(std::size_t event);

  QMainWindow& FWindow;
  TMainParts& FParts;
  TFileFlow& FFlow;
  TControls& FControls;
  TMissionViews& FViews;
  TNoteCommands& FNotes;
};
