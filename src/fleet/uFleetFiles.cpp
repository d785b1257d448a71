#include "fleet/uFleetFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <system_error>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "base/uText.h"

namespace fs = std::filesystem;

namespace {

class TListing {
 public:
  void Add(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
      AddFolder(path);  // a link that is given is followed wherever it leads
    } else {
      Entries.push_back({path, FleetPath(path), {}});
    }
  }

  std::vector<TFleetEntry> Entries;

 private:
  void AddFolder(const fs::path& top) {
    std::vector<fs::path> waiting = {top};
    while (!waiting.empty()) {
      const fs::path folder = std::move(waiting.back());
      waiting.pop_back();
      std::error_code error;
      const fs::path real = fs::canonical(folder, error);
      if (!error && ((folder != top && LeadsUp(folder, real)) || !FListed.insert(real).second)) {
        Refuse(folder, "A link leads back to a folder that is listed already.");
        continue;
      }
      fs::directory_iterator items(folder, error);
      for (; !error && items != fs::directory_iterator(); items.increment(error)) {
        const fs::path& path = items->path();
        std::error_code unknown;
        if (fs::is_directory(path, unknown)) {
          waiting.push_back(path);
        } else if (AsciiLower(Utf8FromPath(path.extension())) == ".kshock") {
          Add(path);
        }
      }
      if (error) Refuse(folder, MessageOf(error));
    }
  }

  // A link to a folder that the link itself lies in.
  static bool LeadsUp(const fs::path& folder, const fs::path& real) {
    std::error_code error;
    if (!fs::is_symlink(folder, error)) return false;
    const fs::path from = fs::canonical(folder.parent_path() / ".", error);
    return std::mismatch(real.begin(), real.end(), from.begin(), from.end()).first == real.end();
  }

  void Refuse(const fs::path& folder, const std::string& why) {
    Entries.push_back({folder, FleetPath(folder), "The folder cannot be read: " + why});
  }

  std::set<fs::path> FListed;
};

}  // namespace

std::string FleetPath(const fs::path& path) {
  std::string bytes = Utf8FromPath(path);
  if (IsUtf8(bytes)) return bytes;
  std::string text;
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t length = 1;
    while (length < 4 && !IsUtf8(std::string_view(bytes).substr(at, length))) ++length;
    const std::string_view character = std::string_view(bytes).substr(at, length);
    if (IsUtf8(character)) {
      text += character;
      at += character.size();
    } else {
      text += fmt::format("\\x{:02X}", static_cast<unsigned char>(bytes[at++]));
    }
  }
  return text;
}

std::vector<TFleetEntry> ListRecordings(const std::vector<fs::path>& given) {
  TListing listing;
  for (const fs::path& path : given) listing.Add(path);
  auto& entries = listing.Entries;
  std::ranges::sort(entries, {}, &TFleetEntry::name);
  const auto isSame = [](const TFleetEntry& a, const TFleetEntry& b) { return a.name == b.name; };
  entries.erase(std::unique(entries.begin(), entries.end(), isSame), entries.end());
  return std::move(entries);
}

std::optional<TFileState> StateOf(const fs::path& path) {
  using namespace std::chrono;
  std::error_code error;
  const auto written = fs::last_write_time(path, error);
  if (error || !fs::is_regular_file(path, error)) return std::nullopt;
  const auto size = fs::file_size(path, error);
  if (error) return std::nullopt;
  const auto since1970 = duration_cast<nanoseconds>(file_clock::to_sys(written).time_since_epoch());
  const auto whole = floor<seconds>(since1970);
  return TFileState{
      static_cast<std::int64_t>(size),
      fmt::format("{}.{:09}",
                  FormatDateTime("yyyy-mm-ddThh:nn:ss", kDaysTo1970 + static_cast<double>(whole.count()) / 86400),
                  (since1970 - whole).count())};
}
