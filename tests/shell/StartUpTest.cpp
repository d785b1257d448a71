#include "shell/uStartUp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/uLayoutCommands.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uTestRecording.h"

namespace {

TEST(StartUp, TheWindowStartsWithItsCaptionTheCardsAndTheWelcomePanel) {
  TFakeWindow window;
  TRecentDocuments recent;
  TShownMission mission;
  FormCreate({"/opt/none", "1.0.0.0", "/recordings", "ignored.kshock"}, mission, recent, window.controls,
             window.dialogs, window.views);
  EXPECT_EQ(window.log.Take(),
            "caption \"Korvex165 ShockScope [W64] v1.0.0.0\"; text lblCardToTTotal \"ToT total\"; "
            "text lblCardIoTTotal \"IoT total\"; text lblCardToTMax \"ToT max\"; text lblCardIoTMax \"IoT max\"; "
            "front WellcomePanel; hide" +
                kDockPanelNames + "; groups of no file; hide dxDockPanelFilter; disable dxBarReload; ");
}

TEST(StartUp, TheManualIsThePlainFilesOfItsFolderThatAreNotHidden) {
  const TTempFolder folder;
  std::filesystem::create_directories(folder / "doc_shock/a-folder");
  for (const char* name : {"Quick-Start-1.pdf", "notes", ".directory"}) WriteFile(folder / "doc_shock" / name, {1});
  std::set<std::string> icons;
  std::map<std::string, std::string> captions;
  for (const auto& [icon, caption, file] : UserManual({folder.Path(), "1.0.0.0", "", ""})) {
    icons.insert(icon);
    captions.emplace(file, caption);
  }
  EXPECT_THAT(icons, testing::ElementsAre("frmUserManualIcon_0", "frmUserManualIcon_1"));
  EXPECT_THAT(captions, testing::UnorderedElementsAre(
                            testing::Pair((folder / "doc_shock/Quick-Start-1.pdf").string(), "Quick Start 1.pdf"),
                            testing::Pair((folder / "doc_shock/notes").string(), "notes")));
  EXPECT_THAT(UserManual({folder / "none", "1.0.0.0", "", ""}), testing::IsEmpty());
}

TEST(StartUp, TheDemoButtonIsVisibleOnlyWithItsRecording) {
  const TTempFolder folder;
  const TProgram program{folder.Path(), "1.0.0.0", "", ""};
  TCallLog log;
  TFakeControls controls(log);
  FormShow(program, controls);
  EXPECT_EQ(log.Take(), "hide barbtnlrgOpenDemoFile; ");
  std::filesystem::create_directories(folder / "data");
  WriteFile(folder / "data/demo.kshock", {1});
  FormShow(program, controls);
  EXPECT_EQ(log.Take(), "show barbtnlrgOpenDemoFile; ");
}

// A program with a settings folder.
class SettingsFolder : public testing::Test {
 protected:
  SettingsFolder() {
    FProgram.version = "1.0.0.0";
    FProgram.findSettingsFolder = [this] { return (FFolder.Path() / "").string(); };
  }
  void Touch(std::initializer_list<const char*> names) {
    for (const char* name : names) WriteFile(FFolder / name, {'x'});
  }
  // The calls that follow the welcome state.
  std::string Start() {
    FormCreate(FProgram, FMission, FRecent, FWindow.controls, FWindow.dialogs, FWindow.views);
    const std::string log = FWindow.log.Take();
    const std::string before = "disable dxBarReload; ";
    return log.substr(log.find(before) + before.size());
  }
  std::string Close() {
    FormClose(FProgram, {}, FRecent, FWindow.controls, FWindow.dialogs);
    return FWindow.log.Take();
  }

