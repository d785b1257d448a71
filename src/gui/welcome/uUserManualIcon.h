// A document of the user manual on the welcome page: an icon over a caption. A click, Enter or Space opens the file
// with the desktop's program for it.
#pragma once

#include <QFrame>
#include <QIcon>

class TUserManualIcon : public QFrame {
  Q_OBJECT

 public:
  TUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath, QWidget* parent);

  void Open();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // The file is gone, or the desktop has no program for it.
  void OpenFailed(const QString& filePath);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintCaption(QPainter& painter, const QRect& rect) const;

  QString FCaption;
  QString FFilePath;
  QIcon FIcon;
  bool FPressed = false;
};
