#include "export/uExportFile.h"

#include "base/uBackground.h"

namespace fs = std::filesystem;

void WriteExport(const fs::path& file, IProgress& progress, const TFileWriter& write) {
  TFileSet files;
  files.Write(file, write);
  PutInPlace(files, progress);
}

void PutInPlace(TFileSet& files, IProgress& progress) {
  if (files.Count() == 0) return;
  RunInBackground([&files](const std::stop_token&) { files.Sync(); }, progress);
  files.PutInPlace();
}
