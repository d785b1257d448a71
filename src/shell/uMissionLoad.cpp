#include "shell/uMissionLoad.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>

#include "platform/uMachineMemory.h"
#include "shell/uOrderingCommands.h"

namespace {

// What the model lacks after a read: start times and channel names of its own lists.
void CompleteModel() {
  SensorList.StartTime = EventList.StartTime;
  MissionData.StartTime = EventList.StartTime;
  MissionData.bValidStartTime = std::isfinite(EventList.StartTime) && EventList.StartTime > 0;
  for (std::size_t axis = 0; axis < kAxisCount; ++axis) {
    EventList.ChannelInfo[axis].name = kKnownChannels[axis].nameInFile;
  }
  for (std::size_t i = 0; i < SensorList.ChannelInfo.size(); ++i) {
    SensorList.ChannelInfo[i].name = i < SensorList.Count() ? SensorList.GetItem(i).Name : std::string();
  }
}

struct TStopped {};

// Keeps the last message: a recording may post more than memory can hold.
class TReadingPort final : public IMessagePort {
 public:
  explicit TReadingPort(const std::function<void(const TMessage&)>& posted) : FPosted(posted) {}
  void Receive(const TMessage& message) noexcept override {
    Last = message;
    if (FPosted) FPosted(message);
  }
  TMessage Last{};

 private:
  const std::function<void(const TMessage&)>& FPosted;
};

}  // namespace

TMissionRead ReadMission(const std::filesystem::path& file, TReadAhead ahead,
                         const std::function<void(const TMessage&)>& posted) {
  ClearMission();
  TReadingPort port(posted);
  const TPortHandle handle(port);
  TReadFileThread thread(handle.Value(), file, MissionMemoryBytes(), TInflateWay::Fast, ahead);
  thread.WaitFor();
  return {port.Last, thread.Extent()};
}

std::string DamageText(const TReadExtent& extent) {
  if (!extent.damaged) return NotReadToItsEnd(extent);
  constexpr std::string_view kDamaged =
      "This recording is damaged or cut short: {} data blocks, {} bytes of content were read. Everything whole in them "
      "is shown; values near the damage may be wrong.";
  return fmt::format(kDamaged, extent.dataBlocks, extent.inflatedBytes);
}

TMissionAnalysis AnalysisOf(const TShownMission& mission, IProgress& progress) {
  constexpr std::size_t kEventsPerStep = 100;
  const std::size_t all = mission.Events.Count();
  const auto report = [&](std::size_t done) {
    if (done % kEventsPerStep == 0) progress.SetStatus(fmt::format("Analysing shock {} of {}...", done + 1, all));
    progress.ProcessMessages();
  };
  TMissionAnalysis analysis = AnalyseMission(mission.Events, ThresholdsOf(mission.Data).totOn, report);
  ApplyDateFormat(analysis);
  analysis.Table.SetShownRows(mission.CLDS.ShownRows());
  return analysis;
}

void FillMission(TShownMission& mission, IProgress& progress) {
  CompleteModel();
  TDatasetOptions options;
  options.orderBy = mission.Settings.orderBy;
  mission.Display = DisplayInForce(mission.Settings.display, mission.Data);
  options.analogNames = mission.Display.analogNames;
  LoadKorvexFileData(mission.Data, mission.Events, mission.Sensors, options, progress, mission.Tables);
  if (mission.FilterActive && mission.Filter.NeedsAnalysis()) mission.Analysis = AnalysisOf(mission, progress);
  FillCompanion(mission);
  FilterCompanion(mission);
  mission.Summary = SummarizeMission(mission.Events, mission.Tables.Metrics, mission.Sensors);
}

TAnalysisRun::TAnalysisRun(const TEventList& events, double levelOn)
    : FResult(std::async(std::launch::async, [this, &events, levelOn, stop = FStop.get_token()] {
        return AnalyseMission(events, levelOn, [this, &stop](std::size_t done) {
          if (stop.stop_requested()) throw TStopped();
          FDone.store(done, std::memory_order_relaxed);
        });
      })) {}

TAnalysisRun::~TAnalysisRun() {
  FStop.request_stop();
  if (FResult.valid()) FResult.wait();
}

std::optional<TMissionAnalysis> TAnalysisRun::Take() {
  if (!FResult.valid() || FResult.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return std::nullopt;
  return FResult.get();
}
