// The arrangement of the window: dock panels and the splitters of the views. It is kept while all panels are closed, so
// that they come back as they were, and stands in layout files, which are not trusted.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QMap>
#include <QSet>
#include <filesystem>

class QDockWidget;
class QSplitter;

class TLayouts : public QObject {
  Q_OBJECT

 public:
  // Takes the arrangement that the window has now for the designed one; all panels are there and shown.
  explicit TLayouts(QMainWindow& window);

  void RestoreDesigned();
  // Throws std::runtime_error when the file is of no use; the designed arrangement stands then. Floating panels come to
  // lie on a screen.
  void Load(const std::filesystem::path& file);
  // Throws when the file cannot be written.
  void Save(const std::filesystem::path& file) const;

  // How the program shows and closes a panel, the user has no need of it.
  void SetPanelVisible(QDockWidget& panel, bool visible);

 private:
  struct TArrangement {
    QByteArray Docks;
    QMap<QString, QList<int>> Splitters;
  };
  [[nodiscard]] QSplitter& Splitter(const char* name) const;
  [[nodiscard]] TArrangement Current() const;
  void Apply(const TArrangement& arrangement);
  [[nodiscard]] bool AllClosed() const;
  [[nodiscard]] QSet<QString> VisiblePanels() const;
  void SettleLater();
  void Settle();
  void BringOnScreen() const;

  QMainWindow& FWindow;
  QList<QDockWidget*> FPanels;
  QByteArray FKept;  // the panels before they were all closed
  TArrangement FDesigned;
  // How the panels stood when these were the visible ones: so every view gets its own sizes back.
  QHash<QSet<QString>, QByteArray> FStates;
  QSet<QString> FBefore;  // the visible ones before this series of changes
  bool FWereClosed = false;
  bool FKeeps = false;    // FKept is of this series of changes
  bool FSettles = false;  // Settle is to come
};
