// Reads a data file into the mission model on a thread of its own.
//
// The thread talks to its window only by posted messages, kReadFileMessage:
//   wParam kReadProgress  lParam = data blocks begun        at the start of each data block; the number only rises
//   wParam kReadFinished  lParam = 0                        the read ended, also when the file is no data file
//   wParam kReadFailed    lParam = EKorvex code, or 0       the read failed; the text stands in ReadErrorText
// Exactly one of the last two is posted, last. From the constructor until then nobody else may touch MissionData,
// EventList, SensorList, AxesPresent and ReadErrorText; the caller clears them first (ClearMission).
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <stop_token>
#include <string>
#include <thread>

#include "model/uDataFile1V0.h"

inline constexpr std::uint32_t kReadFileMessage = 1025;
inline constexpr std::uint64_t kReadFinished = 1;
inline constexpr std::uint64_t kReadFailed = 2;
inline constexpr std::uint64_t kReadProgress = 11;

// How much of a file was read.
struct TReadExtent {
  bool isDataFile = false;          // its first block is the header
  bool damaged = false;             // the stream or a block was cut or damaged, or a block could not be understood
  std::string readError;            // the system's reason when it failed to read, which is no damage; else empty
  std::uint64_t inflatedBytes = 0;  // that blocks were read from
  std::uint64_t takenBytes = 0;     // and those that were only checked behind them
  std::int64_t dataBlocks = 0;      // begun
};

// "The file could not be read to its end: Input/output error"; empty without a read error.
std::string NotReadToItsEnd(const TReadExtent& extent);

// Why a read that finished shows nothing, in sentences: the extent and the mission header tell.
std::string WhyNotDisplayable(const TReadExtent& extent);

class TReadFileThread {
 public:
  static constexpr std::uint64_t kNoMemoryBound = std::numeric_limits<std::uint64_t>::max();

  // Starts at once. The read fails before the mission outgrows `memoryBound` bytes, see TBlockReader. Both ways to
  // inflate give the same mission and end: what is read fast from a stream that does not end well is read again.
  TReadFileThread(std::uint64_t hWindow, std::filesystem::path InFile, std::uint64_t memoryBound = kNoMemoryBound,
                  TInflateWay way = TInflateWay::Fast, TReadAhead ahead = TReadAhead::Yes);
  // Asks the thread to end and waits for it. Reading ahead, that takes no longer when the file is one whose reads
  // block: then another thread, which knows nothing of the mission, is left behind in the read.
  ~TReadFileThread();
  TReadFileThread(const TReadFileThread&) = delete;
  TReadFileThread& operator=(const TReadFileThread&) = delete;

  // Asks the reader to stop at the next block, or where it waits for the file; safe at any time.
  void Terminate() { FStop.request_stop(); }
  // Waits until the end message has been posted.
  void WaitFor();
  // Read it after the end message.
  [[nodiscard]] const TReadExtent& Extent() const { return FExtent; }

 private:
  void Execute();
  void ReadDataFile();
  [[nodiscard]] bool ReadFast();
  void ReadBlocks(TInflateWay way);
  void ReportBlock();

  std::uint64_t FhWindow;
  std::filesystem::path FInFile;
  std::uint64_t FMemoryBound;
  TInflateWay FWay;
  TReadAhead FAhead;
  std::int64_t FReported = 0;  // data blocks of the last message
  bool FEndedWell = false;     // the stream, and so what it gave is right
  TReadExtent FExtent;
  std::stop_source FStop;
  std::thread FThread;  // last: everything that it uses stands before it
};
