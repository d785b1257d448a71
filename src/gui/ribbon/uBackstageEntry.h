// An entry of the backstage's column; the current one is checked.
#pragma once

#include <QToolButton>

class QAction;

class TBackstageEntry : public QToolButton {
  Q_OBJECT

 public:
  TBackstageEntry(const QString& objectName, QWidget* parent);

  // The icon is a name in icons.txt.
  void Show(const QString& caption, const QString& icon);
  // Takes caption, icon, tool tip, enabled and visible from the action, now and when they change.
  void Follow(QAction* action);

 signals:
  void StepRequested(int step);  // 1: the entry below, -1: above
  void PageRequested();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void TakeFrom(const QAction* action);
  void TakeFont();
};