  TTempFolder FFolder;
  TProgram FProgram;
  TRecentDocuments FRecent;
  TShownMission FMission;
  TFakeWindow FWindow;
};

TEST_F(SettingsFolder, TheFirstStartSavesTheDesignedFilesAndLaterOnesLoadThem) {
  EXPECT_EQ(Start(),
            "save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; save layout default-layout.ini; "
            "recent 0 files 0 folders; ");
  FRecent.Add("/a/run.kshock");
  EXPECT_EQ(Close(), "save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; ") << "the user layout is not saved";
  EXPECT_TRUE(std::filesystem::exists(FFolder / "recentdocuments.ini"));

  Touch({"Company-Logo.png", "Report-Logo.png", "default-layout.ini", "user-layout.ini"});
  FRecent = {};
  const std::string log = Start();
  EXPECT_EQ(log,
            "settings; load logo 0 Company-Logo.png; load logo 1 Report-Logo.png; load layout user-layout.ini; hide" +
                kDockPanelNames + " dxDockPanelFilter; recent 1 files 1 folders; ");
}

TEST_F(SettingsFolder, WithoutAFolderNothingIsReadOrWritten) {
  FProgram.findSettingsFolder = [] { return std::string(); };
  EXPECT_EQ(Start(), "");
  EXPECT_EQ(Close(), "");
}

TEST_F(SettingsFolder, FailedStepsStopNoOtherAndShowOneMessage) {
  Touch({"Company-Logo.png", "recentdocuments.ini", "user-layout.ini"});
  FWindow.controls.Unusable = {"Company-Logo.png", "default-layout.ini"};
  const std::string in = (FFolder / "").string();
  EXPECT_EQ(
      Start(),
      "load logo 0 Company-Logo.png; save logo 1 Report-Logo.png; save layout default-layout.ini; "
      "load layout user-layout.ini; hide" +
          kDockPanelNames +
          " dxDockPanelFilter; recent 0 files 0 folders; box \"Not everything in the settings folder can be used.\" " +
          in + "Company-Logo.png: of no use\n" + in + "default-layout.ini: of no use\n" + in +
          "recentdocuments.ini: The file makes no sense.; ");
  EXPECT_EQ(Close(),
            "save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; box \"Not "
            "everything could be saved.\" " +
                in + "Company-Logo.png: of no use; ");
  EXPECT_TRUE(std::filesystem::exists(FFolder / "recentdocuments-kept.ini"));
}

TEST_F(SettingsFolder, ALayoutThatCannotBeSavedOrLoadedIsReported) {
  const std::string overview = "show" + kDockPanelNames + "; ";
  SaveUserLayout(FProgram, FMission, FWindow.controls, FWindow.dialogs);
  LoadUserLayout(FProgram, TView::Shock, FMission, FWindow.controls, FWindow.dialogs, FWindow.views);
  LoadDefaultLayout(FProgram, TView::Overview, FWindow.controls);
  const std::string folder = FFolder.Path().string();
  EXPECT_EQ(FWindow.log.Take(),
            "save layout user-layout.ini; notice \"Layout saved: " + (FFolder / "user-layout.ini\" in ").string() +
                folder + "; box \"There is no user layout yet.\" Save one first.; designed layout; " + overview);
  Touch({"default-layout.ini", "user-layout.ini"});
  FWindow.controls.Unusable = {"default-layout.ini", "user-layout.ini"};
  const std::string file = (FFolder / "user-layout.ini").string();
  SaveUserLayout(FProgram, FMission, FWindow.controls, FWindow.dialogs);
  LoadUserLayout(FProgram, TView::Shock, FMission, FWindow.controls, FWindow.dialogs, FWindow.views);
  LoadDefaultLayout(FProgram, TView::Overview, FWindow.controls);
  EXPECT_EQ(FWindow.log.Take(),
            "save layout user-layout.ini; box \"The layout is not saved.\" " + file +
                ": of no use; load layout user-layout.ini; box \"The user layout cannot be used.\" " + file +
                ": of no use; designed layout; load layout default-layout.ini; " + overview);
  FProgram.findSettingsFolder = [] { return std::string(); };
  SaveUserLayout(FProgram, FMission, FWindow.controls, FWindow.dialogs);
  LoadUserLayout(FProgram, TView::Shock, FMission, FWindow.controls, FWindow.dialogs, FWindow.views);
  EXPECT_THAT(FWindow.log.Take(), testing::Not(testing::HasSubstr(" layout user-layout.ini")));
}

}  // namespace
