#include "platform/uSafeFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Not;
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

TEST(SafeFile, ALinkIsFollowedAndAFolderIsRefused) {
  const TTempFolder folder;
  WriteFile(folder / "real", {1});
  fs::create_symlink("real", folder / "link");
  WriteBesideAndRename(folder / "link", Writing({2}));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(BytesOfFile(folder / "real"), TBytes{2});
  fs::permissions(folder / "real", fs::perms::owner_read | fs::perms::owner_write);
  WriteBesideAndRename(folder / "real", Writing({3}));
  EXPECT_EQ(fs::status(folder / "real").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions(folder / "real", fs::perms::owner_read);
  EXPECT_THROW(WriteBesideAndRename(folder / "link", Writing({})), fs::filesystem_error);
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

// What a killed run left goes with the next write; what is only named like it, holds something, or is being written by
// another process stays.
TEST(SafeFile, AbandonedFilesAreRemovedAndNoOthers) {
  const TTempFolder folder;
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t writer = fork();
  if (writer == 0) {
    WriteBesideAndRename(folder / "other", [&](const fs::path&) {
      std::ignore = write(ready[1], "x", 1);
      pause();
    });
    _exit(0);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  const std::string held = FilesIn(folder).front();

  const std::vector<std::string> kept = {".shockscope-0123ABCD.part", ".shockscope-0123abc.part",
                                         ".shockscope-0123abcd.parts", "shockscope-0123abcd.part"};
  for (const std::string& name : kept) WriteFile(folder / name, {1});
  fs::create_directory(folder / ".shockscope-00000000.part");
  fs::create_directory(folder / ".shockscope-00000000.tmp");
  WriteFile(folder / ".shockscope-00000000.tmp/full", {1});
  const TScratchFolder scratch(folder.Path());
  fs::create_symlink(kept[0], folder / ".shockscope-00000001.part");
  ASSERT_EQ(mkfifo((folder / ".shockscope-00000002.part").c_str(), 0600), 0);
  std::vector<std::string> all = FilesIn(folder);
  all.push_back("new");
  WriteFile(folder / ".shockscope-0123abcd.part", {1, 2});
  fs::create_directory(folder / ".shockscope-0123abcd.tmp");
  WriteFile(folder / ".shockscope-0123abcd.tmp/tmp.1", {});
  SaveFile(folder / "new", "x");
  EXPECT_THAT(FilesIn(folder), testing::UnorderedElementsAreArray(all));

  kill(writer, SIGKILL);
  waitpid(writer, nullptr, 0);
  EXPECT_THAT(FilesIn(folder), testing::Contains(held));
  SaveFile(folder / "new", "y");
  EXPECT_THAT(FilesIn(folder), Not(testing::Contains(held)));
}

// A library that failed may leave nameless files open, which would keep their room until the program ends.
TEST(SafeFile, AScratchFolderTakesWhatIsOpenInIt) {
  const TTempFolder folder;
  const fs::path kept = folder / "kept";
  const int other = open(kept.c_str(), O_RDWR | O_CREAT, 0600);
  int nameless = -1;
  {
    const TScratchFolder scratch(folder.Path());
    const fs::path path = scratch.Path() / "tmp.1";
    nameless = open(path.c_str(), O_RDWR | O_CREAT, 0600);
    fs::remove(path);
    for (const int file : {nameless, other}) ASSERT_EQ(write(file, "0123456789", 10), 10);
    scratch.Cut();
    ASSERT_EQ(write(nameless, "ab", 2), 2);
    char bytes[16] = {};
    EXPECT_EQ(pread(nameless, bytes, sizeof bytes, 0), 2) << "no hole where the digits were";
    EXPECT_EQ(fs::file_size(kept), 10U);
  }
  EXPECT_EQ(fcntl(nameless, F_GETFD), -1);
  EXPECT_NE(fcntl(other, F_GETFD), -1);
  close(other);
}

}  // namespace
