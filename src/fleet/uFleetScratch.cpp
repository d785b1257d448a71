#include "fleet/uFleetScratch.h"

#include <fmt/format.h>

#include <chrono>
#include <random>
#include <system_error>

#include "base/uFiles.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFolderPrefix = "kshock-fleet-";

// A run that lives changes its own with every chunk.
void RemoveAbandonedFolders() {
  std::error_code error;
  const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (fs::directory_iterator item(fs::temp_directory_path(), error), end; !error && item != end;
       item.increment(error)) {
    std::error_code unknown;
    if (!Utf8FromPath(item->path().filename()).starts_with(kFolderPrefix)) continue;
    const auto changed = fs::last_write_time(item->path(), unknown);
    if (!unknown && changed < yesterday) fs::remove_all(item->path(), unknown);
  }
}

}  // namespace

TFleetScratch::TFleetScratch() {
  RemoveAbandonedFolders();
  std::random_device random;
  do {
    FPath = fs::temp_directory_path() / fmt::format("{}{:08x}{:08x}", kFolderPrefix, random(), random());
  } while (!fs::create_directory(FPath));
  fs::permissions(FPath, fs::perms::owner_all);
}

TFleetScratch::~TFleetScratch() {
  std::error_code error;
  fs::remove_all(FPath, error);
}

fs::path TFleetScratch::File(std::size_t number, std::string_view ending) const {
  return FPath / fmt::format("{}{}", number, ending);
}
