// Parses the blocks of one data file into the mission model. Used by the reader's thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/uBlockTypes.h"
#include "model/uDataFile1V0.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uQuantities.h"

// Reads the body of a mission-header block and returns true. Throws EStreamError when the block is too short; Data then
// has the fields before that place, and bValid is not set.
bool ReadMissionData(TMissionData& Data, TDataFile& DataFile);

class TBlockReader {
 public:
  // Sensors that are already in the list get readings, too.
  TBlockReader(TDataFile& file, std::uint64_t memoryBound);

  // Throws EStreamError when the block is too short for its type, and std::length_error for more than 1,000 slow
  // sensors or before the mission needs more bytes than the bound. That counts its tables and the copy of a list that
  // grows.
  void ReadCurrentBlock();

 private:
  // The place of a channel's reading in a record. A channel that the current list lacks keeps its last reading.
  struct TSource {
    std::optional<std::size_t> offset;
    std::uint32_t kept = kNoValue;

    [[nodiscard]] std::uint32_t ReadingIn(const std::uint8_t* record) const;
  };

  void ReadCreator();
  void ReadChannelList();
  void ReadData();
  void AddRoute(std::size_t sensor);
  void FindSources();
  void BeginEvent();
  std::size_t ReadRecord(const std::uint8_t* record, double ms);
  void KeepReadings(const std::uint8_t* record);
  void CountMemory(std::size_t added);
  [[noreturn]] void ThrowTooLarge() const;

  TDataFile& FFile;
  std::uint64_t FMemoryBound;
  bool FFirstDataBlock = true;
  bool FEventBegins = false;  // the next sample opens an event
  std::size_t FColumnCount = 0;
  std::array<std::size_t, kChannelCount> FColumnOf;
  // By channel: the sensors that take its readings, by their index in the list. Sensors of one name have equal
  // readings.
  std::array<std::vector<std::uint32_t>, kChannelCount> FSensorsOf;
  std::array<TSource, kChannelCount> FSources;
  std::size_t FSlowBegin = 0, FSlowEnd = 0;  // the part of a record with the sensors' columns
  bool FSomeSensorIsKept = false;            // some sensor has no column now
  std::size_t FUsed = 0;                     // bytes of the mission
  std::size_t FMaxListBytes = 0;             // of the largest list in it
};
