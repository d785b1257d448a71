#include "shell/uRecentDocuments.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <thread>

#include "base/uIniFile.h"
#include "tests/support/uTestRecording.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

class RecentDocuments : public testing::Test {
 protected:
  void Write(const std::string& text) { std::ofstream(FFile, std::ios::binary) << text; }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(FFolder.Path())) names.push_back(entry.path().filename().string());
    return names;
  }
  // Paths in their order, a star behind the pinned ones.
  static std::vector<std::string> Listed(const TRecentList& list) {
    std::vector<std::string> listed;
    for (const TRecentEntry& entry : list.Entries()) listed.push_back(entry.Path + (entry.Pinned ? "*" : ""));
    return listed;
  }

  TTempFolder FFolder;
  fs::path FFile = FFolder / "recentdocuments.ini";
  TRecentDocuments FRecent;
};

TEST_F(RecentDocuments, TheLatestComesFirstAfterThePinnedOnesAndTwentyOthersStay) {
  for (int i = 1; i <= 3; ++i) FRecent.Add(fmt::format("/{}/run.kshock", i));
  EXPECT_THAT(Listed(FRecent.Files), ElementsAre("/3/run.kshock", "/2/run.kshock", "/1/run.kshock"));
  FRecent.Files.SetPinned("/1/run.kshock", true);
  FRecent.Add("/2/run.kshock");
  EXPECT_THAT(Listed(FRecent.Files), ElementsAre("/1/run.kshock*", "/2/run.kshock", "/3/run.kshock"));
  EXPECT_THAT(Listed(FRecent.Folders), ElementsAre("/2", "/3", "/1"));
  for (int i = 10; i < 50; ++i) FRecent.Add(fmt::format("/{}/run.kshock", i));
  EXPECT_EQ(FRecent.Files.Entries().size(), 21U);
  EXPECT_EQ(FRecent.Folders.Entries().size(), 20U);
  EXPECT_EQ(FRecent.Files.Entries()[1].Path, "/49/run.kshock");
  FRecent.Files.SetPinned("/1/run.kshock", false);
  EXPECT_EQ(FRecent.Files.Entries()[0], (TRecentEntry{"/1/run.kshock", false})) << "the latest of the others";
  EXPECT_EQ(FRecent.Files.Entries().size(), 20U);
  FRecent.Files.Remove("/1/run.kshock");
  EXPECT_EQ(FRecent.Files.Entries()[0].Path, "/49/run.kshock");
}

TEST_F(RecentDocuments, PathsAreAbsoluteAndPlainLines) {
  FRecent.Add("./a.kshock");
  EXPECT_EQ(FRecent.Files.Entries()[0].Path, (fs::current_path() / "a.kshock").string());
  FRecent.Add("/link/../b.kshock");
  EXPECT_EQ(FRecent.Files.Entries()[0].Path, "/link/../b.kshock") << "it is not what the text says";
  for (const char* path : {"/a\nb/c.kshock", "/\x1B[2J.kshock", "/\xC2\x85.kshock", "/\xFF.kshock"}) FRecent.Add(path);
  FRecent.Add("/" + std::string(5000, 'x'));
  EXPECT_EQ(FRecent.Files.Entries().size(), 2U);
}

TEST_F(RecentDocuments, WhatIsSavedIsReadAgain) {
  for (const char* path : {"/ both ends ", "/Rüttel \"x\"", "/a=b;c#d", "/z/[S]"}) FRecent.Add(path);
  FRecent.Files.SetPinned("/a=b;c#d", true);
  FRecent.Folders.SetPinned("/z", true);
  FRecent.Save(FFile);
  const TIniFile ini = TIniFile::Load(FFile);
  EXPECT_EQ(ini.ReadString("FullPath", "0", ""), "/a=b;c#d");
  EXPECT_TRUE(ini.ReadBool("Pinned", "0", false));
  EXPECT_FALSE(ini.ReadBool("Pinned", "1", true));
  EXPECT_EQ(ini.ReadString("FolderFullPath", "0", ""), "/z");
  EXPECT_TRUE(ini.ReadBool("PinnedFolder", "0", false));
  TRecentDocuments again;
  again.Load(FFile);
  EXPECT_EQ(again.Files.Entries(), FRecent.Files.Entries());
  EXPECT_EQ(again.Folders.Entries(), FRecent.Folders.Entries());

  for (const char* path : {"/ both ends ", "/Rüttel \"x\"", "/a=b;c#d", "/z/[S]"}) again.Files.Remove(path);
  for (const char* path : {"/", "/z"}) again.Folders.Remove(path);
  again.Save(FFile);
  again.Load(FFile);
  again.Save(FFile);
  EXPECT_THAT(Listed(again.Files), IsEmpty());
  EXPECT_THAT(Names(), ElementsAre("recentdocuments.ini")) << "empty lists are no damage";
}

