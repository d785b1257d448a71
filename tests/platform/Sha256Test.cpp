#include "platform/uSha256.h"

#include <gtest/gtest.h>

#include "model/uExceptions1V0.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uTestRecording.h"

namespace {

TEST(Sha256, IsThatOfTheStandardForAFileOfAnySize) {
  const TTempFolder folder;
  TNoProgress progress;
  WriteFile(folder / "abc", {'a', 'b', 'c'});
  EXPECT_EQ(Sha256Of(folder / "abc", progress), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  WriteFile(folder / "none", {});
  EXPECT_EQ(Sha256Of(folder / "none", progress), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  WriteFile(folder / "million", TBytes(1'000'000, 'a'));
  EXPECT_EQ(Sha256Of(folder / "million", progress), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, CanBeCancelledAndSaysWhichFileCannotBeRead) {
  const TTempFolder folder;
  TLogProgress progress;
  progress.most = 1;
  WriteFile(folder / "long", TBytes(2'500'000));
  EXPECT_THROW(Sha256Of(folder / "long", progress), EKorvex);
  try {
    Sha256Of(folder / "missing", progress);
    FAIL();
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_EQ(error.path1(), folder / "missing");
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
  }
}

}  // namespace
