#include "cli/uRecording.h"

#include <fmt/format.h>

#include "analysis/uAnalysisTable.h"
#include "base/uFiles.h"
#include "model/uExceptions1V0.h"
#include "shell/uMissionLoad.h"

namespace {

TStatus StatusOf(const TRecording& recording) {
  if (recording.message.wParam == kReadFailed) return TStatus::CannotRead;
  if (!recording.displayable) return TStatus::NotDisplayable;
  return recording.extent.damaged || !recording.extent.readError.empty() ? TStatus::Damaged : TStatus::Done;
}

bool CannotBeOpened(const TRecording& recording) {
  return recording.message.wParam == kReadFailed && recording.message.lParam == kCannotOpenDataFile;
}

std::string Complaint(const TRecording& recording) {
  const TReadExtent& extent = recording.extent;
  const std::string read = fmt::format("{} data blocks, {} bytes of content", extent.dataBlocks, extent.inflatedBytes);
  const std::string damage = fmt::format("The recording is damaged or cut short; read: {}.", read);
  switch (recording.status) {
    case TStatus::CannotRead:
      return CannotBeOpened(recording) ? ReadErrorText : fmt::format("{} Read before: {}.", ReadErrorText, read);
    case TStatus::NotDisplayable:
      // What is no data file is no damaged recording either.
      return fmt::format("This file cannot be displayed. {}{}", WhyNotDisplayable(extent),
                         extent.damaged && extent.isDataFile ? " " + damage : "");
    case TStatus::Damaged:
      return extent.damaged ? damage : NotReadToItsEnd(extent);
    default:
      return {};
  }
}

}  // namespace

bool TRecording::HasMission() const {
  return status != TStatus::NotDisplayable && !CannotBeOpened(*this);
}

TRecording ReadRecording(const std::string& file, const TConsole& console, TReadAhead ahead) {
  const auto posted = [&console](const TMessage& message) {
    if (!console.showProgress || message.wParam != kReadProgress || message.lParam % 256 != 0) return;
    console.err(fmt::format("\r{} data blocks", message.lParam));
  };
  const TMissionRead read = ReadMission(PathFromUtf8(file), ahead, posted);
  TRecording recording;
  recording.message = read.last;
  recording.extent = read.extent;
  if (console.showProgress) console.err("\r\033[K");
  recording.displayable = MissionData.bValid && EventList.ValidCreator;
  recording.status = StatusOf(recording);
  recording.complaint = Complaint(recording);
  if (!recording.complaint.empty()) Complain(console, file, recording.complaint);
  return recording;
}

TMissionDatasets TablesOf(const TRecording& recording) {
  TMissionDatasets tables;
  TNoProgress progress;
  LoadKorvexFileData(recording.mission, recording.events, recording.sensors, {}, progress, tables);
  return tables;
}

TDataset AnalysisOf(const TRecording& recording) {
  TMissionAnalysis analysis = AnalyseMission(recording.events, ThresholdsOf(recording.mission).totOn);
  ApplyDateFormat(analysis);
  return analysis.Table;
}

bool HasEvent(const std::string& file, const TRecording& recording, std::size_t event, const TConsole& console) {
  if (event < recording.events.Count()) return true;
  Complain(console, file, fmt::format("There is no event {}; the recording has {}.", event, recording.events.Count()));
  return false;
}

TStatus NoResult(const std::string& file, const TRecording& recording, const std::string& why,
                 const TConsole& console) {
  Complain(console, file, why);
  return WorseOf(recording.status, TStatus::NoResult);
}
