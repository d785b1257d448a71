// Files that block or fail.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "model/uDataFile1V0.h"
#include "model/uExceptions1V0.h"
#include "model/uReadFileThread.h"
#include "tests/support/uBlockedFile.h"
#include "tests/support/uTestRecording.h"

namespace {

TEST(HardFiles, APipeIsNotOpened) {
  const TTempFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(TDataFile::CreateLoad(folder / "pipe"), EStreamError);
}

TEST(HardFiles, AFullDiskIsReportedByClose) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
  TDataFile file = TDataFile::CreateSave("/dev/full");
  EXPECT_THROW(file.Close(), EStreamError);
}

TEST(HardFiles, ATerminatedReadDoesNotWaitForAFileThatBlocks) {
  const TTempFolder folder;
  WriteFile(folder / "far.kshock", Deflated(TTestRecording().Creator().content));
  TBlockedFile far(folder / "far.kshock");
  TRecordingPort port;
  const TPortHandle handle(port);
  TReadFileThread thread(handle.Value(), folder / "far.kshock");
  thread.Terminate();
  thread.WaitFor();
  ASSERT_EQ(port.Messages.size(), 1U);
  EXPECT_EQ(port.Messages.back().wParam, kReadFailed);
  EXPECT_EQ(port.Messages.back().lParam, kReadCancelled);
}

}  // namespace
