// The window's widgets, made once and in their places. Qt's parents own them.
#pragma once

#include <QMainWindow>

#include "gui/docks/uDockPanels.h"

class QFrame;
class QLabel;
class QStackedWidget;
class TAlarmLimitsPanel;
class TBackstage;
class TDamagePanel;
class TFilterChip;
class TFilterPanel;
class TLayouts;
class TLoadingPanel;
class TLogos;
class TMainOverviewPanel;
class TMainShockPanel;
class TNotice;
class TRecentFiles;
class TRecentPage;
class TReportPanel;
class TRibbon;
class TStatisticsPanel;
class TTaskbarProgress;
class TWellcomePanel;

struct TMainParts {
  explicit TMainParts(QMainWindow& window);

  TRibbon* ribbon;
  QStackedWidget* front;  // the welcome panel or the views
  QStackedWidget* views;  // exactly one is in front
  TWellcomePanel* welcome;
  TMainOverviewPanel* overview;
  TMainShockPanel* shock;
  TReportPanel* report;
  TDamagePanel* damage;
  TStatisticsPanel* statistics;
  TDockPanels docks;
  TFilterPanel* filter;
  TLoadingPanel* loading;
  TTaskbarProgress* taskbar;
  TBackstage* backstage;
  TAlarmLimitsPanel* alarmLimits;
  TRecentPage* recent;        // of the backstage
  TRecentFiles* recentFiles;  // of the welcome panel
  TLogos* logos;
  TLayouts* layouts;
  QFrame* damaged;            // says that the shown recording is damaged
  QLabel* statusHint;         // what the mouse can do where it is
  TNotice* notice;            // what was written, in place of the hint
  QLabel* statusValue;        // the value under the pointer
  TFilterChip* statusEvents;  // how many events
  QLabel* statusFile;         // the file and its state

  // So that its keys work in the view in front; without one, what the welcome panel offers first.
  void FocusView() const;

 private:
  void MakeCentre(QMainWindow& window);
  void MakeDamageBar(QWidget* parent);
  void MakeStatusBar(QMainWindow& window);
};