TEST_F(RecentDocuments, WhatIsKnownOfARecordingStaysUntilItIsShownAgain) {
  FRecent.Add("/a", "Trip [1]; 3 events");
  FRecent.Add("/b", std::string(500, 'x'));
  FRecent.Save(FFile);
  TRecentDocuments other;
  other.Load(FFile);
  FRecent.Files.SetPinned("/a", true);
  FRecent.Save(FFile);
  other.Add("/b", "2 events");
  other.Save(FFile);
  FRecent.Load(FFile);
  EXPECT_THAT(FRecent.Files.Entries(),
              ElementsAre(TRecentEntry{"/a", true, "Trip [1]; 3 events"}, TRecentEntry{"/b", false, "2 events"}));
  EXPECT_EQ(FRecent.Folders.Entries()[0].About, "");
}

TEST_F(RecentDocuments, TwoWindowsKeepWhatTheOtherChanged) {
  for (const char* path : {"/d/1", "/d/2", "/d/3", "/d/4"}) FRecent.Add(path);
  FRecent.Files.SetPinned("/d/4", true);
  FRecent.Save(FFile);
  TRecentDocuments first;
  TRecentDocuments second;
  first.Load(FFile);
  second.Load(FFile);
  first.Add("/first/new");
  first.Files.SetPinned("/d/1", true);
  first.Files.Remove("/d/2");
  first.Files.Remove("/d/3");
  first.Files.SetPinned("/d/4", false);
  first.Save(FFile);
  second.Add("/second/new");
  second.Files.SetPinned("/d/3", true);
  second.Save(FFile);
  EXPECT_THAT(Listed(second.Files), ElementsAre("/d/3*", "/d/1*", "/second/new", "/d/4", "/first/new"))
      << "the window that is closed last decides of /d/3";
  TRecentDocuments again;
  again.Load(FFile);
  EXPECT_EQ(again.Files.Entries(), second.Files.Entries());
  EXPECT_THAT(Listed(again.Folders), ElementsAre("/second", "/first", "/d"));

  fs::remove(FFile);
  again.Save(FFile);
  again.Load(FFile);
  EXPECT_EQ(again.Files.Entries(), second.Files.Entries()) << "a file that has gone says nothing";
}

TEST_F(RecentDocuments, WindowsThatCloseAtOnceKeepWhatEachAdded) {
  FRecent.Add("/d/old");
  FRecent.Save(FFile);
  std::vector<TRecentDocuments> windows(3, FRecent);
  std::vector<std::thread> closes;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    windows[i].Load(FFile);
    windows[i].Add(fmt::format("/d/{}", i));
  }
  for (TRecentDocuments& window : windows) closes.emplace_back([&] { window.Save(FFile); });
  for (std::thread& close : closes) close.join();
  FRecent.Load(FFile);
  EXPECT_THAT(Listed(FRecent.Files), testing::UnorderedElementsAre("/d/0", "/d/1", "/d/2", "/d/old"));
}

TEST_F(RecentDocuments, OfAForeignFileWhatMakesSenseIsTaken) {
  std::string text = "[Pinned]\n7=1\n9=yes\n[FullPath]\n9=/nine\n3=relative\nx=/\x01\n7=/seven\n8=/nine\n4=\n";
  for (int i = 100; i < 400; ++i) text += fmt::format("{0}=/many/{0}\n", i);
  text += "[PinnedFolder]\n";
  for (int i = 0; i < 300; ++i) text += fmt::format("{}=1\n", i);
  text += "[FolderFullPath]\n";
  for (int i = 0; i < 300; ++i) text += fmt::format("{0}=/pinned/{0}\n", i);
  Write(text);
  FRecent.Load(FFile);
  const std::vector<std::string> files = Listed(FRecent.Files);
  EXPECT_EQ(files.size(), 21U);
  EXPECT_EQ(files[0], "/seven*");
  EXPECT_EQ(files[1], "/nine");
  EXPECT_EQ(FRecent.Folders.Entries().size(), TRecentList::kMaxPinned);
}

TEST_F(RecentDocuments, AFileThatCannotBeReadIsKeptUnderAnotherName) {
  const std::string rubbish("\0\x01[Full\nPath\xFF=", 14);
  for (const std::string& text : {std::string(2'000'000, 'x'), rubbish}) {
    Write(text);
    TRecentDocuments recent;
    EXPECT_THROW(recent.Load(FFile), std::runtime_error);
    recent.Add("/a/run.kshock");
    recent.Save(FFile);
    recent.Save(FFile);
    recent.Load(FFile);
    EXPECT_THAT(Listed(recent.Files), ElementsAre("/a/run.kshock"));
  }
  EXPECT_THAT(Names(), testing::UnorderedElementsAre("recentdocuments.ini", "recentdocuments-kept.ini",
                                                     "recentdocuments-kept-2.ini"));
  EXPECT_EQ(fs::file_size(FFolder / "recentdocuments-kept.ini"), 2'000'000U);
  EXPECT_EQ(BytesOfFile(FFolder / "recentdocuments-kept-2.ini"), TBytes(rubbish.begin(), rubbish.end()));
}

}  // namespace
