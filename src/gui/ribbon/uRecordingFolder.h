// The kind of a path and the recordings in a folder. Reading may take long on a network drive: call it in the
// background.
#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>
#include <vector>

#include "fleet/uFleetSummary.h"

struct TFolderEntry {
  QString Name;
  qint64 Size = 0;                            // bytes
  qint64 Modified = 0;                        // ms since 1970, UTC
  std::optional<TFleetSummary> Summary = {};  // once it was read
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

// The files of a folder that are not hidden and match a pattern: a star and an ending such as "*.kshock". Case is
// ignored, because loggers may write in capitals. Any thread, even one that outlives the application.
TFolderListing ReadFolder(const QString& path, const QStringList& patterns, const TFolderBounds& bounds = {});

// Not hidden, and matches a pattern.
bool IsRecordingName(const QString& name, const QStringList& patterns);

// By name; digits compare as numbers, case is ignored.
void SortByName(std::vector<TFolderEntry>& entries);
