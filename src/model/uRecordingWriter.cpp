#include "model/uRecordingWriter.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>

#include "base/uDateTime.h"
#include "model/uBlockTypes.h"

namespace {

constexpr std::size_t kMaxBody = std::numeric_limits<std::uint16_t>::max();

// A block of the head. A text goes in as it is or not at all.
class THeadBlock {
 public:
  THeadBlock(TDataFile& file, std::uint16_t type) : FFile(file) { FFile.NewBlock(type); }

  void WriteText(std::string_view field, std::string_view utf8) {
    const AnsiString ansi = Utf8ToWindows1252(utf8);
    if (Windows1252ToUtf8(ansi) != utf8) {
      throw std::invalid_argument(fmt::format("\"{}\" has a character that Windows-1252 lacks.", field));
    }
    if (ansi.size() > FLongestText) {
      FLongestText = ansi.size();
      FLongestField = field;
    }
    if (ansi.size() > kMaxBody) ThrowTooLong();
    FFile.WriteString(ansi);
  }
  void Finish() {
    if (FFile.BlockSize() > kMaxBody) ThrowTooLong();
    FFile.WriteBlock();
  }

 private:
  [[noreturn]] void ThrowTooLong() const {
    throw std::invalid_argument(
        fmt::format("\"{}\" is too long; a block of the file takes {} bytes.", FLongestField, kMaxBody));
  }

  TDataFile& FFile;
  std::string_view FLongestField;
  std::size_t FLongestText = 0;  // bytes
};

// A number of days that a reader takes for exactly these ms, where there is one next to the quotient.
double DaysOf(double ms) {
  const double days = ms / kMsPerDay;
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double near : {days, std::nextafter(days, -infinity), std::nextafter(days, infinity)}) {
    if (near * kMsPerDay == ms) return near;
  }
  return days;
}

void WriteMissionHeader(TDataFile& file, const TMissionData& mission) {
  THeadBlock block(file, kMissionHeaderBlock);
  VisitStoredFields(mission, [&](const char* name, const auto& field) {
    using T = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_same_v<T, std::string>) {
      block.WriteText(name, field);
    } else if constexpr (std::is_same_v<T, std::uint16_t>) {
      file.WriteWord(field);
    } else if constexpr (std::is_same_v<T, float>) {
      file.WriteSingle(field);
    } else {
      file.WriteDouble(field);
    }
  });
  block.Finish();
}

}  // namespace

TRecordingWriter::TRecordingWriter(const std::filesystem::path& file, const TRecordingHead& head)
    : FFile(TDataFile::CreateSave(file)) {
  THeadBlock creator(FFile, kCreatorBlock);
  creator.WriteText("creator", head.creator);
  creator.Finish();
  FFile.NewBlock(kStartTimeBlock);
  FFile.WriteDouble(head.startTime - kDaysTo2000);
  FFile.WriteBlock();
  WriteMissionHeader(FFile, head.mission);
  THeadBlock channels(FFile, kChannelListBlock);
  for (const std::string& channel : head.channels) channels.WriteText("channels", channel);
  channels.Finish();
  FFile.NewBlock(kDataBlock);
}

void TRecordingWriter::Append(double ms, std::span<const std::uint32_t> readings) {
  const std::size_t recordSize = sizeof(double) + readings.size_bytes();
  if (recordSize > kMaxBody) throw std::invalid_argument("A record has more channels than fit a block of the file.");
  if (FFile.BlockSize() + recordSize > kMaxBody) {
    FFile.WriteBlock();
    FFile.NewBlock(kDataBlock);
  }
  FFile.WriteDouble(DaysOf(ms));
  FFile.WriteBytes({reinterpret_cast<const std::uint8_t*>(readings.data()), readings.size_bytes()});
}

void TRecordingWriter::Close() {
  FFile.WriteBlock();
  FFile.Close();
}
