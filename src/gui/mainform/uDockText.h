// The arrangement of the dock panels as text that people can read and edit, a line a panel. For example
//   dxDockPanelMissionDetails = right, 420x150, open
//   dxDockPanelSensorGridTemp = below dxDockPanelMissionDetails, 420x400, open
//   dxDockPanelSensorGridBattery = tabbed with dxDockPanelSensorGridTemp, 420x400, open, in front
//   dxDockPanelNavigator = bottom, 1280x130, open, floating 500x200+60+70
// A place is an area of the window, or "below", "right of" or "tabbed with" another panel. Sizes are in pixels, those
// of docked panels in a space as large as the line "Space" says.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMainWindow>
#include <QPair>
#include <QStringList>

struct TDockArrangement {
  QByteArray state;   // what QMainWindow::saveState gives
  QStringList front;  // panels that came in front of others, the latest last; `state` forgets this of closed panels
};

using TDockLines = QList<QPair<QString, QString>>;  // name and text, in the order in which they are applied

// The lines of an arrangement of this window.
[[nodiscard]] TDockLines LinesOf(QMainWindow& window, const TDockArrangement& arrangement);
// The arrangement that the lines describe. Lines of other names and text without a meaning are ignored; what is not
// said is as designed. The window itself stays as it is. Throws std::runtime_error when there is no line of a panel.
[[nodiscard]] TDockArrangement ArrangementOf(QMainWindow& window, const TDockLines& lines,
                                             const TDockArrangement& designed);
