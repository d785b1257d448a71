#include "export/uPackage.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPieceBytes = std::size_t{128} * 1024;
constexpr std::size_t kHeadBytes = 512;  // of a part, with the name of its root
constexpr std::size_t kTailBytes = 64;
// The records of the archive: their bytes without names, and what they begin with.
constexpr std::size_t kEndRecord = 22;
constexpr std::size_t kDirectoryEntry = 46;
constexpr std::size_t kLocalHeader = 30;
constexpr std::uint32_t kEndMark = 0x06054B50;
constexpr std::uint32_t kEntryMark = 0x02014B50;
constexpr std::uint32_t kLocalMark = 0x04034B50;

[[noreturn]] void ThrowNotWhole() {
  throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
}

void Require(bool whole) {
  if (!whole) ThrowNotWhole();
}

template <class T>
T NumberAt(std::string_view bytes, std::size_t at) {
  Require(at + sizeof(T) <= bytes.size());
  T value{};
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

class TArchive {
 public:
  explicit TArchive(const fs::path& file) : FFile(file, std::ios::binary), FSize(fs::file_size(file)) {}
  [[nodiscard]] std::uint64_t Size() const { return FSize; }
  [[nodiscard]] std::string Bytes(std::uint64_t at, std::size_t count) {
    Require(at <= FSize && count <= FSize - at);
    FFile.seekg(static_cast<std::streamoff>(at));
    std::string bytes(count, '\0');
    if (!FFile.read(bytes.data(), static_cast<std::streamsize>(count))) {
      throw std::system_error(std::make_error_code(std::errc::io_error));
    }
    return bytes;
  }

 private:
  std::ifstream FFile;
  std::uint64_t FSize;
};

class TInflate {
 public:
  TInflate() {
    if (inflateInit2(&Stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  ~TInflate() { inflateEnd(&Stream); }
  TInflate(const TInflate&) = delete;
  TInflate& operator=(const TInflate&) = delete;
  z_stream Stream{};
};

// The text of a part that goes by in pieces.
class TPartText {
 public:
  void Add(std::string_view piece) {
    FSum = static_cast<std::uint32_t>(
        crc32(FSum, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(piece.size())));
    FSize += piece.size();
    if (FHead.size() < kHeadBytes) FHead += piece.substr(0, kHeadBytes - FHead.size());
    FTail += piece.substr(piece.size() - std::min(piece.size(), kTailBytes));
    if (FTail.size() > kTailBytes) FTail.erase(0, FTail.size() - kTailBytes);
  }
  [[nodiscard]] std::uint32_t Sum() const { return FSum; }
  [[nodiscard]] std::uint64_t Size() const { return FSize; }
  [[nodiscard]] bool IsClosed() const {
    const std::size_t root = FHead.find('<', FHead.starts_with("<?") ? 1 : 0);
    if (root == std::string::npos) return false;
    const std::size_t end = FHead.find_first_of(" >", root);
    if (end == std::string::npos) return false;
    const std::string_view tail(FTail.data(), FTail.find_last_not_of("\r\n") + 1);
    return tail.ends_with("</" + FHead.substr(root + 1, end - root - 1) + ">");
  }

 private:
  std::uint32_t FSum = 0;
  std::uint64_t FSize = 0;
  std::string FHead;
  std::string FTail;
};

// Where a part's packed bytes begin.
std::uint64_t BytesOfPart(TArchive& archive, std::string_view entry) {
  const auto at = NumberAt<std::uint32_t>(entry, 42);
  const std::string local = archive.Bytes(at, kLocalHeader);
  Require(NumberAt<std::uint32_t>(local, 0) == kLocalMark);
  return at + kLocalHeader + NumberAt<std::uint16_t>(local, 26) + NumberAt<std::uint16_t>(local, 28);
}

void CheckPart(TArchive& archive, std::string_view entry, const std::stop_token& stop) {
  std::uint64_t at = BytesOfPart(archive, entry);
  std::uint64_t left = NumberAt<std::uint32_t>(entry, 20);
  TInflate inflating;
  z_stream& stream = inflating.Stream;
  TPartText text;
  std::vector<char> piece(kPieceBytes);
  std::string packed;
  int result = Z_OK;
  while (result != Z_STREAM_END && !stop.stop_requested()) {
    if (stream.avail_in == 0) {
      Require(left > 0);
      packed = archive.Bytes(at, std::min<std::uint64_t>(left, kPieceBytes));
      at += packed.size();
      left -= packed.size();
      stream.next_in = reinterpret_cast<Bytef*>(packed.data());
      stream.avail_in = static_cast<uInt>(packed.size());
    }
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    result = inflate(&stream, Z_NO_FLUSH);
    Require(result == Z_OK || result == Z_STREAM_END);
    text.Add({piece.data(), piece.size() - stream.avail_out});
  }
  if (stop.stop_requested()) return;
  Require(left == 0 && stream.avail_in == 0);
  Require(text.Sum() == NumberAt<std::uint32_t>(entry, 16) && text.Size() == NumberAt<std::uint32_t>(entry, 24));
  Require(text.IsClosed());
}

}  // namespace

void CheckPackage(const fs::path& file, const std::stop_token& stop) {
  TArchive archive(file);
  Require(archive.Size() >= kEndRecord);
  const std::string end = archive.Bytes(archive.Size() - kEndRecord, kEndRecord);
  Require(NumberAt<std::uint32_t>(end, 0) == kEndMark);
  const std::string directory = archive.Bytes(NumberAt<std::uint32_t>(end, 16), NumberAt<std::uint32_t>(end, 12));
  Require(!directory.empty());
  for (std::string_view rest = directory; !rest.empty() && !stop.stop_requested();) {
    Require(NumberAt<std::uint32_t>(rest, 0) == kEntryMark);
    CheckPart(archive, rest, stop);
    std::size_t length = kDirectoryEntry;
    for (const std::size_t part : {28U, 30U, 32U})
      length += NumberAt<std::uint16_t>(rest, part);  // name, extra, comment
    Require(length <= rest.size());
    rest.remove_prefix(length);
  }
}
