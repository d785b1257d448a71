#include "model/uReadFileThread.h"

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "base/uMessages.h"
#include "model/uBlockReader.h"
#include "model/uBlockTypes.h"
#include "model/uDataFile1V0.h"
#include "model/uEvents.h"
#include "model/uExceptions1V0.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uInflate.h"
#include "model/uOtherSensors.h"

namespace {

// Runs a first step of a read; any failure in it means that the file cannot be opened.
template <class TStep>
auto OrCannotOpen(const TStep& step) {
  try {
    return step();
  } catch (const EKorvex&) {  // cancelled
    throw;
  } catch (const std::exception& error) {
    throw EKorvex(kCannotOpenDataFile, error.what());
  }
}

// Gives back what the lists reserved to grow.
void TrimLists() {
  try {
    EventList.Trim();
    SensorList.Trim();
  } catch (const std::bad_alloc&) {  // the lists keep their reserve, nothing is lost
  }
}

}  // namespace

std::string NotReadToItsEnd(const TReadExtent& extent) {
  return extent.readError.empty() ? std::string() : "The file could not be read to its end: " + extent.readError;
}

std::string WhyNotDisplayable(const TReadExtent& extent) {
  if (!extent.isDataFile) return "It is no data file.";
  const std::string reason = MissionData.bValid ? "Its creator is unknown." : "It has no mission header.";
  return extent.readError.empty() ? reason : reason + " " + NotReadToItsEnd(extent) + ".";
}

TReadFileThread::TReadFileThread(std::uint64_t hWindow, std::filesystem::path InFile, std::uint64_t memoryBound,
                                 TInflateWay way, TReadAhead ahead)
    : FhWindow(hWindow),
      FInFile(std::move(InFile)),
      FMemoryBound(memoryBound),
      FWay(way),
      FAhead(ahead),
      FThread([this] { Execute(); }) {}

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
  if (!FStop.stop_requested()) TrimLists();
  PostToPort(FhWindow, last);
}

void TReadFileThread::ReadDataFile() {
  if (FWay == TInflateWay::Fast && MakeFastInflate(TWrapping::Zlib) && ReadFast()) return;
  ReadBlocks(TInflateWay::Exact);
}

// False if the read does not count and the mission is empty again. Throws what the read threw if that counts.
bool TReadFileThread::ReadFast() {
  std::exception_ptr failure;
  try {
    ReadBlocks(TInflateWay::Fast);
  } catch (...) {
    failure = std::current_exception();
  }
  if (!FEndedWell && !FStop.stop_requested()) {
    ClearMission();
    FExtent = {};
    return false;
  }
  if (failure) std::rethrow_exception(failure);
  return true;
}

void TReadFileThread::ReadBlocks(TInflateWay way) {
  MissionData.bValid = false;
  EventList.ValidCreator = false;

  TDataFile file = OrCannotOpen([this, way] { return TDataFile::CreateLoad(FInFile, FStop.get_token(), way, FAhead); });
  // Also when the read throws.
  struct TKeepExtent {
    const TDataFile& file;
    TReadExtent& extent;
    bool& endedWell;
    ~TKeepExtent() {
      extent.damaged = file.Damaged();
      extent.readError = file.ReadError();
      extent.inflatedBytes = file.BytesRead();
      extent.takenBytes = file.BytesTaken();
      endedWell = file.EndedWell();
    }
  } const keepExtent{file, FExtent, FEndedWell};

  FExtent.isDataFile = OrCannotOpen([&file] { return file.IsLoadOk(); });
  TBlockReader reader(file, FMemoryBound);
  while (FExtent.isDataFile && file.ReadBlock()) {
    if (FStop.stop_requested()) throw EKorvex(kReadCancelled);
    if (file.BlockType() == kDataBlock) ReportBlock();
    try {
      reader.ReadCurrentBlock();
    } catch (const EStreamError&) {
      // A block that the end of the file cut short may be incomplete; its whole records stay.
      if (!file.BlockCut()) throw;
    }
  }
  // An empty block ends the read. The checksum behind it shows whether the stream is damaged.
  if (FExtent.isDataFile) file.CheckRest();
}

void TReadFileThread::ReportBlock() {
  if (++FExtent.dataBlocks <= FReported) return;
  FReported = FExtent.dataBlocks;
  // A count past 32 bits starts over; a message has no more room.
  const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(FReported));
  PostToPort(FhWindow, {kReadFileMessage, kReadProgress, number});
}
