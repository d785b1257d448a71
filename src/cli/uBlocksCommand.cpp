#include <fmt/format.h>

#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "model/uBlockReader.h"
#include "model/uBlockTypes.h"
#include "model/uDataFile1V0.h"
#include "model/uExceptions1V0.h"

namespace {

// Lists the blocks of one file.
class TBlockList {
 public:
  TBlockList(TDataFile& file, const TConsole& console) : FFile(file), FConsole(console) {}

  void Print(std::size_t number) {
    std::string line = fmt::format("{:>6}  type {:<5}  {:>5} bytes  {}", number, FFile.BlockType(), FFile.BlockSize(),
                                   BlockDescription(FFile.BlockType()));
    line += Printable(Content());
    if (FFile.BlockCut()) line += fmt::format("; cut, its size says {}", FFile.BlockSizeInFile());
    FConsole.out(line + "\n");
  }

  // Such a block would end the read of any other command.
  [[nodiscard]] bool SomeAreTooShort() const { return FTooShort; }

 private:
  // The block's names or texts, or that it is too short for its type.
  std::string Content() {
    try {
      return Read();
    } catch (const EStreamError&) {
      if (FFile.BlockCut()) return {};
      FTooShort = true;
      return ": too short";
    }
  }

  std::string Read() {
    switch (FFile.BlockType()) {
      case kFileHeaderBlock:
      case kCreatorBlock:
        return ": " + Windows1252ToUtf8(FFile.ReadString());
      case kStartTimeBlock:
        FFile.ReadDouble();
        return {};
      case kChannelListBlock:
        return ": " + ReadChannelNames();
      case kDataBlock:
        SkipRecords();
        return {};
      case kMissionHeaderBlock: {
        TMissionData ignored;
        ReadMissionData(ignored, FFile);
        return {};
      }
      default:
        return {};
    }
  }

  std::string ReadChannelNames() {
    std::string names;
    FColumns = 0;
    for (; FFile.BlockPos() + 1 < FFile.BlockSize(); ++FColumns) {
      AppendListItem(names, Windows1252ToUtf8(FFile.ReadString()));
    }
    return names;
  }

  // As TBlockReader: an invalid time ends the block, and a single byte at the end is ignored.
  void SkipRecords() {
    while (FFile.BlockPos() + 1 < FFile.BlockSize()) {
      const double days = FFile.ReadDouble();
      if (!(days >= 0 && days <= kMaxRecordDays)) return;
      for (std::size_t column = 0; column < FColumns; ++column) FFile.ReadSingle();
    }
  }

  TDataFile& FFile;
  const TConsole& FConsole;
  std::size_t FColumns = 0;  // of a record
  bool FTooShort = false;
};

}  // namespace

TStatus BlocksCommand(const std::string& name, const TConsole& console) {
  try {
    TDataFile file = TDataFile::CreateLoad(PathFromUtf8(name));
    if (!file.IsLoadOk()) {
      Complain(console, name, "This file is no block data file.");
      return TStatus::NotDisplayable;
    }
    TBlockList blocks(file, console);
    std::size_t number = 0;
    do {
      blocks.Print(number++);
    } while (file.ReadBlock());
    if (!file.CheckRest())
      console.out("not checked: more than 64 MiB follow the empty block that ends the recording\n");
    if (!file.ReadError().empty()) {
      Complain(console, name, "The file could not be read to its end: " + file.ReadError());
      return TStatus::Damaged;
    }
    if (!file.Damaged()) return blocks.SomeAreTooShort() ? TStatus::Damaged : TStatus::Done;
    console.out(fmt::format("damaged: the stream ends after {} bytes of content, in or behind block {}\n",
                            file.BytesRead(), number - 1));
    return TStatus::Damaged;
  } catch (const EStreamError& error) {
    Complain(console, name, error.what());
    return TStatus::CannotRead;
  }
}
