#include "gui/ribbon/uRecordingFolder.h"

#include <QCollator>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

namespace {

std::vector<QRegularExpression> Compiled(const QStringList& patterns) {
  std::vector<QRegularExpression> compiled;
  for (const QString& pattern : patterns) {
    compiled.emplace_back(QRegularExpression::wildcardToRegularExpression(pattern),
                          QRegularExpression::CaseInsensitiveOption);
  }
  return compiled;
}

}  // namespace

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

TFolderListing ReadFolder(const QString& folder, const QStringList& patterns, const TFolderBounds& bounds) {
  TFolderListing listing;
  const QFileInfo info(folder);
  listing.Readable = info.isDir() && info.isReadable();
  if (!listing.Readable) return listing;
  const auto wanted = Compiled(patterns);
  QElapsedTimer clock;
  clock.start();
  size_t seen = 0;
  for (QDirIterator entry(folder, QDir::Files); entry.hasNext();) {
    entry.next();
    if (++seen > bounds.Entries || listing.Entries.size() >= bounds.Recordings || clock.elapsed() > bounds.Time) {
      listing.Complete = false;
      break;
    }
    const QString name = entry.fileName();
    const bool matches =
        std::any_of(wanted.begin(), wanted.end(), [&](const auto& it) { return it.match(name).hasMatch(); });
    if (!matches) continue;
    const QFileInfo file = entry.fileInfo();
    listing.Entries.push_back({name, file.size(), file.lastModified()});
  }
  SortByName(listing.Entries);
  return listing;
}
