// The first recent files as a column of buttons; hidden if there are none.
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
  std::vector<QPushButton*> FButtons;  // never fewer than FPaths
  std::vector<QString> FPaths;         // of the visible buttons
};
