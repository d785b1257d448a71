// The pages of the backstage: a path to browse, the folder of the shown file, recent files and folders, and About.
#pragma once

#include <QStringList>
#include <QWidget>

#include "gui/ribbon/uRecordingFolder.h"

class TPathCompleter;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class TRecentDocuments;
class TRecentListView;
class TRecordingList;
struct TSummarySource;

// A list of recordings with a filter above it, and how far the reading of their figures is, with Cancel.
class TRecordingPane : public QWidget {
  Q_OBJECT

 public:
  // The controls have the list's name with "Filter", "Progress", "Cancel" and "Note" behind it.
  TRecordingPane(const QString& listName, const QString& accessibleName, QWidget* parent);
  [[nodiscard]] TRecordingList* List() const { return FList; }

 private:
  void ShowProgress(int done, int total, const QString& problem);

  QLineEdit* FFilter;
  QLabel* FNote;
  QProgressBar* FProgress;
  QPushButton* FCancel;
  TRecordingList* FList;
};

class TBrowsePathPage : public QWidget {
  Q_OBJECT

 public:
  explicit TBrowsePathPage(QWidget* parent);

  void SetFilePatterns(const QStringList& patterns);
  void SetSource(const TSummarySource& source);
  void ProposePath(const QString& path);
  // Fills in the path and opens it as if it had been typed.
  void SetPath(const QString& path);

 signals:
  void FileChosen(const QString& path);
  void FolderDialogRequested();

 protected:
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Answer();
  void ShowAnswer(const QString& path, TPathKind kind, const QString& note);
  void StopReading();
  void Complain(const QString& what);
  void PaintComplaint();

  QLineEdit* FPath;
  TPathCompleter* FCompleter;
  QWidget* FComplaint;
  QLabel* FComplaintIcon;
  QLabel* FComplaintText;
  QLabel* FNote;
  TRecordingPane* FPane;
  TRecordingList* FList;  // of the pane
  QStringList FPatterns;
};

class TCurrentFolderPage : public QWidget {
  Q_OBJECT

 public:
  explicit TCurrentFolderPage(QWidget* parent);

  // An empty folder means that no file is shown.
  void SetFilePatterns(const QStringList& patterns);
  void SetSource(const TSummarySource& source);
  void SetFolder(const QString& folder);

 signals:
  void FileChosen(const QString& path);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Fill();
  void ShowNote(const QString& note);

  QLabel* FNote;
  TRecordingPane* FPane;
  TRecordingList* FList;  // of the pane
  QString FFolder;
  QStringList FPatterns;
};

// Recent files and recent folders. The page changes neither list: its views emit what the user asks for.
class TRecentPage : public QWidget {
  Q_OBJECT

 public:
  explicit TRecentPage(QWidget* parent);

  void ShowRecent(const TRecentDocuments& recent);

  [[nodiscard]] TRecentListView* Files() const { return FFiles; }
  [[nodiscard]] TRecentListView* Folders() const { return FFolders; }

 private:
  QLabel* FNote;
  QLabel* FFilesTitle;
  TRecentListView* FFiles;
  QLabel* FFoldersTitle;
  TRecentListView* FFolders;
};

class TAboutPage : public QWidget {
  Q_OBJECT

 public:
  explicit TAboutPage(QWidget* parent);

  void SetVersion(const QString& version);

 private:
  QLabel* FVersion;
};
