// A flat entry of the backstage's column. The current one is checked and bears a bar at its edge.
#pragma once

#include <QToolButton>

class QAction;

class TBackstageEntry : public QToolButton {
  Q_OBJECT

 public:
  TBackstageEntry(const QString& objectName, QWidget* parent);

  // The icon is a name in icons.txt.
  void Show(const QString& caption, const QString& icon);
  // Takes caption, icon, tool tip and whether it can be used from the action, and keeps in step.
  void Follow(QAction* action);

 signals:
  void StepAsked(int step);  // 1: the entry below, -1: above
  void PageAsked();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void TakeFrom(const QAction* action);
  void TakeFont();

  QString FIconName;
};
