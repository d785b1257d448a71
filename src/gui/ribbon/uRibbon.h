// The ribbon: tabs over pages of groups. The first tab is the file tab: it requests the backstage and never becomes
// current. Alt shows key tips. A double click on a tab, or Ctrl+F1, folds the ribbon to its tabs; a click on a tab
// unfolds it. A tab without visible content is hidden.
#pragma once

#include <QElapsedTimer>
#include <QTabBar>
#include <QWidget>
#include <vector>

class QAction;
class QStackedWidget;
class TRibbonGroup;
class TRibbonPage;

// Clicks and keys change the tab, the wheel does not.
class TRibbonTabBar : public QTabBar {
  Q_OBJECT

 public:
  explicit TRibbonTabBar(QWidget* parent);

 signals:
  // Down, Enter or Space: the focus moves into the page.
  void PageEntered();

 protected:
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

class TRibbon : public QWidget {
  Q_OBJECT

 public:
  explicit TRibbon(QWidget* parent);

  void AddTab(const QString& objectName, const QString& caption);
  // Throws std::logic_error when there is no such tab, and for the file tab, which has no page.
  TRibbonGroup* AddGroup(const QString& tabName, const QString& objectName, const QString& title);

  // Does nothing for a hidden or unknown tab.
  void SelectTab(const QString& objectName);
  QString CurrentTab() const;  // empty when no tab has content
  bool TabOffered(const QString& objectName) const;

  void SetFolded(bool folded);
  bool Folded() const { return FFolded; }

  // Nothing is arranged or painted between the two calls; they nest.
  void BeginUpdate();
  void EndUpdate();

  // Their keys are Ctrl+F1 and Alt+F.
  QAction* FoldAction() const { return FFoldAction; }
  QAction* BackstageAction() const { return FBackstageAction; }

 signals:
  void BackstageRequested();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct TTab {
    QString Name;
    TRibbonPage* Page = nullptr;
  };
  int IndexOf(const QString& objectName) const;  // -1: none
  void OnCurrentChanged(int index);
  void OnTabClicked(int index);
  void OnTabDoubleClicked(int index);
  void EnterPage();
  void ShowTab(int index);
  void UpdateTabs();
  void UpdateHeight();

  TRibbonTabBar* FTabBar;
  QStackedWidget* FPages;
  QAction* FFoldAction;
  QAction* FBackstageAction;
  std::vector<TTab> FTabs;
  int FCurrent = 0;
  int FUpdates = 0;
  bool FFolded = false;
  QElapsedTimer FUnfolded;  // since a click unfolded the ribbon
};
