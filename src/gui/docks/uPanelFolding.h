// Which panels are folded to their titles. Those beside the views are folded in a window that is narrow, or too narrow
// for them and the filter, and those below in a low one, unless the user chose otherwise. Panels behind each other's
// tabs are folded together.
#pragma once

#include <QList>
#include <QMap>
#include <QObject>

class QDockWidget;
class QMainWindow;
class TFoldingPanel;

class TPanelFolding : public QObject {
  Q_OBJECT

 public:
  // The panels of the window, and those of them that a narrow window folds; a low one folds the others.
  TPanelFolding(QMainWindow& window, QList<TFoldingPanel*> panels, QList<TFoldingPanel*> inNarrow);
  // Beside this panel, while it is visible, the window counts as narrower.
  void GiveWayTo(QDockWidget& panel);

  // By name: true is folded. A panel without a choice follows the size of the window.
  using TChoices = QMap<QString, bool>;
  // The user's choices, and every panel that is folded now.
  [[nodiscard]] TChoices Choices() const;
  // Other names are ignored.
  void SetChoices(const TChoices& choices);

 Q_SIGNALS:
  void Changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Choose(TFoldingPanel& panel, bool folded);
  void UpdateLater();
  void Update();
  [[nodiscard]] bool IsFolded(const TFoldingPanel& panel, const QSize& window) const;
  [[nodiscard]] bool IsColumnFolded(const TFoldingPanel& panel) const;
  void Resize(const QList<TFoldingPanel*>& opened);
  void WatchTabs();
  void OpenTab(const QString& title);

  QMainWindow& FWindow;
  QList<TFoldingPanel*> FPanels;
  QList<TFoldingPanel*> FInNarrow;
  QDockWidget* FFirst = nullptr;  // the others give way to it
  TChoices FChoices;
  bool FIsDue = false;  // Update is to come
};
