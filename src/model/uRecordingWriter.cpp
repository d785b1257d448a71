#include "model/uRecordingWriter.h"

#include <limits>
#include <stdexcept>
#include <type_traits>

#include "base/uDateTime.h"
#include "model/uBlockTypes.h"

namespace {

constexpr std::size_t kMaxBody = std::numeric_limits<std::uint16_t>::max();

void WriteText(TDataFile& file, std::string_view utf8) {
  file.WriteString(Utf8ToWindows1252(utf8));
}

void WriteMissionHeader(TDataFile& file, const TMissionData& mission) {
  file.NewBlock(kMissionHeaderBlock);
  VisitStoredFields(mission, [&file](const char*, const auto& field) {
    using T = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_same_v<T, std::string>) {
      WriteText(file, field);
    } else if constexpr (std::is_same_v<T, std::uint16_t>) {
      file.WriteWord(field);
    } else if constexpr (std::is_same_v<T, float>) {
      file.WriteSingle(field);
    } else {
      file.WriteDouble(field);
    }
  });
}

void FinishHeadBlock(TDataFile& file) {
  if (file.BlockSize() > kMaxBody) throw std::invalid_argument("The texts are too long for a block of the file.");
  file.WriteBlock();
}

}  // namespace

TRecordingWriter::TRecordingWriter(const std::filesystem::path& file, const TRecordingHead& head)
    : FFile(TDataFile::CreateSave(file)) {
  FFile.NewBlock(kCreatorBlock);
  WriteText(FFile, head.creator);
  FinishHeadBlock(FFile);
  FFile.NewBlock(kStartTimeBlock);
  FFile.WriteDouble(head.startTime - kDaysTo2000);
  FinishHeadBlock(FFile);
  WriteMissionHeader(FFile, head.mission);
  FinishHeadBlock(FFile);
  FFile.NewBlock(kChannelListBlock);
  for (const std::string& channel : head.channels) WriteText(FFile, channel);
  FinishHeadBlock(FFile);
  FFile.NewBlock(kDataBlock);
}

void TRecordingWriter::Append(double ms, std::span<const std::uint32_t> readings) {
  const std::size_t recordSize = sizeof(double) + readings.size_bytes();
  if (recordSize > kMaxBody) throw std::invalid_argument("A record has more channels than fit a block of the file.");
  if (FFile.BlockSize() + recordSize > kMaxBody) {
    FFile.WriteBlock();
    FFile.NewBlock(kDataBlock);
  }
  FFile.WriteDouble(ms / kMsPerDay);
  FFile.WriteBytes({reinterpret_cast<const std::uint8_t*>(readings.data()), readings.size_bytes()});
}

void TRecordingWriter::Close() {
  FFile.WriteBlock();
  FFile.Close();
}
