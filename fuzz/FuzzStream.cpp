// Reads the input as a file by both ways to inflate: mission, extent and end must be the same.
#include "base/uMessages.h"
#include "fuzz/uFuzzFolder.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"
#include "model/uReadFileThread.h"

namespace {

constexpr std::uint64_t kMemoryBound = 64 * 1024 * 1024;

class TLastMessage final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override {
    Require(message.wParam != kReadProgress || message.lParam > FBlocks);
    if (message.wParam == kReadProgress) FBlocks = message.lParam;
    Last = message;
  }
  TMessage Last{};

 private:
  std::int64_t FBlocks = 0;
};

// Everything that the read leaves, in numbers and words.
std::string WhatIsRead(TInflateWay way) {
  ClearMission();
  TLastMessage port;
  TReadExtent extent;
  {
    const TPortHandle handle(port);
    TReadFileThread thread(handle.Value(), "input.kshock", kMemoryBound, way);
    thread.WaitFor();
    extent = thread.Extent();
  }
  std::string all =
      fmt::format("{} {} {} {} {} {} {} {} {}", port.Last.wParam, port.Last.lParam, ReadErrorText, extent.isDataFile,
                  extent.damaged, extent.readError, extent.inflatedBytes, extent.takenBytes, extent.dataBlocks);
  VisitStoredFields(MissionData, [&all](const char*, const auto& field) { all += fmt::format(" {}", field); });
  for (const TEvent& event : EventList.Events()) {
    double sum = 0;
    for (const TEventValue& value : event.Values()) sum += value.time + double{value.xvalue};
    all += fmt::format(" {} {} {}", event.Count(), event.Max, sum);
  }
  for (const TSensor& sensor : SensorList.Sensors()) all += fmt::format(" {} {}", sensor.Name, sensor.Count());
  return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TFuzzFolder folder;
  TFuzzFolder::Write("input.kshock", {data, size});
  Require(WhatIsRead(TInflateWay::Fast) == WhatIsRead(TInflateWay::Exact));
  return 0;
}
