#include "model/uBlockReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "model/uEvents.h"
#include "model/uExceptions1V0.h"
#include "model/uOtherSensors.h"

namespace {

constexpr std::size_t kTimeSize = sizeof(double);
constexpr std::size_t kReadingSize = sizeof(float);
constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

// Bytes in memory, with the heap's overhead and the row in the tables; for an event also its metrics.
constexpr std::size_t kEventCost = sizeof(TEvent) + 32 + 160 + 56;
constexpr std::size_t kReadingCost = sizeof(TSensorValue) + 24;
constexpr std::size_t kSensorCost = sizeof(TSensor) + 32;

// Far more than the known channels. With thousands of sensors a few bytes of a record would fill gigabytes.
constexpr std::size_t kMaxSensors = 1000;

template <class T>
T LoadAt(const std::uint8_t* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

bool IsMark(std::uint32_t reading) {
  return reading >= kEndOfEvent;
}
bool IsAnyNaN(std::uint32_t reading) {
  return (reading & 0x7FFFFFFFU) > 0x7F800000U;
}

// True if every reading in [begin, end) is the no-value mark.
bool AllAreNoValue(const std::uint8_t* begin, const std::uint8_t* end) {
  for (; end - begin >= 8; begin += 8) {
    if (LoadAt<std::uint64_t>(begin) != std::numeric_limits<std::uint64_t>::max()) return false;
  }
  return begin == end || LoadAt<std::uint32_t>(begin) == kNoValue;
}

[[noreturn]] void ThrowShortRecord() {
  throw EStreamError("A data record breaks off at the end of its block.");
}

}  // namespace

bool ReadMissionData(TMissionData& Data, TDataFile& DataFile) {
  VisitStoredFields(Data, [&DataFile](const char*, auto& field) {
    using T = std::remove_reference_t<decltype(field)>;
    if constexpr (std::is_same_v<T, std::string>) {
      field = Windows1252ToUtf8(DataFile.ReadString());
    } else if constexpr (std::is_same_v<T, std::uint16_t>) {
      field = DataFile.ReadWord();
    } else if constexpr (std::is_same_v<T, float>) {
      field = DataFile.ReadSingle();
    } else {
      field = DataFile.ReadDouble();
    }
  });
  Data.bValid = true;
  return true;
}

std::uint32_t TBlockReader::TSource::ReadingIn(const std::uint8_t* record) const {
  return offset ? LoadAt<std::uint32_t>(record + *offset) : kept;
}

TBlockReader::TBlockReader(TDataFile& file, std::uint64_t memoryBound) : FFile(file), FMemoryBound(memoryBound) {
  FColumnOf.fill(kNoColumn);
  for (std::size_t sensor = 0; sensor < SensorList.Count(); ++sensor) AddRoute(sensor);
}

void TBlockReader::ReadCurrentBlock() {
  switch (FFile.BlockType()) {
    case kCreatorBlock:
      ReadCreator();
      break;
    case kStartTimeBlock:
      EventList.StartTime = FFile.ReadDouble() + kDaysTo2000;
      break;
    case kChannelListBlock:
      ReadChannelList();
      break;
    case kDataBlock:
      ReadData();
      break;
    case kMissionHeaderBlock:
      ReadMissionData(MissionData, FFile);
      break;
    default:
      break;
  }
}

void TBlockReader::ReadCreator() {
  const AnsiString creator = FFile.ReadString();
  if (std::ranges::find(kValidCreators, creator) != kValidCreators.end()) EventList.ValidCreator = true;
}

void TBlockReader::ReadChannelList() {
  FColumnCount = 0;
  while (FFile.BlockPos() + 1 < FFile.BlockSize()) {
    const AnsiString name = FFile.ReadString();
    // An empty name is read as a blank. A small file may hold 100 million of them, so they are not compared with all.
    const auto* known = name == " " ? nullptr : FindQuantity(&TQuantityRow::nameInFile, name);
    if (known != nullptr) {
      const auto channel = static_cast<std::size_t>(known - kQuantities);
      FColumnOf[channel] = FColumnCount;
      if (channel < kAxisCount) {
        bool* const flags[kAxisCount] = {&AxesPresent.x, &AxesPresent.y, &AxesPresent.z};
        *flags[channel] = true;
      } else {
        if (SensorList.Count() == kMaxSensors) throw std::length_error("The recording names too many slow channels.");
        SensorList.Add(std::string(known->sensorName));
        AddRoute(SensorList.Count() - 1);
        CountMemory(kSensorCost);
        if (FUsed + FMaxListBytes > FMemoryBound) ThrowTooLarge();
      }
    }
    ++FColumnCount;
  }
  FindSources();
}

void TBlockReader::AddRoute(std::size_t sensor) {
  const auto* known = FindQuantity(&TQuantityRow::sensorName, SensorList.GetItem(sensor).Name);
  if (known == nullptr) return;
  FSensorsOf[static_cast<std::size_t>(known - kQuantities)].push_back(static_cast<std::uint32_t>(sensor));
}

void TBlockReader::FindSources() {
  FSlowBegin = kTimeSize + FColumnCount * kReadingSize;
  FSlowEnd = 0;
  FSomeSensorIsKept = false;
  for (std::size_t channel = 0; channel < kChannelCount; ++channel) {
    TSource& source = FSources[channel];
    source.offset.reset();
    if (FColumnOf[channel] < FColumnCount) source.offset = kTimeSize + FColumnOf[channel] * kReadingSize;
    if (FSensorsOf[channel].empty()) continue;
    if (source.offset) {
      FSlowBegin = std::min(FSlowBegin, *source.offset);
      FSlowEnd = std::max(FSlowEnd, *source.offset + kReadingSize);
    } else {
      FSomeSensorIsKept = true;
    }
  }
}

void TBlockReader::ReadData() {
  if (FFirstDataBlock) BeginEvent();
  FFirstDataBlock = false;

  const std::span<const std::uint8_t> body = FFile.BlockRest();
  const std::size_t recordSize = kTimeSize + FColumnCount * kReadingSize;
  // A list that grows is copied: the largest list and what this block adds to it count twice.
  const std::uint64_t taken = FUsed + FMaxListBytes;
  const std::uint64_t allowance = taken < FMemoryBound ? (FMemoryBound - taken) / 2 : 0;
  std::size_t added = 0;
  const std::uint8_t* last = nullptr;
  // A single byte at the end is ignored.
  for (std::size_t position = 0; position + 1 < body.size(); position += recordSize) {
    const std::size_t rest = body.size() - position;
    if (rest < kTimeSize) ThrowShortRecord();
    const auto days = LoadAt<double>(&body[position]);
    if (!(days >= 0 && days <= kMaxRecordDays)) break;  // also NaN; the rest of the block is skipped
    if (rest < recordSize) ThrowShortRecord();
    last = &body[position];
    added += ReadRecord(last, days * kMsPerDay);
    if (added > allowance) ThrowTooLarge();
  }
  if (last != nullptr) KeepReadings(last);
  if (added > 0) CountMemory(added);
}

void TBlockReader::BeginEvent() {
  EventList.NewEvent();
  FEventBegins = true;
}

// Returns the bytes by which the mission has grown.
std::size_t TBlockReader::ReadRecord(const std::uint8_t* record, double ms) {
  std::size_t added = 0;
  const std::uint32_t x = FSources[0].ReadingIn(record);
  const std::uint32_t y = FSources[1].ReadingIn(record);
  const std::uint32_t z = FSources[2].ReadingIn(record);
  if (x == kEndOfEvent || y == kEndOfEvent || z == kEndOfEvent) {
    BeginEvent();
  } else if (x != kNoValue && y != kNoValue && z != kNoValue) {
    EventList.AddValues(ms, std::bit_cast<float>(x), std::bit_cast<float>(y), std::bit_cast<float>(z));
    added += sizeof(TEventValue) + (FEventBegins ? kEventCost : 0);
    FEventBegins = false;
  }
  // Fast path: most records of a shock have no slow reading.
  if (!FSomeSensorIsKept && FSlowBegin < FSlowEnd && AllAreNoValue(record + FSlowBegin, record + FSlowEnd))
    return added;
  for (std::size_t channel = kAxisCount; channel < kChannelCount; ++channel) {
    const std::uint32_t reading = FSources[channel].ReadingIn(record);
    if (IsMark(reading) || (kKnownChannels[channel].dropsEveryNaN && IsAnyNaN(reading))) continue;
    for (const std::uint32_t sensor : FSensorsOf[channel]) {
      SensorList.GetItem(sensor).AddValues(ms, std::bit_cast<float>(reading));
    }
    added += FSensorsOf[channel].size() * kReadingCost;
  }
  return added;
}

// Readings survive from block to block: a later channel list may leave a channel without a column.
void TBlockReader::KeepReadings(const std::uint8_t* record) {
  for (TSource& source : FSources) source.kept = source.ReadingIn(record);
}

void TBlockReader::CountMemory(std::size_t added) {
  FUsed += added;
  std::size_t bytes = std::max(SensorList.Count() * sizeof(TSensor), EventList.Count() * sizeof(TEvent));
  if (EventList.Count() > 0) bytes = std::max(bytes, EventList.Events().back().Count() * sizeof(TEventValue));
  for (const auto& sensors : FSensorsOf) {
    // No sensor of a channel has more readings than its first.
    if (!sensors.empty()) bytes = std::max(bytes, SensorList.GetItem(sensors[0]).Count() * sizeof(TSensorValue));
  }
  FMaxListBytes = std::max(FMaxListBytes, bytes);
}

void TBlockReader::ThrowTooLarge() const {
  throw std::length_error(fmt::format("The recording needs more memory than the {} MB that it may use on this machine.",
                                      FMemoryBound / 1000000));
}
