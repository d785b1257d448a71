// Completes a path while it is typed, with the folders and recordings of the folder that it has reached. The folder is
// read in the background, so one that answers late completes late and holds up nobody. Main thread only.
#pragma once

#include <QCompleter>
#include <QStringList>
#include <QStringListModel>

#include "gui/common/uBackgroundTask.h"

class QLineEdit;

class TPathCompleter : public QCompleter {
  Q_OBJECT

 public:
  explicit TPathCompleter(QLineEdit* edit);
  // Of recordings, such as "*.kshock".
  void SetFilePatterns(const QStringList& patterns);

 private:
  void ReadFolderOf(const QString& typed);

  QStringListModel FPaths;
  QStringList FPatterns;
  QString FFolder;  // that FPaths are of, or are read from
  TBackgroundTask FTask{this};
};
