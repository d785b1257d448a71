// Writes a recording: creator, start time, mission header and channel list first, then records in data blocks.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/uDataFile1V0.h"
#include "model/uGlobalSharedVariables.h"

struct TRecordingHead {
  std::string creator = "korvex165_reader.exe";
  double startTime = 0;  // a date-time
  TMissionData mission;
  std::vector<std::string> channels;  // names as in kKnownChannels, or any other
};

class TRecordingWriter {
 public:
  // Throws EStreamError when the file cannot be written, std::invalid_argument with the field's name when a text has a
  // character outside Windows-1252 or does not fit its block.
  TRecordingWriter(const std::filesystem::path& file, const TRecordingHead& head);

  // Appends a record: its time in ms since the start, and a reading per channel as the bits of a single, so that
  // kNoValue and kEndOfEvent are kept.
  void Append(double ms, std::span<const std::uint32_t> readings);
  // Finishes the file. Throws EStreamError when it could not be written whole.
  void Close();

 private:
  TDataFile FFile;
};
