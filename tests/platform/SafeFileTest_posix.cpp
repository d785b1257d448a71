#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <tuple>

#include "platform/uSafeFile.h"
#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;

namespace {

TEST(SafeFile, ALinkIsFollowedAndPermissionsAreKept) {
  const TTempFolder folder;
  WriteFile(folder / "real", {1});
  fs::create_symlink("real", folder / "link");
  SaveFile(folder / "link", "2");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(BytesOfFile(folder / "real"), TBytes{'2'});
  constexpr auto kMine = fs::perms::owner_read | fs::perms::owner_write;
  fs::permissions(folder / "real", kMine);
  SaveFile(folder / "real", "3");
  EXPECT_EQ(fs::status(folder / "real").permissions(), kMine);
  fs::permissions(folder / "real", fs::perms::owner_read);
  EXPECT_THROW(SaveFile(folder / "link", ""), fs::filesystem_error);
}

// A link or a pipe of such a name stays.
TEST(SafeFile, WhatAProcessWritesIsRemovedOnceItIsKilled) {
  const TTempFolder folder;
  fs::create_symlink("kept", folder / ".shockscope-00000001.part");
  ASSERT_EQ(mkfifo((folder / ".shockscope-00000002.part").c_str(), 0600), 0);
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
  const auto files = [&folder] { return std::distance(fs::directory_iterator(folder.Path()), {}); };
  SaveFile(folder / "new", "x");
  EXPECT_EQ(files(), 4);
  kill(writer, SIGKILL);
  waitpid(writer, nullptr, 0);
  EXPECT_EQ(files(), 4);
  SaveFile(folder / "new", "y");
  EXPECT_EQ(files(), 3);
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
