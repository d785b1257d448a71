// A list of recordings with a filter above it, and how far the reading of their figures is, with Cancel.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class TRecordingList;

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
