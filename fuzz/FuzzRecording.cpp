// Feeds blocks to the reader and builds the tables from what it made of them. The input is the content of a data file
// behind its header; the target deflates it, so that mutation reaches the blocks. The first byte says what else happens
// to the file.
#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "analysis/uMissionDatasets.h"
#include "analysis/uMissionSummary.h"
#include "base/uMessages.h"
#include "model/uMissionText.h"
#include "model/uReadFileThread.h"

namespace {

constexpr std::uint64_t kMemoryBound = 64 * 1024 * 1024;
constexpr unsigned kOwnHeader = 1;  // the input brings its own file header
constexpr unsigned kCut = 2;        // the stream loses its last bytes

// Checks what every read promises: exactly one end message, last.
class TCheckingPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override {
    if (Ended || message.Msg != kReadFileMessage) std::abort();
    Ended = message.wParam == kReadFinished || message.wParam == kReadFailed;
    if (!Ended && message.wParam != kReadProgress) std::abort();
  }
  bool Ended = false;
};

std::vector<std::uint8_t> StreamOf(const std::uint8_t* data, std::size_t size, unsigned mode) {
  std::vector<std::uint8_t> content;
  if ((mode & kOwnHeader) == 0) content = {0, 0, 15, 0, 9, 0, 'H', 'A', 'L', 'V', 'O', 'R', 'N', 'I', 'C', 1, 0, 0, 0};
  content.insert(content.end(), data, data + size);
  uLongf length = compressBound(content.size());
  std::vector<std::uint8_t> stream(length);
  compress2(stream.data(), &length, content.data(), content.size(), 1);
  stream.resize((mode & kCut) != 0 ? length - length / 8 : length);
  return stream;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const int memoryFile = memfd_create("recording", 0);
  const std::vector<std::uint8_t> stream = StreamOf(data + 1, size - 1, data[0]);
  if (ftruncate(memoryFile, 0) != 0) std::abort();
  if (pwrite(memoryFile, stream.data(), stream.size(), 0) != static_cast<ssize_t>(stream.size())) std::abort();

  ClearMission();
  TCheckingPort port;
  {
    const TPortHandle handle(port);
    TReadFileThread thread(handle.Value(), "/proc/self/fd/" + std::to_string(memoryFile), kMemoryBound);
    thread.WaitFor();
  }
  if (!port.Ended) std::abort();

  TMissionDatasets tables;
  TNoProgress progress;
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
  for (const TDataset* table : {&tables.Events, &tables.Important, &tables.Cards, &tables.Sensors, &tables.Battery}) {
    for (std::size_t field = 0; field < table->Fields().size() && table->RecordCount() > 0; ++field) {
      static_cast<void>(table->DisplayText(table->RowAt(0), field));
    }
  }
  static_cast<void>(SummarizeMission(EventList, tables.Metrics, SensorList));
  static_cast<void>(StartStopText(MissionData) + LimitText(MissionData) + StdChannelsText(MissionData));
  return 0;
}
