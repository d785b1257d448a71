#include <fmt/format.h>

#include "base/uFiles.h"
#include "base/uText.h"
#include "cli/uCommands.h"
#include "model/uBlockTypes.h"
#include "model/uDataFile1V0.h"
#include "model/uExceptions1V0.h"

namespace {

std::string ChannelNames(TDataFile& file) {
  std::string names;
  while (file.BlockPos() + 1 < file.BlockSize()) AppendListItem(names, Windows1252ToUtf8(file.ReadString()));
  return names;
}

// What a short block says, beside what it is; empty for the others. A block that breaks off says what it can.
std::string Content(TDataFile& file) {
  try {
    switch (file.BlockType()) {
      case kFileHeaderBlock:
      case kCreatorBlock:
        return ": " + Windows1252ToUtf8(file.ReadString());
      case kChannelListBlock:
        return ": " + ChannelNames(file);
      default:
        return {};
    }
  } catch (const EStreamError&) {
    return ": too short";
  }
}

void PrintBlock(std::size_t number, TDataFile& file, const TConsole& console) {
  std::string line = fmt::format("{:>6}  type {:<5}  {:>5} bytes  {}", number, file.BlockType(), file.BlockSize(),
                                 BlockDescription(file.BlockType()));
  line += Printable(Content(file));
  if (file.BlockCut()) line += fmt::format("; cut, its size says {}", file.BlockSizeInFile());
  console.out(line + "\n");
}

}  // namespace

TStatus BlocksCommand(const std::string& name, const TConsole& console) {
  try {
    TDataFile file = TDataFile::CreateLoad(PathFromUtf8(name));
    if (!file.IsLoadOk()) {
      console.err(fmt::format("kshock: {}: This file is no block data file.\n", Printable(name)));
      return TStatus::NotDisplayable;
    }
    std::size_t number = 0;
    do {
      PrintBlock(number++, file, console);
    } while (file.ReadBlock());
    if (!file.CheckRest())
      console.out("not checked: more than 64 MiB follow the empty block that ends the recording\n");
    if (!file.ReadError().empty()) {
      console.err(
          fmt::format("kshock: {}: The file could not be read to its end: {}\n", Printable(name), file.ReadError()));
      return TStatus::Damaged;
    }
    if (!file.Damaged()) return TStatus::Done;
    console.out(fmt::format("damaged: the stream ends after {} bytes of content, in or behind block {}\n",
                            file.BytesRead(), number - 1));
    return TStatus::Damaged;
  } catch (const EStreamError& error) {
    console.err(fmt::format("kshock: {}: {}\n", Printable(name), error.what()));
    return TStatus::CannotRead;
  }
}
