// The two directions of a data file's zlib stream, between a TDataFile and its file.
#pragma once

#include <zlib.h>

#include <array>
#include <condition_variable>
#include <cstdint>
#include <fstream>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

// Inflates on a thread of its own, a few chunks ahead of the one thread that takes the bytes, so that making sense of
// them costs little time beside the inflating; the taker also checks the sum. Bytes and the reason why they end come in
// order: what was inflated before an error is handed out before the error shows.
class TInflateStream {
 public:
  static constexpr std::size_t kMaxTake = 64 * 1024;

  // Nothing is read before the first Take. The file must outlive the stream.
  explicit TInflateStream(std::filebuf& file);
  ~TInflateStream();
  TInflateStream(const TInflateStream&) = delete;
  TInflateStream& operator=(const TInflateStream&) = delete;

  // The next `count` bytes, at most kMaxTake; fewer only where the stream ends, well or not. They stand until the next
  // call.
  std::span<const std::uint8_t> Take(std::size_t count);

  // Why Take gave less than asked for.
  [[nodiscard]] bool EndedWell() const { return FEnd == TEnd::Finished; }
  [[nodiscard]] bool ReadFailed() const { return FEnd == TEnd::ReadFailed; }

 private:
  enum class TEnd { None, Finished, Damaged, ReadFailed };

  // Inflated bytes stand from kMaxTake on; before them is room for what was left of the chunk before.
  struct TChunk {
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t filled = 0;
    TEnd end = TEnd::None;  // the stream ends behind this chunk
  };
  TChunk& ChunkOf(std::size_t number) { return FChunks[number % FChunks.size()]; }

  // The taker's side.
  bool NextChunk();
  // The inflating thread's side.
  void InflateAll();
  void Fill(TChunk& chunk);
  TEnd FillInput();

  std::filebuf& FFile;
  z_stream FZip{};
  std::vector<std::uint8_t> FInput;
  uLong FWantedChecksum = 0;  // of the trailer, once a chunk has ended well
  std::array<TChunk, 3> FChunks;

  std::span<const std::uint8_t> FRest;  // not taken yet, of the chunk in use
  std::size_t FNext = 0;                // the number of the chunk to use next
  TEnd FEnd = TEnd::None;               // of the chunk in use
  uLong FChecksum = 1;                  // Adler-32 of the chunks up to it

  std::mutex FMutex;  // guards what follows
  std::condition_variable FChanged;
  std::size_t FInflated = 0;  // chunks with a lower number are filled
  std::size_t FReleased = 0;  // chunks with a lower number may be filled again
  bool FStop = false;
  std::thread FThread;
};

// Deflates at the fastest level. Throws EStreamError when the file takes no more.
class TDeflateStream {
 public:
  explicit TDeflateStream(std::filebuf& file);
  ~TDeflateStream() { deflateEnd(&FZip); }
  TDeflateStream(const TDeflateStream&) = delete;
  TDeflateStream& operator=(const TDeflateStream&) = delete;

  void Write(std::span<const std::uint8_t> bytes) { Deflate(bytes, Z_NO_FLUSH); }
  void Finish() { Deflate({}, Z_FINISH); }

 private:
  void Deflate(std::span<const std::uint8_t> bytes, int flush);

  std::filebuf& FFile;
  z_stream FZip{};
  std::vector<std::uint8_t> FOutput;
};
