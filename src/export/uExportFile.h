// Writes the files of exports, with messages processed while the disk takes them.
#pragma once

#include <filesystem>

#include "base/uProgress.h"
#include "platform/uSafeFile.h"

// As WriteBesideAndRename, with `progress` processing messages during the sync. If that throws, the older file stays.
void WriteExport(const std::filesystem::path& file, IProgress& progress, const TFileWriter& write);
// The same for the files of a set.
void PutInPlace(TFileSet& files, IProgress& progress);
