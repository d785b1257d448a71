#include "model/uReadFileThread.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "base/uDateTime.h"
#include "base/uMessages.h"
#include "model/uBlockTypes.h"
#include "model/uEvents.h"
#include "model/uExceptions1V0.h"
#include "model/uOtherSensors.h"

namespace {

constexpr std::size_t kTimeSize = sizeof(double);
constexpr std::size_t kReadingSize = sizeof(float);
constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

template <class T>
T LoadAt(const std::uint8_t* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

// The first steps of a read: whatever goes wrong in them means that the file cannot be opened.
template <class TStep>
auto OrCannotOpen(const TStep& step) {
  try {
    return step();
  } catch (const std::exception& error) {
    throw EKorvex(kCannotOpenDataFile, error.what());
  }
}

bool IsMark(std::uint32_t reading) {
  return reading >= kEndOfEvent;
}
bool IsAnyNaN(std::uint32_t reading) {
  return (reading & 0x7FFFFFFFU) > 0x7F800000U;
}

bool AllBitsSet(std::span<const std::uint8_t> bytes) {
  std::uint8_t all = 0xFF;
  for (const std::uint8_t byte : bytes) all &= byte;
  return all == 0xFF;
}

// The state of one read: which column holds which channel, and each channel's reading.
class TBlockReader {
 public:
  TBlockReader(TDataFile& file, std::uint64_t hWindow, std::uint64_t memoryBound)
      : FFile(file), FhWindow(hWindow), FMemoryBound(memoryBound) {
    FColumnOf.fill(kNoColumn);
    FCurrent.fill(kNoValue);
  }

  // Throws EStreamError when the block is too short for what it must hold.
  void ReadCurrentBlock() {
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

 private:
  // Where a channel's reading stands in a record. A channel of an earlier list may lie beyond the present one, or be in
  // no list at all: then it keeps its last reading.
  struct TSource {
    std::optional<std::size_t> offset;
    std::uint32_t kept;

    [[nodiscard]] std::uint32_t ReadingIn(const std::uint8_t* record) const {
      return offset ? LoadAt<std::uint32_t>(record + *offset) : kept;
    }
  };
  struct TRoute {
    TSensor* sensor;
    TSource source;
    bool dropsEveryNaN;
  };

  void ReadCreator() {
    const AnsiString creator = FFile.ReadString();
    if (std::ranges::find(kValidCreators, creator) != kValidCreators.end()) EventList.ValidCreator = true;
  }

  void ReadChannelList() {
    FRoutesAreOld = true;
    FColumnCount = 0;
    while (FFile.BlockPos() + 1 < FFile.BlockSize()) {
      const AnsiString name = FFile.ReadString();
      const auto* known = std::ranges::find(kKnownChannels, name, &TKnownChannel::nameInFile);
      if (known != std::end(kKnownChannels)) {
        const auto channel = static_cast<std::size_t>(known - std::begin(kKnownChannels));
        FColumnOf[channel] = FColumnCount;
        if (channel < kAxisCount) {
          bool* const flags[kAxisCount] = {&AxesPresent.x, &AxesPresent.y, &AxesPresent.z};
          *flags[channel] = true;
        } else {
          SensorList.Add(std::string(known->sensorName));
          FUsed += sizeof(TSensor);
          if (FUsed > FMemoryBound) ThrowTooLarge();
        }
      }
      ++FColumnCount;
    }
  }

  void ReadData() {
    // A count past 32 bits starts over; a message has no more room.
    FProgress = static_cast<std::int32_t>(static_cast<std::uint32_t>(FProgress) + 1U);
    PostToPort(FhWindow, {kReadFileMessage, kReadProgress, FProgress});
    if (FFirstDataBlock) EventList.NewEvent();
    FFirstDataBlock = false;
    if (FRoutesAreOld) FindRoutes();

    const std::span<const std::uint8_t> body = FFile.BlockRest();
    const std::size_t recordSize = kTimeSize + FColumnCount * kReadingSize;
    // A list that grows is copied, so the largest counts twice, and so does what this block may add to it.
    const std::uint64_t taken = FUsed + FLargestList;
    const std::uint64_t allowance = taken < FMemoryBound ? (FMemoryBound - taken) / 2 : 0;
    std::size_t added = 0;
    const std::uint8_t* last = nullptr;
    // One byte at the end is no record.
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

  // Where the axes and every sensor of the list take their readings from.
  void FindRoutes() {
    FRoutesAreOld = false;
    const auto sourceOf = [this](std::size_t channel) -> TSource {
      if (FColumnOf[channel] >= FColumnCount) return {std::nullopt, FCurrent[channel]};
      return {kTimeSize + FColumnOf[channel] * kReadingSize, kNoValue};
    };
    for (std::size_t axis = 0; axis < kAxisCount; ++axis) FAxes[axis] = sourceOf(axis);

    FRoutes.clear();
    FSlowBegin = kTimeSize + FColumnCount * kReadingSize;
    FSlowEnd = 0;
    FSomeSensorIsKept = false;
    for (std::size_t i = 0; i < SensorList.Count(); ++i) {
      TSensor& sensor = SensorList.GetItem(i);
      const auto* known = std::ranges::find(kKnownChannels, sensor.Name, &TKnownChannel::sensorName);
      if (known == std::end(kKnownChannels)) continue;
      const TSource source = sourceOf(static_cast<std::size_t>(known - std::begin(kKnownChannels)));
      FRoutes.push_back({&sensor, source, known->dropsEveryNaN});
      if (source.offset) {
        FSlowBegin = std::min(FSlowBegin, *source.offset);
        FSlowEnd = std::max(FSlowEnd, *source.offset + kReadingSize);
      } else {
        FSomeSensorIsKept = true;
      }
    }
  }

  // Returns the bytes by which the model has grown.
  std::size_t ReadRecord(const std::uint8_t* record, double ms) {
    std::size_t added = 0;
    const std::uint32_t x = FAxes[0].ReadingIn(record);
    const std::uint32_t y = FAxes[1].ReadingIn(record);
    const std::uint32_t z = FAxes[2].ReadingIn(record);
    if (x == kEndOfEvent || y == kEndOfEvent || z == kEndOfEvent) {
      EventList.NewEvent();
    } else if (x != kNoValue && y != kNoValue && z != kNoValue) {
      const std::size_t before = EventList.Count();
      EventList.AddValues(ms, std::bit_cast<float>(x), std::bit_cast<float>(y), std::bit_cast<float>(z));
      added += sizeof(TEventValue) + (EventList.Count() - before) * sizeof(TEvent);
    }
    // Most records of a shock have no slow reading: one look at all their columns says so.
    if (!FSomeSensorIsKept && FSlowBegin < FSlowEnd && AllBitsSet({record + FSlowBegin, record + FSlowEnd})) {
      return added;
    }
    for (const TRoute& route : FRoutes) {
      const std::uint32_t reading = route.source.ReadingIn(record);
      if (IsMark(reading) || (route.dropsEveryNaN && IsAnyNaN(reading))) continue;
      route.sensor->AddValues(ms, std::bit_cast<float>(reading));
      added += sizeof(TSensorValue);
    }
    return added;
  }

  // Readings survive from block to block: a later channel list may leave a channel without a column.
  void KeepReadings(const std::uint8_t* record) {
    for (std::size_t channel = 0; channel < FColumnOf.size(); ++channel) {
      if (FColumnOf[channel] < FColumnCount) {
        FCurrent[channel] = LoadAt<std::uint32_t>(record + kTimeSize + FColumnOf[channel] * kReadingSize);
      }
    }
  }

  void CountMemory(std::size_t added) {
    FUsed += added;
    FLargestList = std::max(FLargestList, EventList.Count() * sizeof(TEvent));
    if (EventList.Count() > 0) {
      FLargestList = std::max(FLargestList, EventList.Events().back().Count() * sizeof(TEventValue));
    }
    for (const TRoute& route : FRoutes) {
      FLargestList = std::max(FLargestList, route.sensor->Count() * sizeof(TSensorValue));
    }
  }

  [[noreturn]] void ThrowTooLarge() const {
    throw std::length_error(
        fmt::format("The recording needs more memory than the {} MB that it may use on this machine. Reading stopped "
                    "in data block {}.",
                    FMemoryBound / 1000000, FProgress));
  }

  [[noreturn]] static void ThrowShortRecord() {
    throw EStreamError("A data record breaks off at the end of its block.");
  }

  TDataFile& FFile;
  std::uint64_t FhWindow;
  std::uint64_t FMemoryBound;
  std::int32_t FProgress = 0;
  bool FFirstDataBlock = true;
  bool FRoutesAreOld = true;
  std::size_t FColumnCount = 0;
  std::array<std::size_t, kChannelCount> FColumnOf{};
  std::array<std::uint32_t, kChannelCount> FCurrent{};  // bit patterns, so that marks stay marks
  std::array<TSource, kAxisCount> FAxes{};
  std::vector<TRoute> FRoutes;
  std::size_t FSlowBegin = 0, FSlowEnd = 0;  // the part of a record in which the sensors' columns lie
  bool FSomeSensorIsKept = false;            // some sensor has no column at present
  std::size_t FUsed = 0;                     // bytes of the model
  std::size_t FLargestList = 0;              // and of the largest list in it
};

}  // namespace

bool ReadMissionData(TMissionData& Data, TDataFile& DataFile) {
  const auto readText = [&DataFile] { return Windows1252ToUtf8(DataFile.ReadString()); };
  Data.fileVersion = DataFile.ReadWord();
  Data.version = DataFile.ReadWord();
  Data.sKorvexType = readText();
  Data.sKorvexVersion = readText();
  Data.sID = readText();
  Data.sTitle = readText();
  Data.sOperator = readText();
  Data.rec_starttime = DataFile.ReadDouble();
  Data.rec_endtime = DataFile.ReadDouble();
  Data.rec_ctrl = DataFile.ReadWord();
  Data.options = DataFile.ReadWord();
  Data.rec_startmode = DataFile.ReadWord();
  Data.rec_stopmode = DataFile.ReadWord();
  Data.rtc_starttime = DataFile.ReadDouble();
  Data.rtc_stoptime = DataFile.ReadDouble();
  Data.adxl_level_on = DataFile.ReadSingle();
  Data.adxl_level_off = DataFile.ReadSingle();
  Data.rec_fast_rate = DataFile.ReadDouble();
  Data.buffer_pre_cnts = DataFile.ReadWord();
  Data.buffer_post_cnts = DataFile.ReadWord();
  Data.rec_std_mask = DataFile.ReadWord();
  Data.tb_meas_rate = DataFile.ReadDouble();
  Data.bValid = true;
  return true;
}

TReadFileThread::TReadFileThread(std::uint64_t hWindow, std::filesystem::path InFile, std::uint64_t memoryBound)
    : FhWindow(hWindow), FInFile(std::move(InFile)), FMemoryBound(memoryBound), FThread([this] { Execute(); }) {}

TReadFileThread::~TReadFileThread() {
  Terminate();
  WaitFor();
}

void TReadFileThread::WaitFor() {
  if (FThread.joinable()) FThread.join();
}

void TReadFileThread::Execute() {
  TMessage last{kReadFileMessage, kReadFinished, 0};
  const auto fail = [&last](std::int64_t code, std::string text) {
    ReadErrorText = std::move(text);
    last = {kReadFileMessage, kReadFailed, code};
  };
  try {
    ReadDataFile();
  } catch (const EKorvex& error) {
    fail(error.iException, error.what());
  } catch (const std::bad_alloc&) {
    fail(0, "There is not enough memory for this recording.");
  } catch (const std::exception& error) {
    fail(0, error.what());
  }
  if (last.wParam == kReadFailed && last.lParam != kCannotOpenDataFile) FExtent.damaged = true;
  try {
    EventList.Trim();
    SensorList.Trim();
  } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): the lists keep their reserve, nothing is lost
  }
  PostToPort(FhWindow, last);
}

void TReadFileThread::ReadDataFile() {
  MissionData.bValid = false;
  EventList.ValidCreator = false;

  TDataFile file = OrCannotOpen([this] { return TDataFile::CreateLoad(FInFile); });
  // Whatever ends the read, what is known of the file by then is kept.
  struct TKeepExtent {
    const TDataFile& file;
    TReadExtent& extent;
    ~TKeepExtent() { extent = {file.Damaged(), file.BytesRead()}; }
  } const keepExtent{file, FExtent};

  const bool isDataFile = OrCannotOpen([&file] { return file.IsLoadOk(); });
  TBlockReader reader(file, FhWindow, FMemoryBound);
  while (isDataFile && file.ReadBlock()) {
    if (FTerminated) throw EKorvex(kReadCancelled);
    try {
      reader.ReadCurrentBlock();
    } catch (const EStreamError&) {
      // A block that the file's end cut short may break off anywhere; what it held whole stays.
      if (!file.BlockCut()) throw;
    }
  }
  // An empty block ends the read, and may be one only because the stream is damaged: the checksum behind it tells.
  while (file.SkipOn()) {
    if (FTerminated) throw EKorvex(kReadCancelled);
  }
}
