// The two directions of a data file's zlib stream, between a TDataFile and its file.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <streambuf>
#include <string>
#include <thread>
#include <vector>

#include "model/uDataFile1V0.h"

// Reads and inflates a file; one thread takes the bytes. All bytes before an error are handed out before the error is
// reported.
//
// Reading ahead, a thread of its own inflates a few chunks before they are taken, so parsing and the checksum run at
// the same time. Only that thread touches the file, and it owns nothing but the file and the chunks. So a read that
// blocks (a dead share) blocks nobody: a stop request wakes the taker, and the destructor detaches a thread that is
// inside a system call; it ends when that call returns.
class TInflateStream {
 public:
  static constexpr std::size_t kMaxTake = 64 * 1024;

  // Runs on the thread that inflates; the constructor throws what it throws.
  using TOpen = std::function<std::unique_ptr<std::streambuf>()>;

  // Waits until `open` has returned. Throws what it throws, and EKorvex(kReadCancelled) when `stop` is requested first.
  TInflateStream(TOpen open, TInflateWay way, TReadAhead ahead, std::stop_token stop);
  ~TInflateStream();
  TInflateStream(const TInflateStream&) = delete;
  TInflateStream& operator=(const TInflateStream&) = delete;

  // The next `count` bytes, at most kMaxTake; fewer only at the end of the stream, damaged or not. Valid until the next
  // call. Throws EKorvex(kReadCancelled) instead of waiting once a stop is requested, and std::bad_alloc.
  std::span<const std::uint8_t> Take(std::size_t count);

  // Why Take gave less than asked for.
  [[nodiscard]] bool EndedWell() const { return FEnd == TEnd::Finished; }
  // The operating system's reason when it failed to read; empty otherwise.
  [[nodiscard]] std::string ReadError() const;

 private:
  enum class TEnd { None, Finished, Damaged, ReadFailed, Failed };
  struct TChunk;
  class TInflater;  // the file's side, shared with the thread

  bool NextChunk();
  void EndThread();

  std::shared_ptr<TInflater> FInflater;
  std::stop_token FStop;
  std::span<const std::uint8_t> FRest;  // not taken yet, of the chunk in use
  std::size_t FNext = 0;                // the number of the chunk to use next
  TEnd FEnd = TEnd::None;               // of the chunk in use
  bool FChecks = true;                  // the taker computes the checksum
  uLong FChecksum = 1;                  // Adler-32 of the chunks up to it
  std::thread FThread;                  // if it reads ahead
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
