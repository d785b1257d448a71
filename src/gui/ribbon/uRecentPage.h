// The page of the backstage that lists recent files and recent folders. It changes nothing itself: it says what the
// user wants and is told what to list.
#pragma once

#include <QWidget>

class QLabel;
class TRecentDocuments;
class TRecentListView;

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
