#include "platform/uUserFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>

#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;

namespace {

// A home of the test's own. What the environment says comes back afterwards.
class UserFolders : public testing::Test {
 protected:
  UserFolders() {
    Set("HOME", FHome.Path().string());
    Set("XDG_CONFIG_HOME", {});
  }
  ~UserFolders() override {
    for (const auto& [name, value] : FBefore) {
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
  }
  void Set(const std::string& name, const std::optional<std::string>& value) {
    const char* before = std::getenv(name.c_str());
    FBefore.try_emplace(name, before == nullptr ? std::nullopt : std::optional<std::string>(before));
    value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
  }
  void Write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    WriteFile(path, {text.begin(), text.end()});
  }
  std::string Below(const char* path) { return (FHome / path).string(); }

  TTempFolder FHome;

 private:
  std::map<std::string, std::optional<std::string>> FBefore;
};

TEST_F(UserFolders, TheDesktopsListNamesTheDocuments) {
  EXPECT_EQ(DocumentsFolder(), Below("Documents"));
  const std::pair<std::string, std::string> lists[] = {
      {"# XDG_DOCUMENTS_DIR=\"/no\"\nXDG_MUSIC_DIR=\"/m\"\n XDG_DOCUMENTS_DIR=\"$HOME/Eigene \\\"Do\\$\\\"\"\n",
       Below("Eigene \"Do$\"")},
      {"XDG_DOCUMENTS_DIR=\"/srv/docs\"", "/srv/docs"},
      {"XDG_DOCUMENTS_DIR=\"$HOME/\"", Below("")},
      {"XDG_DOCUMENTS_DIR=\"docs\"\nXDG_DOCUMENTS_DIR=\"$HOMEr\"\nXDG_DOCUMENTS_DIR=/x\nXDG_DOCUMENTS_DIR=\"/cut",
       Below("Documents")}};
  for (const auto& [list, documents] : lists) {
    Write(FHome / ".config/user-dirs.dirs", list);
    EXPECT_EQ(DocumentsFolder(), documents) << list;
  }
  Set("XDG_CONFIG_HOME", "relative");
  EXPECT_EQ(DocumentsFolder(), Below("Documents")) << "a relative folder is none; the list of .config counts";
  Set("XDG_CONFIG_HOME", Below("conf"));
  Write(FHome / "conf/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Else\"");
  EXPECT_EQ(DocumentsFolder(), Below("Else"));
}

TEST_F(UserFolders, TheSettingsFolderIsMadeWithItsParentsOrEmpty) {
  const std::string folder = Below("Documents/Korvex/settings/");
  EXPECT_EQ(SettingsFolderPath(), folder);
  EXPECT_FALSE(fs::exists(folder)) << "nothing was made";
  EXPECT_EQ(SettingsFolder(), folder);
  EXPECT_TRUE(fs::is_directory(folder));
  EXPECT_EQ(SettingsFolder(), folder) << "it is there already";
  fs::remove_all(FHome / "Documents/Korvex");
  Write(FHome / "Documents/Korvex", "a file in its place");
  EXPECT_EQ(SettingsFolder(), "");
  for (const char* home : {"", "relative"}) {
    Set("HOME", home);
    EXPECT_EQ(SettingsFolder(), "") << home;
  }
}

TEST_F(UserFolders, TheRegistryValueIsReadAndItsAbsenceIsEmpty) {
  EXPECT_EQ(RegistryFileDir(), "");
  const fs::path file = FHome / ".config/Halvorn/Korvex.ini";
  Write(file, "FileDir=/elsewhere\n[General]\nFileDir = /srv/Rüttel \n[Other]\nFileDir=/no\n");
  EXPECT_EQ(RegistryFileDir(), "/srv/Rüttel");
  Set("XDG_CONFIG_HOME", Below("conf"));
  EXPECT_EQ(RegistryFileDir(), "");
  fs::create_directories(FHome / "conf/Halvorn/Korvex.ini");
  EXPECT_EQ(RegistryFileDir(), "") << "a folder in its place";
}

}  // namespace
