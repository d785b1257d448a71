#include <zlib.h>

#include <new>

#include "model/uInflate.h"

namespace {

constexpr int kWindowBits = 15;
constexpr int kGzip = 16;  // added to the window

class TZlibInflate final : public IInflate {
 public:
  explicit TZlibInflate(TWrapping wrapping) {
    const bool gzip = wrapping == TWrapping::Gzip;
    if (inflateInit2(&FZip, kWindowBits + (gzip ? kGzip : 0)) != Z_OK) throw std::bad_alloc();
    if (!gzip) inflateValidate(&FZip, 0);  // no checksum
  }
  ~TZlibInflate() override { inflateEnd(&FZip); }
  TZlibInflate(const TZlibInflate&) = delete;
  TZlibInflate& operator=(const TZlibInflate&) = delete;

  TStep Inflate(std::span<const std::uint8_t>& input, std::span<std::uint8_t>& output) override {
    FZip.next_in = const_cast<Bytef*>(input.data());  // zlib only reads it
    FZip.avail_in = static_cast<uInt>(input.size());
    FZip.next_out = output.data();
    FZip.avail_out = static_cast<uInt>(output.size());
    const int result = inflate(&FZip, Z_NO_FLUSH);
    input = input.last(FZip.avail_in);
    output = output.last(FZip.avail_out);
    if (result == Z_STREAM_END) return TStep::Ended;
    if (result == Z_MEM_ERROR) throw std::bad_alloc();
    if (result != Z_OK && result != Z_BUF_ERROR) return TStep::Damaged;
    return output.empty() ? TStep::OutputFull : TStep::InputUsed;
  }

 private:
  z_stream FZip{};
};

}  // namespace

std::unique_ptr<IInflate> MakeZlibInflate(TWrapping wrapping) {
  return std::make_unique<TZlibInflate>(wrapping);
}
