// Computes the checksum of a recording that has notes, in the background. Main thread only.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "gui/common/uBackgroundTask.h"

class TNoteChecksum {
 public:
  // `progress` gets a sentence while a large file is read, at last an empty one.
  TNoteChecksum(QObject* parent, std::function<void(const std::string&)> progress)
      : FTask(parent), FProgress(std::move(progress)) {}

  // `done` gets the checksum. Does nothing while that of the same file is being computed; another file takes its place.
  // A file that cannot be read has none.
  void Compute(const std::filesystem::path& recording,
               const std::function<void(const std::filesystem::path&, const std::string&)>& done);

 private:
  TBackgroundTask FTask;
  std::function<void(const std::string&)> FProgress;
  std::filesystem::path FRecording;
  bool FSpoke = false;
};
