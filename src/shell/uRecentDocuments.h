// The recordings shown last, and their folders. Pinned entries come first and stay; of the others each list keeps the
// last
// 20. Paths are absolute and one line of text; others are not listed. Several windows share the file: each applies its
// own changes to the file's current contents when it saves. Main thread only.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

struct TRecentEntry {
  std::string Path;
  bool Pinned = false;
  std::string About = {};  // what is in the recording, a line of text; empty where that is not known

  bool operator==(const TRecentEntry&) const = default;
};

class TRecentList {
 public:
  static constexpr std::size_t kMaxUnpinned = 20;  // not pinned
  static constexpr std::size_t kMaxPinned = 100;   // so that the file stays small enough to be read again
  static constexpr std::size_t kMaxPath = 4096;

  [[nodiscard]] const std::vector<TRecentEntry>& Entries() const { return FEntries; }
  // Puts the path first among the pinned entries if it is pinned, else first among the others. `about` replaces what
  // was known of it.
  void Add(const std::string& path, const std::string& about = {});
  // An unlisted path, or a pin beyond kMaxPinned, changes nothing.
  void SetPinned(const std::string& path, bool pinned);
  void Remove(const std::string& path);
  // Replaces the entries by those of a file, without duplicates and paths that are not listed.
  void Take(std::vector<TRecentEntry> entries);
  // The other list after the changes made to this one since Take. A path pinned here is listed again if the other list
  // has lost it.
  [[nodiscard]] TRecentList RepeatedOn(TRecentList other) const;

 private:
  struct TChange {
    enum { Added, Pinned, Unpinned, Removed } what;
    std::string path;
    std::string about = {};
  };
  void Arrange();

  std::vector<TRecentEntry> FEntries;
  std::vector<TChange> FChanges;  // since Take
};

class TRecentDocuments {
 public:
  TRecentList Files;
  TRecentList Folders;

  // A recording was shown: it and its folder come first.
  void Add(const std::string& fileName, const std::string& about = {});

  // Fills the lists from "recentdocuments.ini"; they are empty when there is none. Throws std::runtime_error when the
  // file cannot be read or nothing in it makes sense; the lists are empty then.
  void Load(const std::filesystem::path& file);
  // Repeats the changes since Load on what the file holds by then; the lists become that, and the file is rewritten.
  // Where there is no file, or one that Load cannot use, which is kept under another name, the lists are written as
  // they stand. A failure, which throws, costs no older file and no change.
  void Save(const std::filesystem::path& file);
};
