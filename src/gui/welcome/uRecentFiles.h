// The first of the recent files as a short column of buttons; hidden while there are none.
#pragma once

#include <QWidget>
#include <vector>

#include "shell/uRecentDocuments.h"

class QPushButton;

class TRecentFiles : public QWidget {
  Q_OBJECT

 public:
  explicit TRecentFiles(QWidget* parent);

  void ShowEntries(const std::vector<TRecentEntry>& entries);

 signals:
  void FileChosen(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void AddButton();
  void FitTexts();

  static constexpr std::size_t kMost = 5;
  std::vector<QPushButton*> FButtons;  // as many as were ever needed
  std::vector<QString> FPaths;         // of those that are shown
};
