#include "shell/uRecentDocuments.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "base/uText.h"
#include "platform/uPartFile.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

// An entry's key is its number, the same in both sections.
struct TSections {
  const char* paths;
  const char* pinned;
  const char* about;
};
constexpr TSections kFiles = {"FullPath", "Pinned", "About"};
constexpr TSections kFolders = {"FolderFullPath", "PinnedFolder", "AboutFolder"};
constexpr std::size_t kMaxAbout = 400;  // bytes

bool MayBeListed(const std::string& path) {
  return !path.empty() && path.size() <= TRecentList::kMaxPath && IsPlainLine(path) && PathFromUtf8(path).is_absolute();
}

bool MayBeShown(const std::string& about) {
  return about.size() <= kMaxAbout && IsPlainLine(about);
}

std::string AboutIn(const TRecentList& list, const std::string& path) {
  const auto found = std::ranges::find(list.Entries(), path, &TRecentEntry::Path);
  return found == list.Entries().end() ? std::string() : found->About;
}

// ".." is left in place: behind a link it leads elsewhere than the text says.
fs::path Absolute(const std::string& fileName) {
  std::error_code unknown;
  const fs::path path = fs::absolute(PathFromUtf8(fileName), unknown);
  const bool climbs = std::any_of(path.begin(), path.end(), [](const fs::path& part) { return part == ".."; });
  return climbs ? path : path.lexically_normal();
}

std::vector<TRecentEntry> Read(const TIniFile& ini, const TSections& sections) {
  std::vector<TRecentEntry> entries;
  for (const std::string& key : ini.Keys(sections.paths)) {
    entries.push_back({ini.ReadString(sections.paths, key, {}), ini.ReadBool(sections.pinned, key, false),
                       ini.ReadString(sections.about, key, {})});
  }
  return entries;
}

void Write(TIniFile& ini, const TSections& sections, const std::vector<TRecentEntry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::string key = fmt::format("{}", i);
    ini.WriteString(sections.paths, key, entries[i].Path);
    ini.WriteBool(sections.pinned, key, entries[i].Pinned);
    if (!entries[i].About.empty()) ini.WriteString(sections.about, key, entries[i].About);
  }
}

}  // namespace

void TRecentList::Add(const std::string& path, const std::string& about) {
  if (!MayBeListed(path)) return;
  FChanges.push_back({TChange::Added, path, about});
  const auto found = std::ranges::find(FEntries, path, &TRecentEntry::Path);
  const bool pinned = found != FEntries.end() && found->Pinned;
  if (found != FEntries.end()) FEntries.erase(found);
  FEntries.insert(FEntries.begin(), {path, pinned, MayBeShown(about) ? about : std::string()});
  Arrange();
}

void TRecentList::SetPinned(const std::string& path, bool pinned) {
  const auto found = std::ranges::find(FEntries, path, &TRecentEntry::Path);
  const auto count = static_cast<std::size_t>(std::ranges::count(FEntries, true, &TRecentEntry::Pinned));
  if (found == FEntries.end() || found->Pinned == pinned || (pinned && count >= kMaxPinned)) return;
  FChanges.push_back({pinned ? TChange::Pinned : TChange::Unpinned, path});
  found->Pinned = pinned;
  // It is the latest of those it now belongs to.
  std::rotate(FEntries.begin(), found, found + 1);
  Arrange();
}

void TRecentList::Remove(const std::string& path) {
  FChanges.push_back({TChange::Removed, path});
  std::erase_if(FEntries, [&](const TRecentEntry& entry) { return entry.Path == path; });
}

void TRecentList::Take(std::vector<TRecentEntry> entries) {
  std::set<std::string> seen;
  std::erase_if(entries,
                [&](const TRecentEntry& entry) { return !MayBeListed(entry.Path) || !seen.insert(entry.Path).second; });
  for (TRecentEntry& entry : entries) {
    if (!MayBeShown(entry.About)) entry.About.clear();
  }
  FEntries = std::move(entries);
  FChanges.clear();
  Arrange();
}

TRecentList TRecentList::RepeatedOn(TRecentList other) const {
  for (const auto& [what, path, about] : FChanges) {
    if (what == TChange::Removed) {
      other.Remove(path);
    } else {
      if (what != TChange::Unpinned) other.Add(path, what == TChange::Added ? about : AboutIn(other, path));
      if (what != TChange::Added) other.SetPinned(path, what == TChange::Pinned);
    }
  }
  other.FChanges.clear();
  return other;
}

void TRecentList::Arrange() {
  std::stable_partition(FEntries.begin(), FEntries.end(), [](const TRecentEntry& entry) { return entry.Pinned; });
  std::size_t pinned = 0;
  std::size_t others = 0;
  std::erase_if(FEntries, [&](const TRecentEntry& entry) {
    return entry.Pinned ? ++pinned > kMaxPinned : ++others > kMaxUnpinned;
  });
}

void TRecentDocuments::Add(const std::string& fileName, const std::string& about) {
  const fs::path path = Absolute(fileName);
  Files.Add(Utf8FromPath(path), about);
  Folders.Add(Utf8FromPath(path.parent_path()));
}

void TRecentDocuments::Load(const fs::path& file) {
  *this = {};
  if (!IsThere(file)) return;
  const TIniFile ini = TIniFile::Load(file);
  Files.Take(Read(ini, kFiles));
  Folders.Take(Read(ini, kFolders));
  const bool isEmpty = Files.Entries().empty() && Folders.Entries().empty();
  if (isEmpty && fs::file_size(file) > 0) throw std::runtime_error("The file makes no sense.");
}

void TRecentDocuments::Save(const fs::path& file) {
  const TFolderLock lock(file.parent_path());  // of windows that close at once, one saves after the other
  TRecentDocuments merged = *this;
  if (IsThere(file)) {
    try {
      TRecentDocuments others;
      others.Load(file);
      merged.Files = Files.RepeatedOn(std::move(others.Files));
      merged.Folders = Folders.RepeatedOn(std::move(others.Folders));
    } catch (const std::runtime_error&) {
      KeepAside(file);
    }
  }
  TIniFile ini;
  Write(ini, kFiles, merged.Files.Entries());
  Write(ini, kFolders, merged.Folders.Entries());
  SaveFile(file, ini.Text());
  *this = std::move(merged);
}
