#include "platform/uSafeFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;

namespace {

std::vector<std::string> FilesIn(const TTempFolder& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder.Path())) names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

TFileWriter Writing(const TBytes& bytes) {
  return [bytes](const fs::path& beside) { WriteFile(beside, bytes); };
}

TEST(SafeFile, AFailedWriteLeavesTheOldFileAndNothingElse) {
  const TTempFolder folder;
  const fs::path target = folder / "R\u00FCttel\u4E2D.kshock";
  WriteFile(target, {1, 2, 3});
  EXPECT_THROW(WriteBesideAndRename(target,
                                    [](const fs::path& beside) {
                                      WriteFile(beside, {9});
                                      throw std::runtime_error("the disk is full");
                                    }),
               std::runtime_error);
  EXPECT_EQ(BytesOfFile(target), (TBytes{1, 2, 3}));
  EXPECT_THAT(FilesIn(folder), SizeIs(1));
  WriteBesideAndRename(target, Writing({9}));
  EXPECT_EQ(BytesOfFile(target), TBytes{9});
  EXPECT_THAT(FilesIn(folder), SizeIs(1));
}

TEST(SafeFile, AFolderAndAProtectedFileAreRefused) {
  const TTempFolder folder;
  WriteFile(folder / "protected", {1});
  fs::permissions(folder / "protected", fs::perms::owner_read);
  EXPECT_THROW(WriteBesideAndRename(folder / "protected", Writing({})), fs::filesystem_error);
  fs::permissions(folder / "protected", fs::perms::owner_read | fs::perms::owner_write);
  try {
    SaveFile(folder.Path(), "x");
    FAIL();
  } catch (const fs::filesystem_error& error) {
    EXPECT_EQ(error.code(), std::errc::is_a_directory);
    EXPECT_EQ(error.path1(), folder.Path());
  }
}

TEST(SafeFile, ASetIsPutInPlaceTogetherAndPastAFailure) {
  const TTempFolder folder;
  TFileSet files;
  for (const char* name : {"a", "b", "c"}) files.Write(folder / name, Writing({7}));
  EXPECT_THAT(FilesIn(folder), testing::Each(EndsWith(".part")));
  files.Sync();
  fs::create_directories(folder / "b" / "in the way");
  try {
    files.PutInPlace();
    FAIL();
  } catch (const fs::filesystem_error& error) {
    EXPECT_EQ(error.path1(), folder / "b");
  }
  files.PutInPlace();
  EXPECT_THAT(FilesIn(folder), ElementsAre("a", "b", "c"));
  EXPECT_EQ(BytesOfFile(folder / "c"), TBytes{7});
}

// What a killed run left goes with the next write; what is only named like it, holds something, or is open stays.
TEST(SafeFile, AbandonedFilesAreRemovedAndNoOthers) {
  const TTempFolder folder;
  const TPartFile part(folder.Path());
  const TScratchFolder scratch(folder.Path());
  for (const char* name : {".shockscope-89ABCDEF.part", ".shockscope-0123abc.part", ".shockscope-0123abcd.parts",
                           "shockscope-0123abcd.part"}) {
    WriteFile(folder / name, {1});
  }
  fs::create_directory(folder / ".shockscope-00000000.part");
  fs::create_directory(folder / ".shockscope-00000000.tmp");
  WriteFile(folder / ".shockscope-00000000.tmp/full", {1});
  std::vector<std::string> all = FilesIn(folder);
  all.push_back("new");
  WriteFile(folder / ".shockscope-0123abcd.part", {1, 2});
  fs::create_directory(folder / ".shockscope-0123abcd.tmp");
  WriteFile(folder / ".shockscope-0123abcd.tmp/tmp.1", {});
  SaveFile(folder / "new", "x");
  EXPECT_THAT(FilesIn(folder), testing::UnorderedElementsAreArray(all));
}

}  // namespace
