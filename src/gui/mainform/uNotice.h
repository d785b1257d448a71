// A line in the status bar that says what the last command wrote, with a button that opens its folder. Hidden while
// there is nothing to say; the hint for the mouse gives way to it.
#pragma once

#include <QWidget>
#include <filesystem>

class QToolButton;
class TElidedLabel;

class TNotice : public QWidget {
  Q_OBJECT

 public:
  TNotice(QWidget* hint, QWidget* parent);

  // Without a folder there is no button; an empty text ends the notice.
  void ShowText(const QString& text, const std::filesystem::path& folder);
  void Clear() { ShowText({}, {}); }

 signals:
  // The folder is missing, or the desktop has no program for it.
  void OpenFailed(const QString& folder);

 private:
  void OpenFolder();

  QWidget* FHint;
  TElidedLabel* FText;
  QToolButton* FOpen;
  QString FFolder;
};
