#include "base/uFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;

namespace {

std::size_t FilesIn(const TTempFolder& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
}

TEST(Files, AFailedWriteLeavesTheOldFileAndNothingElse) {
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
  EXPECT_EQ(FilesIn(folder), 1U);

  WriteBesideAndRename(target, [](const fs::path& beside) { WriteFile(beside, {9}); });
  EXPECT_EQ(BytesOfFile(target), TBytes{9});
  EXPECT_EQ(FilesIn(folder), 1U);
}

TEST(Files, ALinkIsFollowedAndAFolderIsRefused) {
  const TTempFolder folder;
  WriteFile(folder / "real", {1});
  fs::create_symlink(folder / "real", folder / "link");
  WriteBesideAndRename(folder / "link", [](const fs::path& beside) { WriteFile(beside, {2}); });
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(BytesOfFile(folder / "real"), TBytes{2});
  fs::permissions(folder / "real", fs::perms::owner_read | fs::perms::owner_write);
  WriteBesideAndRename(folder / "real", [](const fs::path& beside) { WriteFile(beside, {3}); });
  EXPECT_EQ(fs::status(folder / "real").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  fs::permissions(folder / "real", fs::perms::owner_read);
  EXPECT_THROW(WriteBesideAndRename(folder / "real", [](const fs::path&) {}), fs::filesystem_error);
  try {
    WriteBesideAndRename(folder.Path(), [](const fs::path&) {});
    FAIL();
  } catch (const fs::filesystem_error& error) {
    EXPECT_EQ(error.code(), std::errc::is_a_directory);
  }
}

}  // namespace
