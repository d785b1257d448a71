// What is Windows' own in platform/.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/uPartFile.h"
#include "platform/uProcess.h"
#include "platform/uProcessLimits.h"
#include "platform/uProgram.h"
#include "platform/uUserFolders.h"
#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;

namespace {

constexpr auto kKey = L"Software\\Halvorn\\Korvex";

TEST(Windows, TheRegistryValueIsReadAndItsAbsenceIsEmpty) {
  RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, L"FileDir");
  EXPECT_EQ(RegistryFileDir(), "");
  const std::wstring folder = L"C:\\R\u00FCttel \u65E5\u672C";
  const auto bytes = static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t));
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"FileDir", REG_SZ, folder.c_str(), bytes), ERROR_SUCCESS);
  EXPECT_EQ(RegistryFileDir(), "C:\\R\u00FCttel \u65E5\u672C");
  RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Halvorn");
}

TEST(Windows, TheSettingsStandInTheDocuments) {
  EXPECT_TRUE(fs::is_directory(DocumentsFolder()));
  EXPECT_EQ(SettingsFolderPath(), DocumentsFolder() / "Korvex" / "settings" / "");
}

TEST(Windows, AStartedProgramGetsItsArguments) {
  const TTempFolder folder;
  const fs::path list = folder / "a b\\";
  fs::create_directory(list);
  EXPECT_EQ(RunProgram(ThisProgram(), {"--gtest_list_tests", "--gtest_output=xml:" + list.string()}), 0);
  EXPECT_TRUE(fs::exists(list / "shockscope_tests.xml"));
}

TEST(Windows, AboutTwoThousandFilesCanBeOpen) {
  RaiseOpenFileLimit();
  EXPECT_GT(OpenFilesLeft(), 2000U);
}

// A library that failed may leave files open, which would keep their room until the program ends.
TEST(Windows, AScratchFolderTakesWhatIsOpenInIt) {
  const TTempFolder folder;
  const fs::path kept = folder / "kept";
  const int other = _wopen(kept.c_str(), _O_RDWR | _O_CREAT | _O_BINARY, 0600);
  fs::path left;
  {
    const TScratchFolder scratch(folder.Path());
    left = scratch.Path() / "tmp.1";
    const int open = _wopen(left.c_str(), _O_RDWR | _O_CREAT | _O_BINARY, 0600);
    for (const int file : {open, other}) ASSERT_EQ(_write(file, "0123456789", 10), 10);
    scratch.Cut();
    ASSERT_EQ(_write(open, "ab", 2), 2);
    EXPECT_EQ(_filelengthi64(open), 2) << "no hole where the digits were";
    EXPECT_EQ(_filelengthi64(other), 10);
    ASSERT_EQ(_chsize_s(open, 0), 0);
  }
  EXPECT_FALSE(fs::exists(left.parent_path())) << "it was closed, so the folder could go";
  EXPECT_EQ(_close(other), 0);
}

}  // namespace
