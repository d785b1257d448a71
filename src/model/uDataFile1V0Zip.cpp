#include "model/uDataFile1V0Zip.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "model/uExceptions1V0.h"
#include "model/uInflate.h"

namespace {

constexpr int kDeflateWindowBits = 15;
constexpr int kFastest = 1;
constexpr std::size_t kInputSize = 64 * 1024;
constexpr std::size_t kTrailerSize = 4;  // the checksum behind the deflated data
constexpr std::size_t kChunkSize = 256 * 1024;
constexpr auto kTimeToEnd = std::chrono::milliseconds(100);

}  // namespace

// Inflated bytes start at kMaxTake; the room before them takes what is left of the previous chunk.
struct TInflateStream::TChunk {
  std::unique_ptr<std::uint8_t[]> bytes;
  std::size_t filled = 0;
  TEnd end = TEnd::None;  // the stream ends behind this chunk
};

class TInflateStream::TInflater {
 public:
  TInflater(TOpen open, std::unique_ptr<IInflate> inflate)
      : FOpen(std::move(open)), FInflate(std::move(inflate)), FInput(kTrailerSize + kInputSize) {
    // Not initialized, so that a small file touches little memory.
    for (TChunk& chunk : FChunks) chunk.bytes = std::make_unique_for_overwrite<std::uint8_t[]>(kMaxTake + kChunkSize);
  }

  // Without a thread: the taker does it all.
  void Open() { FFile = FOpen(); }
  TChunk& Inflate(std::size_t number);

  // The taker's side.
  void WaitUntilOpen(const std::stop_token& stop);
  TChunk& WaitForChunk(std::size_t number, const std::stop_token& stop);
  void Release(std::size_t number);  // the chunks before it may be filled again
  // Asks the thread to end and waits a moment; false when it goes on, as in a read that blocks.
  [[nodiscard]] bool End();
  // Of a chunk that has ended: the checksum that the stream names, nothing if that is compared already.
  [[nodiscard]] std::optional<uLong> WantedChecksum() const { return FWantedChecksum; }
  // The reason of a failed read.
  [[nodiscard]] const std::string& ReadError() const { return FReadError; }
  // Of a chunk that ended in an exception, such as a lack of memory.
  [[noreturn]] void RethrowError() const { std::rethrow_exception(FError); }

  // The thread.
  void Run();

 private:
  TChunk& ChunkOf(std::size_t number) { return FChunks[number % FChunks.size()]; }
  template <class TChange>
  void Change(const TChange& change);
  bool Stopped();
  void InflateAll();
  void Fill(TChunk& chunk);
  void KeepTrailer();
  TEnd FillInput();

  TOpen FOpen;
  std::unique_ptr<std::streambuf> FFile;
  std::unique_ptr<IInflate> FInflate;
  std::vector<std::uint8_t> FInput;
  std::span<const std::uint8_t> FRest;  // of the input
  std::optional<uLong> FWantedChecksum;
  std::string FReadError;
  std::array<TChunk, 3> FChunks;
  std::exception_ptr FOpenError;  // set before the file counts as open
  std::exception_ptr FError;      // set before the last chunk counts as filled

  std::mutex FMutex;  // guards what follows
  std::condition_variable_any FChanged;
  std::size_t FInflated = 0;  // chunks with a lower number are filled
  std::size_t FReleased = 0;  // chunks with a lower number may be filled again
  bool FOpened = false;       // or FOpenError says why not
  bool FStop = false;
  bool FEnded = false;
};

TInflateStream::TChunk& TInflateStream::TInflater::Inflate(std::size_t number) {
  TChunk& chunk = ChunkOf(number);
  Fill(chunk);
  return chunk;
}

void TInflateStream::TInflater::WaitUntilOpen(const std::stop_token& stop) {
  std::unique_lock lock(FMutex);
  if (!FChanged.wait(lock, stop, [this] { return FOpened; })) throw EKorvex(kReadCancelled);
  if (FOpenError) std::rethrow_exception(FOpenError);
}

TInflateStream::TChunk& TInflateStream::TInflater::WaitForChunk(std::size_t number, const std::stop_token& stop) {
  std::unique_lock lock(FMutex);
  FChanged.wait(lock, stop, [this, number] { return FInflated > number; });
  return ChunkOf(number);
}

void TInflateStream::TInflater::Release(std::size_t number) {
  Change([&] { FReleased = number; });
}

bool TInflateStream::TInflater::End() {
  Change([this] { FStop = true; });
  std::unique_lock lock(FMutex);
  return FChanged.wait_for(lock, kTimeToEnd, [this] { return FEnded; });
}

template <class TChange>
void TInflateStream::TInflater::Change(const TChange& change) {
  {
    const std::lock_guard lock(FMutex);
    change();
  }
  FChanged.notify_all();
}

bool TInflateStream::TInflater::Stopped() {
  const std::lock_guard lock(FMutex);
  return FStop;
}

void TInflateStream::TInflater::Run() {
  try {
    Open();
  } catch (...) {
    FOpenError = std::current_exception();
  }
  Change([this] { FOpened = true; });
  if (FFile) InflateAll();
  FFile.reset();
  Change([this] { FEnded = true; });
}

void TInflateStream::TInflater::InflateAll() {
  TEnd end = TEnd::None;
  for (std::size_t number = 0; end == TEnd::None; ++number) {
    {
      std::unique_lock lock(FMutex);
      FChanged.wait(lock, [this, number] { return FStop || number < FReleased + FChunks.size(); });
      if (FStop) return;
    }
    try {
      Inflate(number);
    } catch (...) {
      FError = std::current_exception();
      ChunkOf(number).end = TEnd::Failed;
    }
    end = ChunkOf(number).end;
    Change([&] { FInflated = number + 1; });
  }
}

