#include "gui/ribbon/uRecordingFolder.h"

#include <QCollator>
#include <QLocale>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/uFiles.h"
#include "gui/common/uQtText.h"

namespace fs = std::filesystem;

namespace {

using TClock = std::chrono::steady_clock;

TPathKind KindOf(const fs::path& path) {
  std::error_code unknown;
  switch (fs::status(path, unknown).type()) {
    case fs::file_type::none:
    case fs::file_type::not_found:
      return TPathKind::Missing;
    case fs::file_type::regular:
      return TPathKind::File;
    case fs::file_type::directory:
      return TPathKind::Folder;
    default:
      return TPathKind::Other;
  }
}

// What cannot be asked for is 0.
TFolderEntry EntryOf(const QString& name, const fs::directory_entry& entry) {
  TFolderEntry found{name};
  std::error_code unknown;
  if (const auto size = entry.file_size(unknown); !unknown) found.Size = static_cast<qint64>(size);
  if (const auto written = entry.last_write_time(unknown); !unknown) {
    const auto since1970 = std::chrono::file_clock::to_sys(written).time_since_epoch();
    found.Modified = std::chrono::duration_cast<std::chrono::milliseconds>(since1970).count();
  }
  return found;
}

}  // namespace

bool IsRecordingName(const QString& name, const QStringList& patterns) {
  return !name.startsWith('.') && std::ranges::any_of(patterns, [&name](const QString& pattern) {
    return name.endsWith(QStringView(pattern).mid(1), Qt::CaseInsensitive);
  });
}

void SortByName(std::vector<TFolderEntry>& entries) {
  // The C locale compares bytes and would part upper from lower case.
  const QLocale locale = QLocale().collation();
  QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::vector<std::pair<QCollatorSortKey, size_t>> keys;
  keys.reserve(entries.size());
  for (size_t i = 0; i < entries.size(); ++i) keys.emplace_back(collator.sortKey(entries[i].Name), i);
  std::stable_sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<TFolderEntry> sorted;
  sorted.reserve(entries.size());
  for (const auto& [key, at] : keys) sorted.push_back(std::move(entries[at]));
  entries = std::move(sorted);
}

TFolderListing ReadFolder(const QString& path, const QStringList& patterns, const TFolderBounds& bounds) {
  const fs::path folder = PathFromUtf8(Utf8(path));
  TFolderListing listing;
  listing.Kind = KindOf(folder);
  if (listing.Kind != TPathKind::Folder) return listing;
  const TClock::time_point end = TClock::now() + bounds.Time;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  listing.Readable = !error;
  for (size_t seen = 1; !error && entry != fs::directory_iterator(); entry.increment(error), ++seen) {
    if (seen > bounds.Entries || listing.Entries.size() >= bounds.Recordings || TClock::now() > end) {
      listing.Complete = false;
      break;
    }
    const QString name = QtText(Utf8FromPath(entry->path().filename()));
    std::error_code unknown;
    if (IsRecordingName(name, patterns) && entry->is_regular_file(unknown))
      listing.Entries.push_back(EntryOf(name, *entry));
  }
  if (error) listing.Complete = false;
  return listing;
}
