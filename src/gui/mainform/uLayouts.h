// The arrangement of the window: dock panels and the splitters of the views. It is kept while all panels are closed, so
// that they come back as they were. Layout files hold it as text; they may hold anything.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QMap>
#include <QSet>
#include <filesystem>

#include "gui/mainform/uDockText.h"

class QDockWidget;
class TPanelFolding;

class TLayouts : public QObject {
  Q_OBJECT

 public:
  // The window's present arrangement is the designed one; all panels exist.
  TLayouts(QMainWindow& window, TPanelFolding& folding);

  void RestoreDesigned();
  // Throws std::runtime_error when the file is unusable, and restores the designed arrangement. Floating panels are
  // moved onto a screen.
  void Load(const std::filesystem::path& file);
  // `sections` stand behind those of the layout. Throws when the file cannot be written.
  void Save(const std::filesystem::path& file, const std::string& sections) const;

  // Shows and closes a panel on behalf of the program; the user's own opening and closing does not come here.
  void SetPanelVisible(QDockWidget& panel, bool visible);

 private:
  struct TArrangement {
    TDockArrangement docks;
    QMap<QString, QList<int>> splitters;
  };
  [[nodiscard]] TArrangement Current() const;
  void Apply(const TArrangement& arrangement);
  [[nodiscard]] bool AllClosed() const;
  [[nodiscard]] QSet<QString> VisiblePanels() const;
  [[nodiscard]] bool HasTabsBeside(QDockWidget& panel) const;
  void MoveToFront(const QString& panel);
  void SettleLater();
  void Settle();
  void PutBack();
  void Restore(const QByteArray& state);
  void BringOnScreen() const;

  QMainWindow& FWindow;
  TPanelFolding& FFolding;
  QList<QDockWidget*> FPanels;
  QByteArray FKept;    // the panels before they were all closed
  QStringList FFront;  // panels that the user put in front of their tabs, the latest last
  TArrangement FDesigned;
  // The state for each set of visible panels, so that every view gets its own sizes back.
  QHash<QSet<QString>, QByteArray> FStates;
  QSet<QString> FBefore;  // the visible ones before this series of changes
  bool FWereClosed = false;
  bool FKeeps = false;    // FKept is of this series of changes
  bool FSettles = false;  // Settle is to come
};