void TInflateStream::TInflater::Fill(TChunk& chunk) {
  std::span<std::uint8_t> room(chunk.bytes.get() + kMaxTake, kChunkSize);
  chunk.end = TEnd::None;
  while (chunk.end == TEnd::None && !room.empty()) {
    switch (FInflate->Inflate(FRest, room)) {
      case IInflate::TStep::InputUsed:
        chunk.end = FillInput();
        break;
      case IInflate::TStep::Ended:
        chunk.end = TEnd::Finished;
        KeepTrailer();
        break;
      case IInflate::TStep::EndedChecked:
        chunk.end = TEnd::Finished;
        break;
      case IInflate::TStep::Damaged:
        chunk.end = TEnd::Damaged;
        break;
      case IInflate::TStep::OutputFull:
        break;
    }
  }
  chunk.filled = kChunkSize - room.size();
}

// The trailer was consumed last; it is big-endian.
void TInflateStream::TInflater::KeepTrailer() {
  uLong wanted = 0;
  for (const std::uint8_t* byte = FRest.data() - kTrailerSize; byte != FRest.data(); ++byte)
    wanted = wanted << 8 | *byte;
  FWantedChecksum = wanted;
}

// One read of the system at a time, so that the bytes before an error are inflated before the error is reported.
TInflateStream::TEnd TInflateStream::TInflater::FillInput() {
  // The trailer may be split between two reads, so the last bytes of the previous one stay in front.
  if (FRest.data() != nullptr) std::copy_n(FRest.data() - kTrailerSize, kTrailerSize, FInput.begin());
  std::uint8_t* const begin = FInput.data() + kTrailerSize;
  std::streamsize count = 0;
  try {
    if (FFile->sgetc() != std::streambuf::traits_type::eof()) {
      count = FFile->sgetn(reinterpret_cast<char*>(begin), std::min(FFile->in_avail(), std::streamsize{kInputSize}));
    }
  } catch (const std::system_error& error) {
    FReadError = error.code().message();
    return TEnd::ReadFailed;
  }
  if (Stopped()) return TEnd::ReadFailed;  // nobody takes what is read
  FRest = {begin, static_cast<std::size_t>(count)};
  return count > 0 ? TEnd::None : TEnd::Damaged;  // the file ends before its stream does
}

TInflateStream::TInflateStream(TOpen open, TInflateWay way, TReadAhead ahead, std::stop_token stop)
    : FStop(std::move(stop)) {
  std::unique_ptr<IInflate> fast = way == TInflateWay::Fast ? MakeFastInflate(TWrapping::Zlib) : nullptr;
  FChecks = fast == nullptr;
  FInflater = std::make_shared<TInflater>(std::move(open), fast ? std::move(fast) : MakeZlibInflate(TWrapping::Zlib));
  if (ahead == TReadAhead::No) {
    FInflater->Open();
    return;
  }
  FThread = std::thread([inflater = FInflater] { inflater->Run(); });
  try {
    FInflater->WaitUntilOpen(FStop);
  } catch (...) {
    EndThread();
    throw;
  }
}

TInflateStream::~TInflateStream() {
  EndThread();
}

void TInflateStream::EndThread() {
  if (!FThread.joinable()) return;
  if (FInflater->End()) {
    FThread.join();
  } else {
    FThread.detach();
  }
}

std::span<const std::uint8_t> TInflateStream::Take(std::size_t count) {
  while (FRest.size() < count && NextChunk()) {
  }
  const auto taken = FRest.first(std::min(count, FRest.size()));
  FRest = FRest.subspan(taken.size());
  return taken;
}

bool TInflateStream::NextChunk() {
  if (FEnd != TEnd::None) return false;
  TChunk& chunk = FThread.joinable() ? FInflater->WaitForChunk(FNext, FStop) : FInflater->Inflate(FNext);
  if (FStop.stop_requested()) throw EKorvex(kReadCancelled);  // the chunk may not be filled
  if (chunk.end == TEnd::Failed) FInflater->RethrowError();
  std::uint8_t* const begin = chunk.bytes.get() + kMaxTake - FRest.size();
  std::ranges::copy(FRest, begin);
  FRest = {begin, FRest.size() + chunk.filled};
  FEnd = chunk.end;
  if (FChecks) FChecksum = adler32(FChecksum, chunk.bytes.get() + kMaxTake, static_cast<uInt>(chunk.filled));
  if (FEnd == TEnd::Finished && FChecksum != FInflater->WantedChecksum().value_or(FChecksum)) FEnd = TEnd::Damaged;
  FInflater->Release(FNext++);
  return true;
}

std::string TInflateStream::ReadError() const {
  return FEnd == TEnd::ReadFailed ? FInflater->ReadError() : std::string();
}

TDeflateStream::TDeflateStream(std::filebuf& file) : FFile(file), FOutput(kChunkSize) {
  if (deflateInit2(&FZip, kFastest, Z_DEFLATED, kDeflateWindowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::bad_alloc();
}

void TDeflateStream::Deflate(std::span<const std::uint8_t> bytes, int flush) {
  FZip.next_in = const_cast<Bytef*>(bytes.data());  // zlib only reads it
  FZip.avail_in = static_cast<uInt>(bytes.size());
  do {
    FZip.next_out = FOutput.data();
    FZip.avail_out = static_cast<uInt>(FOutput.size());
    deflate(&FZip, flush);
    const auto count = static_cast<std::streamsize>(FOutput.size() - FZip.avail_out);
    if (FFile.sputn(reinterpret_cast<const char*>(FOutput.data()), count) != count) {
      throw EStreamError(fmt::format("The file cannot be written: {}.", std::generic_category().message(errno)));
    }
  } while (FZip.avail_out == 0);
}
