// The first recent files as a column of buttons; hidden if there are none. The button of a missing file is disabled.
#pragma once

#include <QWidget>
#include <vector>

#include "gui/common/uBackgroundTask.h"
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
  void showEvent(QShowEvent* event) override;

 private:
  void AddButton();
  void FitTexts();
  // As the answers arrive: a dead network drive does not block the window.
  void CheckPaths();

  static constexpr std::size_t kMaxShown = 5;
  std::vector<QPushButton*> FButtons;  // never fewer than FPaths
  std::vector<QString> FPaths;         // of the visible buttons
  std::vector<QString> FAbouts;        // what is in each
  TBackgroundTask FTask{this};
};
