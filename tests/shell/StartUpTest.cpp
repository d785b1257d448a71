#include "shell/uStartUp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/uLayoutCommands.h"
#include "tests/support/uLoggingScreen.h"
#include "tests/support/uTestRecording.h"

namespace {

TEST(StartUp, TheWindowIsPreparedInThisOrder) {
  TLoggingScreen screen;
  TRecentDocuments recent;
  FormCreate({"/opt/none", "1.0.0.0", "/recordings", "ignored.kshock"}, recent, screen);
  EXPECT_EQ(screen.Said(),
            "title \"Korvex165 ShockScope \"; caption \"Korvex165 ShockScope [W64] v1.0.0.0\"; text lblCardToTTotal "
            "\"ToT total\"; text lblCardIoTTotal \"IoT total\"; text lblCardToTMax \"ToT max\"; text lblCardIoTMax "
            "\"IoT max\"; dialog folder /recordings; front WellcomePanel; hide" +
                kDockPanelNames + kFileControlNames + "; disable dxBarReload; prepare sensors axes; ");
}

TEST(StartUp, EveryPlainFileOfTheManualThatIsNotHiddenGetsAnIconBetweenCaptionAndCards) {
  const TTempFolder folder;
  std::filesystem::create_directories(folder / "doc_shock/a-folder");
  for (const char* name : {"Quick-Start-1.pdf", "notes", ".directory"}) WriteFile(folder / "doc_shock" / name, {1});
  TLoggingScreen screen;
  TRecentDocuments recent;
  FormCreate({folder.Path(), "1.0.0.0", "", ""}, recent, screen);
  const std::string log = screen.Said();
  // The order is the folder's own.
  const bool notesFirst = log.find("_0 \"notes\"") != std::string::npos;
  const auto icon = [&folder](int index, const std::string& caption, const std::string& name) {
    return fmt::format("manual frmUserManualIcon_{} \"{}\" {}; ", index, caption,
                       (folder / "doc_shock" / name).string());
  };
  const std::string notes = icon(notesFirst ? 0 : 1, "notes", "notes");
  const std::string start = icon(notesFirst ? 1 : 0, "Quick Start 1.pdf", "Quick-Start-1.pdf");
  EXPECT_THAT(log, testing::HasSubstr("v1.0.0.0\"; " + (notesFirst ? notes + start : start + notes) + "text lblCard"));
  EXPECT_THAT(log, testing::Not(testing::HasSubstr("folder\" ")));
}

TEST(StartUp, TheDemoButtonIsThereWithItsRecordingOnly) {
  const TTempFolder folder;
  const TProgram program{folder.Path(), "1.0.0.0", "", ""};
  const std::string before = "skin LayoutControlColor FFFFFF; skin Common.GroupPanelNoBorder FFFFFF; refresh look; ";
  const std::string after = " barbtnlrgOpenDemoFile; set up sensors axes; ";
  TLoggingScreen screen;
  FormShow(program, screen);
  EXPECT_EQ(screen.Said(), before + "hide" + after);
  std::filesystem::create_directories(folder / "data");
  WriteFile(folder / "data/demo.kshock", {1});
  FormShow(program, screen);
  EXPECT_EQ(screen.Said(), before + "show" + after);
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
  // What the start does with the settings folder.
  std::string Start() {
    FormCreate(FProgram, FRecent, FScreen);
    const std::string log = FScreen.Said();
    const std::string before = "prepare sensors axes; ";
    return log.substr(log.find(before) + before.size());
  }
  std::string Close() {
    FormClose(FProgram, {}, FRecent, FScreen);
    return FScreen.Said();
  }

  TTempFolder FFolder;
  TProgram FProgram;
  TRecentDocuments FRecent;
  TLoggingScreen FScreen;
};

TEST_F(SettingsFolder, TheFirstStartLeavesFilesToReplaceAndLaterOnesLoadThem) {
  EXPECT_EQ(Start(),
            "save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; save layout default-layout.ini; "
            "recent 0 files 0 folders; ");
  FRecent.Add("/a/run.kshock");
  EXPECT_EQ(Close(), "free point absorption; save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; ")
      << "the user layout is not saved";
  EXPECT_TRUE(std::filesystem::exists(FFolder / "recentdocuments.ini"));

  Touch({"Company-Logo.png", "Report-Logo.png", "default-layout.ini", "user-layout.ini"});
  FRecent = {};
  const std::string log = Start();
  EXPECT_EQ(log,
            "settings; load logo 0 Company-Logo.png; load logo 1 Report-Logo.png; load layout user-layout.ini; hide" +
                kDockPanelNames + " dxDockPanelFilter; recent 1 files 1 folders; ");
}

TEST_F(SettingsFolder, WithoutOneNothingIsReadOrWritten) {
  FProgram.findSettingsFolder = [] { return std::string(); };
  EXPECT_EQ(Start(), "");
  EXPECT_EQ(Close(), "free point absorption; ");
}

TEST_F(SettingsFolder, AStepThatFailsCostsNoOtherAndAllOfThemOneMessage) {
  Touch({"Company-Logo.png", "recentdocuments.ini", "user-layout.ini"});
  FScreen.Unusable = {"Company-Logo.png", "default-layout.ini"};
  const std::string folder = FFolder.Path().string();
  EXPECT_EQ(
      Start(),
      "load logo 0 Company-Logo.png; save logo 1 Report-Logo.png; save layout default-layout.ini; "
      "load layout user-layout.ini; hide" +
          kDockPanelNames +
          " dxDockPanelFilter; recent 0 files 0 folders; box \"Not everything in the settings folder can be used.\" " +
          folder + "/Company-Logo.png: of no use\n" + folder + "/default-layout.ini: of no use\n" + folder +
          "/recentdocuments.ini: The file makes no sense.; ");
  EXPECT_EQ(Close(),
            "free point absorption; save logo 0 Company-Logo.png; save logo 1 Report-Logo.png; box \"Not "
            "everything could be saved.\" " +
                folder + "/Company-Logo.png: of no use; ");
  EXPECT_TRUE(std::filesystem::exists(FFolder / "recentdocuments-kept.ini"));
}

TEST_F(SettingsFolder, TheLayoutCommandsSayWhatTheyCannotDo) {
  const std::string overview = "show" + kDockPanelNames + "; ";
  SaveUserLayout(FProgram, FScreen);
  LoadUserLayout(FProgram, TView::Shock, FScreen);
  LoadDefaultLayout(FProgram, TView::Overview, FScreen);
  EXPECT_EQ(FScreen.Said(),
            "save layout user-layout.ini; box \"There is no user layout yet.\" Save one first.; designed layout; " +
                overview);
  Touch({"default-layout.ini", "user-layout.ini"});
  FScreen.Unusable = {"default-layout.ini", "user-layout.ini"};
  const std::string file = (FFolder / "user-layout.ini").string();
  SaveUserLayout(FProgram, FScreen);
  LoadUserLayout(FProgram, TView::Shock, FScreen);
  LoadDefaultLayout(FProgram, TView::Overview, FScreen);
  EXPECT_EQ(FScreen.Said(), "save layout user-layout.ini; box \"The layout is not saved.\" " + file +
                                ": of no use; load layout user-layout.ini; box \"The user layout cannot be used.\" " +
                                file + ": of no use; designed layout; load layout default-layout.ini; " + overview);
  FProgram.findSettingsFolder = [] { return std::string(); };
  SaveUserLayout(FProgram, FScreen);
  LoadUserLayout(FProgram, TView::Shock, FScreen);
  EXPECT_THAT(FScreen.Said(), testing::Not(testing::HasSubstr(" layout user-layout.ini")));
}

}  // namespace
