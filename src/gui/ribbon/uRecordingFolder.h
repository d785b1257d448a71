// What stands at a path, and what recordings lie in a folder. It may take as long as the file system likes, so it is
// asked for in the background.
#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <vector>

struct TFolderEntry {
  QString Name;
  qint64 Size = 0;      // bytes
  qint64 Modified = 0;  // ms since 1970, UTC
};

enum class TPathKind { Missing, File, Folder, Other };

struct TFolderListing {
  TPathKind Kind = TPathKind::Missing;
  std::vector<TFolderEntry> Entries;  // of a folder, in no order
  bool Readable = false;              // a folder that could be opened
  bool Complete = true;
};

struct TFolderBounds {
  size_t Recordings = 20000;
  size_t Entries = 500000;  // looked at
  std::chrono::milliseconds Time{10000};
};

// Of a folder the files that are not hidden and whose names match one of the patterns, a star and an ending such as
// "*.kshock", whatever the case: loggers write on file systems that have none. Any thread, also one that outlives the
// application.
TFolderListing ReadFolder(const QString& path, const QStringList& patterns, const TFolderBounds& bounds = {});

// Not hidden, and of one of the patterns.
bool IsRecordingName(const QString& name, const QStringList& patterns);

// Numbers in names in their order.
void SortByName(std::vector<TFolderEntry>& entries);
