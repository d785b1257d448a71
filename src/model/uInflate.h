// Two ways to inflate a zlib or gzip stream piece by piece. Of a whole stream both give the same bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

class IInflate {
 public:
  enum class TStep {
    OutputFull,
    InputUsed,
    Ended,         // the trailer is consumed, and a zlib stream's checksum is for the caller to compare
    EndedChecked,  // the checksum is right
    Damaged,
  };

  virtual ~IInflate() = default;
  // Inflates from the front of `input` to the front of `output` and moves both fronts. Throws std::bad_alloc.
  virtual TStep Inflate(std::span<const std::uint8_t>& input, std::span<std::uint8_t>& output) = 0;
};

enum class TWrapping { Zlib, Gzip };

// zlib; gives every byte before the damage of a stream. Checks the sum of a gzip stream only.
std::unique_ptr<IInflate> MakeZlibInflate(TWrapping wrapping);

// A library that takes about half the time, the checksum included; nothing where the program is built without it. Of a
// damaged stream it may give more or fewer bytes than zlib, so they count only when the stream has ended well.
std::unique_ptr<IInflate> MakeFastInflate(TWrapping wrapping);
