#include "export/uPackage.h"

#include <fmt/format.h>
#include <minizip/unzip.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "model/uInflate.h"

namespace fs = std::filesystem;

namespace {

constexpr int kDeflated = 8;  // what zip and gzip call it
constexpr std::size_t kPackedBytes = std::size_t{32} * 1024;
constexpr std::size_t kReadBytes = std::size_t{128} * 1024;
constexpr std::size_t kTailBytes = 64;         // with the closing tag of the root
constexpr std::string_view kEndOfRow = "ow>";  // of "</row>": texts escape '>', and 'o' is rare, so the search is fast
constexpr std::string_view kSheets = "xl/worksheets/";

void Require(bool whole) {
  if (!whole) throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
}

class TArchive {
 public:
  explicit TArchive(const fs::path& file) : FZip(unzOpen64(file.string().c_str())) { Require(FZip != nullptr); }
  ~TArchive() { unzClose(FZip); }
  TArchive(const TArchive&) = delete;
  TArchive& operator=(const TArchive&) = delete;
  [[nodiscard]] unzFile Zip() const { return FZip; }

 private:
  unzFile FZip;
};

// The name of the first element, in the text's first piece.
std::string_view RootOf(std::string_view text) {
  const std::size_t at = text.find('<', text.starts_with("<?") ? 1 : 0) + 1;
  Require(at != 0);
  return text.substr(at, text.find_first_of(" >", at) - at);
}

std::size_t CountRows(std::string_view text) {
  std::size_t rows = 0;
  for (std::size_t at = text.find(kEndOfRow); at != std::string_view::npos; at = text.find(kEndOfRow, at + 1)) ++rows;
  return rows;
}

// The current part, which the archive holds without a wrapping. It is inflated as a gzip stream, whose trailer has what
// the archive says of the part, so that the inflater compares the checksum.
class TPart {
 public:
  TPart(unzFile zip, const unz_file_info64& info) : FZip(zip), FPacked(kPackedBytes) {
    int method = 0;
    int level = 0;
    constexpr int kPacked = 1;
    Require(unzOpenCurrentFile2(zip, &method, &level, kPacked) == UNZ_OK && method == kDeflated);
    for (const std::uint64_t value : {std::uint64_t{info.crc}, std::uint64_t{info.uncompressed_size}}) {
      for (int bit = 0; bit < 32; bit += 8) FTrailer.push_back(static_cast<std::uint8_t>(value >> bit));
    }
  }

  // Fills the room; gives the number of bytes, which are fewer only at the end.
  std::size_t Read(std::span<std::uint8_t> room) {
    const std::size_t size = room.size();
    while (!room.empty() && !FEnded) {
      const IInflate::TStep step = FInflate->Inflate(FInput, room);
      Require(step != IInflate::TStep::Damaged);
      FEnded = step == IInflate::TStep::Ended || step == IInflate::TStep::EndedChecked;
      if (step == IInflate::TStep::InputUsed) TakeInput();
    }
    return size - room.size();
  }

 private:
  static constexpr std::uint8_t kHeader[] = {0x1f, 0x8b, kDeflated, 0, 0, 0, 0, 0, 0, 0};

  static std::unique_ptr<IInflate> MakeInflate() {
    std::unique_ptr<IInflate> fast = MakeFastInflate(TWrapping::Gzip);
    return fast ? std::move(fast) : MakeZlibInflate(TWrapping::Gzip);
  }

  void TakeInput() {
    const int read = unzReadCurrentFile(FZip, FPacked.data(), static_cast<unsigned>(FPacked.size()));
    Require(read > 0 || (read == 0 && !std::exchange(FTrailerTaken, true)));
    FInput = read > 0 ? std::span(FPacked).first(static_cast<std::size_t>(read)) : std::span(FTrailer);
  }

  unzFile FZip;
  std::unique_ptr<IInflate> FInflate = MakeInflate();
  std::vector<std::uint8_t> FPacked;
  std::vector<std::uint8_t> FTrailer;
  std::span<const std::uint8_t> FInput = kHeader;
  bool FTrailerTaken = false;
  bool FEnded = false;
};

// Unpacks the current part, and returns how many rows it holds.
std::size_t CheckPart(unzFile zip, const std::stop_token& stop) {
  unz_file_info64 info{};
  Require(unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK);
  TPart part(zip, info);
  std::vector<std::uint8_t> buffer(kTailBytes + kReadBytes);  // the end of the previous piece, and a piece
  std::string root;
  std::string_view text;
  std::uint64_t size = 0;
  std::size_t rows = 0;
  while (!stop.stop_requested()) {
    const std::size_t kept = std::min(text.size(), kTailBytes);
    std::copy(text.end() - kept, text.end(), buffer.begin());
    const std::size_t read = part.Read(std::span(buffer).subspan(kept));
    text = {reinterpret_cast<const char*>(buffer.data()), kept + read};
    if (read == 0) break;
    if (size == 0) root = RootOf(text);
    size += read;
    rows += CountRows(text.substr(kept - std::min(kept, kEndOfRow.size() - 1)));
  }
  if (stop.stop_requested()) return 0;
  Require(size == info.uncompressed_size && unzCloseCurrentFile(zip) == UNZ_OK);
  Require(text.substr(0, text.find_last_not_of("\r\n") + 1).ends_with(fmt::format("</{}>", root)));
  return rows;
}

std::string NameOfPart(unzFile zip) {
  char name[256] = {};
  Require(unzGetCurrentFileInfo64(zip, nullptr, name, sizeof name - 1, nullptr, 0, nullptr, 0) == UNZ_OK);
  return name;
}

}  // namespace

void CheckPackage(const fs::path& file, std::span<const std::size_t> rows, const std::stop_token& stop) {
  const TArchive archive(file);
  std::size_t sheets = 0;
  int part = unzGoToFirstFile(archive.Zip());
  for (; part == UNZ_OK; part = unzGoToNextFile(archive.Zip())) {
    const std::size_t found = CheckPart(archive.Zip(), stop);
    if (stop.stop_requested()) return;
    if (!NameOfPart(archive.Zip()).starts_with(kSheets)) continue;
    Require(sheets < rows.size() && found == rows[sheets]);
    ++sheets;
  }
  Require(part == UNZ_END_OF_LIST_OF_FILE && sheets == rows.size());
}
