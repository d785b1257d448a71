// A document of the user manual on the welcome page: an icon over a caption. A click, Enter or Space opens the file
// with the desktop's program for it.
#pragma once

#include <QToolButton>

class TUserManualIcon : public QToolButton {
  Q_OBJECT

 public:
  TUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath, QWidget* parent);

  void Open();

 signals:
  // The file is missing, or the desktop has no program for it.
  void OpenFailed(const QString& filePath);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void TakeFont();

  QString FCaption;
  QString FFilePath;
};
