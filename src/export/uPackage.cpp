#include "export/uPackage.h"

#include <fmt/format.h>
#include <minizip/unzip.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

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

// Unpacks the current part, and returns how many rows it holds.
std::size_t CheckPart(unzFile zip, const std::stop_token& stop) {
  unz_file_info64 info{};
  Require(unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK);
  Require(unzOpenCurrentFile(zip) == UNZ_OK);
  std::vector<char> buffer(kTailBytes + kReadBytes);  // the end of the previous piece, and a piece
  std::string root;
  std::string_view text;
  std::uint64_t size = 0;
  std::size_t rows = 0;
  while (!stop.stop_requested()) {
    const std::size_t kept = std::min(text.size(), kTailBytes);
    std::copy(text.end() - kept, text.end(), buffer.begin());
    const int read = unzReadCurrentFile(zip, buffer.data() + kept, kReadBytes);
    Require(read >= 0);
    text = {buffer.data(), kept + static_cast<std::size_t>(read)};
    if (read == 0) break;
    if (size == 0) root = RootOf(text);
    size += static_cast<std::size_t>(read);
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
