// Which of some paths are there, asked for in the background: a dead network drive does not hold up the window.
#pragma once

#include <QObject>
#include <QStringList>

class TBackgroundTask;

class TPathCheck : public QObject {
  Q_OBJECT

 public:
  explicit TPathCheck(QObject* parent);

  // Answers with Checked for each path in turn. Paths that are still to be asked for from an earlier call are dropped.
  void Check(const QStringList& paths);

 signals:
  void Checked(const QString& path, bool exists);

 private:
  TBackgroundTask* FTask;
};
