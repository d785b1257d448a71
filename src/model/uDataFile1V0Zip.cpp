#include "model/uDataFile1V0Zip.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>

#include "model/uExceptions1V0.h"

namespace {

constexpr int kWindowBits = 15;
constexpr int kFastest = 1;
constexpr std::size_t kInputSize = 64 * 1024;
constexpr std::size_t kTrailerSize = 4;  // the checksum behind the deflated data
constexpr std::size_t kChunkSize = 256 * 1024;

}  // namespace

TInflateStream::TInflateStream(std::filebuf& file) : FFile(file), FInput(kTrailerSize + kInputSize) {
  // Without a first value, so that a small file touches little memory.
  for (TChunk& chunk : FChunks) chunk.bytes = std::make_unique_for_overwrite<std::uint8_t[]>(kMaxTake + kChunkSize);
  if (inflateInit2(&FZip, kWindowBits) != Z_OK) throw std::bad_alloc();
  inflateValidate(&FZip, 0);  // the checksum is the taker's work, see NextChunk
}

TInflateStream::~TInflateStream() {
  {
    const std::lock_guard lock(FMutex);
    FStop = true;
  }
  FChanged.notify_all();
  if (FThread.joinable()) FThread.join();
  inflateEnd(&FZip);
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
  if (!FThread.joinable()) FThread = std::thread([this] { InflateAll(); });
  {
    std::unique_lock lock(FMutex);
    FChanged.wait(lock, [this] { return FInflated > FNext; });
  }
  TChunk& chunk = ChunkOf(FNext);
  std::uint8_t* const begin = chunk.bytes.get() + kMaxTake - FRest.size();
  std::ranges::copy(FRest, begin);
  FRest = {begin, FRest.size() + chunk.filled};
  FEnd = chunk.end;
  FChecksum = adler32(FChecksum, chunk.bytes.get() + kMaxTake, static_cast<uInt>(chunk.filled));
  if (FEnd == TEnd::Finished && FChecksum != FWantedChecksum) FEnd = TEnd::Damaged;
  {
    const std::lock_guard lock(FMutex);
    FReleased = FNext++;
  }
  FChanged.notify_all();
  return true;
}

void TInflateStream::InflateAll() {
  TEnd end = TEnd::None;
  for (std::size_t number = 0; end == TEnd::None; ++number) {
    {
      std::unique_lock lock(FMutex);
      FChanged.wait(lock, [this, number] { return FStop || number < FReleased + FChunks.size(); });
      if (FStop) return;
    }
    Fill(ChunkOf(number));
    end = ChunkOf(number).end;
    {
      const std::lock_guard lock(FMutex);
      FInflated = number + 1;
    }
    FChanged.notify_all();
  }
}

void TInflateStream::Fill(TChunk& chunk) {
  FZip.next_out = chunk.bytes.get() + kMaxTake;
  FZip.avail_out = static_cast<uInt>(kChunkSize);
  chunk.end = TEnd::None;
  while (chunk.end == TEnd::None && FZip.avail_out > 0) {
    if (FZip.avail_in == 0) chunk.end = FillInput();
    if (chunk.end != TEnd::None) break;
    const int result = inflate(&FZip, Z_NO_FLUSH);
    if (result == Z_STREAM_END) {
      chunk.end = TEnd::Finished;
      // The trailer was consumed last; it is big-endian.
      for (const Bytef* byte = FZip.next_in - kTrailerSize; byte != FZip.next_in; ++byte) {
        FWantedChecksum = FWantedChecksum << 8 | *byte;
      }
    } else if (result != Z_OK && result != Z_BUF_ERROR) {
      chunk.end = TEnd::Damaged;
    }
  }
  chunk.filled = kChunkSize - FZip.avail_out;
}

TInflateStream::TEnd TInflateStream::FillInput() {
  try {
    // The trailer may lie across two readings, so the last bytes of the one before stay in front.
    if (FZip.next_in != nullptr) std::copy_n(FZip.next_in - kTrailerSize, kTrailerSize, FInput.begin());
    Bytef* const begin = FInput.data() + kTrailerSize;
    const auto count = FFile.sgetn(reinterpret_cast<char*>(begin), static_cast<std::streamsize>(kInputSize));
    FZip.next_in = begin;
    FZip.avail_in = static_cast<uInt>(count);
    return count > 0 ? TEnd::None : TEnd::Damaged;  // the file ends before its stream does
  } catch (const std::ios_base::failure&) {
    return TEnd::ReadFailed;
  }
}

TDeflateStream::TDeflateStream(std::filebuf& file) : FFile(file), FOutput(kChunkSize) {
  if (deflateInit2(&FZip, kFastest, Z_DEFLATED, kWindowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK) throw std::bad_alloc();
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
