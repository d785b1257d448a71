// What recordings lie in a folder. Reading is bounded in entries and in time, so that a huge or slow folder cannot
// hold up the window.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

struct TFolderEntry {
  QString Name;
  qint64 Size = 0;  // bytes
  QDateTime Modified;
};

struct TFolderListing {
  std::vector<TFolderEntry> Entries;  // by name, numbers in names in their order
  bool Readable = true;
  bool Complete = true;
};

struct TFolderBounds {
  size_t Recordings = 20000;
  size_t Entries = 500000;  // looked at
  qint64 Time = 1500;       // ms
};

// Files whose names match one of the patterns, such as "*.kshock", whatever the case: loggers write on file systems
// that have none.
TFolderListing ReadFolder(const QString& folder, const QStringList& patterns, const TFolderBounds& bounds = {});

void SortByName(std::vector<TFolderEntry>& entries);
