// Makes sense of the blocks of one data file and fills the mission model with them. Used by the reader's thread.
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

// Reads the body of a mission-header block, field by field. Throws EStreamError when it breaks off; what was whole
// stands in Data then, without bValid. Returns true.
bool ReadMissionData(TMissionData& Data, TDataFile& DataFile);

class TBlockReader {
 public:
  // Sensors that stand in the list already are served as well.
  TBlockReader(TDataFile& file, std::uint64_t memoryBound);

  // Throws EStreamError when the block is too short for what it must hold, and std::length_error for more than 1,000
  // slow sensors and before the mission, with its tables and with what its lists need to grow, outgrows the bound.
  void ReadCurrentBlock();

 private:
  // Where a channel's reading stands in a record. A channel of an earlier list may lie beyond the present one, or be in
  // no list at all: then it keeps its last reading.
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
  std::size_t FSlowBegin = 0, FSlowEnd = 0;  // the part of a record in which the sensors' columns lie
  bool FSomeSensorIsKept = false;            // some sensor has no column at present
  std::size_t FUsed = 0;                     // bytes of the mission
  std::size_t FLargestList = 0;              // and of the largest list in it
};
