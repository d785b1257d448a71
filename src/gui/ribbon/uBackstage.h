// The backstage: commands and pages for files and the program, over the whole window. Entries are at the left, the page
// of the chosen entry at the right. Esc or the arrow at the top closes it and returns the focus. It closes before a
// chosen command runs, so that no dialog opens over it.
#pragma once

#include <QPointer>
#include <QStringList>
#include <QToolButton>
#include <QWidget>
#include <vector>

class QAction;
class QBoxLayout;
class QLabel;
class QStackedWidget;
class TAboutPage;
class TBrowsePathPage;
class TCurrentFolderPage;
struct TSummarySource;

// An entry of the column; the current one is checked.
class TBackstageEntry : public QToolButton {
  Q_OBJECT

 public:
  TBackstageEntry(const QString& objectName, QWidget* parent);

  // The icon is a name in icons.txt.
  void Show(const QString& caption, const QString& icon);
  // Takes caption, icon, tool tip, enabled and visible from the action, now and when they change.
  void Follow(QAction* action);

 signals:
  void StepRequested(int step);  // 1: the entry below, -1: above
  void PageRequested();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void TakeFrom(const QAction* action);
  void TakeFont();
};

class TBackstage : public QWidget {
  Q_OBJECT

 public:
  // Hidden until show(); covers `window` from then on.
  explicit TBackstage(QWidget* window);

  // An entry that triggers the action, which is borrowed.
  void AddAction(QAction* action, const QString& objectName);
  // An entry with a page, which the backstage owns. The icon is a name in icons.txt. The place of an entry does not
  // depend on the order of adding; an unknown entry goes above About.
  void AddPage(const QString& objectName, const QString& caption, const QString& icon, QWidget* page);
  // Shows the page of that entry, now or when the backstage is opened.
  void SelectPage(const QString& objectName);

  void SetFilePatterns(const QStringList& patterns);  // "*.kshock" unless told otherwise
  // Where lists of recordings have their figures from.
  void SetSummarySource(const TSummarySource& source);
  void SetBrowsePath(const QString& path);
  // Fills the path in without reading it.
  void ProposeBrowsePath(const QString& path);
  void SetCurrentFolder(const QString& folder);
  void SetVersion(const QString& version);

 signals:
  void FileChosen(const QString& path);
  void FolderDialogRequested();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  struct TEntry {
    QString Name;
    QString Caption;
    TBackstageEntry* Button = nullptr;
    QWidget* Page = nullptr;  // none: an action
  };
  void Add(const TEntry& entry);
  void Choose(const QString& path);
  void MoveFocus(int step);
  void EnterPage();
  const TEntry* Find(const QString& objectName) const;

  QWidget* FColumn;
  QBoxLayout* FEntriesLayout;
  QLabel* FHeading;
  QStackedWidget* FPages;
  TBackstageEntry* FBack;
  TBrowsePathPage* FBrowsePath;
  TCurrentFolderPage* FCurrentFolder;
  TAboutPage* FAbout;
  std::vector<TEntry> FEntries;  // top to bottom
  QPointer<QWidget> FFocusBefore;
};
