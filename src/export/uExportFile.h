// How every export writes its file.
#pragma once

#include <filesystem>

#include "base/uProgress.h"
#include "platform/uSafeFile.h"

// As WriteBesideAndRename; while the disk takes the file, `progress` processes messages, and what that throws leaves
// the older file.
void WriteExport(const std::filesystem::path& file, IProgress& progress, const TFileWriter& write);
// Waits for the disk as above, and puts the files of the set in place.
void PutInPlace(TFileSet& files, IProgress& progress);
