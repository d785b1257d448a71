#include <isa-l/igzip_lib.h>

#include "model/uInflate.h"

namespace {

// What zlib accepts of the two bytes before the data. The library itself takes window sizes that zlib refuses.
bool IsZlibHeader(unsigned header) {
  constexpr unsigned kDeflate = 8;
  constexpr unsigned kMaxWindow = 7;  // 32 KiB
  constexpr unsigned kDictionary = 0x20;
  const unsigned method = header >> 8;
  return header % 31 == 0 && (method & 0xFU) == kDeflate && method >> 4 <= kMaxWindow && (header & kDictionary) == 0;
}

class TIsalInflate final : public IInflate {
 public:
  explicit TIsalInflate(TWrapping wrapping) : FIsZlib(wrapping == TWrapping::Zlib) {
    isal_inflate_init(&FState);
    FState.crc_flag = FIsZlib ? ISAL_ZLIB_NO_HDR_VER : ISAL_GZIP;
  }

  TStep Inflate(std::span<const std::uint8_t>& input, std::span<std::uint8_t>& output) override {
    for (; FIsZlib && FHeaderBytes < 2; ++FHeaderBytes) {
      if (input.empty()) return TStep::InputUsed;
      FHeader = FHeader << 8 | input.front();
      input = input.subspan(1);
    }
    if (FIsZlib && !IsZlibHeader(FHeader)) return TStep::Damaged;
    // One call may stop short of both ends, and holds back output when all input is used.
    while (!output.empty()) {
      const std::size_t before = input.size() + output.size();
      if (!Advance(input, output)) return TStep::Damaged;
      if (FState.block_state == ISAL_BLOCK_FINISH) return TStep::EndedChecked;
      if (input.size() + output.size() == before) return input.empty() ? TStep::InputUsed : TStep::Damaged;
    }
    return TStep::OutputFull;
  }

 private:
  bool Advance(std::span<const std::uint8_t>& input, std::span<std::uint8_t>& output) {
    FState.next_in = const_cast<std::uint8_t*>(input.data());  // the library only reads it
    FState.avail_in = static_cast<std::uint32_t>(input.size());
    FState.next_out = output.data();
    FState.avail_out = static_cast<std::uint32_t>(output.size());
    const int result = isal_inflate(&FState);
    if (result < ISAL_DECOMP_OK || result == ISAL_NEED_DICT) return false;  // what is left is undefined then
    if (FState.avail_in > input.size() || FState.avail_out > output.size()) return false;
    input = input.last(FState.avail_in);
    output = output.last(FState.avail_out);
    return true;
  }

  bool FIsZlib;
  inflate_state FState;
  unsigned FHeader = 0;
  int FHeaderBytes = 0;
};

}  // namespace

std::unique_ptr<IInflate> MakeFastInflate(TWrapping wrapping) {
  return std::make_unique<TIsalInflate>(wrapping);
}
