#include "shell/uStartUp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/uLoggingScreen.h"
#include "tests/support/uTestRecording.h"

namespace {

TEST(StartUp, TheWindowIsPreparedInThisOrder) {
  TLoggingScreen screen;
  FormCreate({"/opt/none", "1.0.0.0", "/recordings", "ignored.kshock"}, screen);
  EXPECT_EQ(screen.Said(),
            "title \"Korvex165 ShockScope \"; caption \"Korvex165 ShockScope [W64] v1.0.0.0\"; text lblCardToTTotal "
            "\"ToT total\"; text lblCardIoTTotal \"IoT total\"; text lblCardToTMax \"ToT max\"; text lblCardIoTMax "
            "\"IoT max\"; dialog folder /recordings; front WellcomePanel; hide" +
                kDockPanelNames + kFileControlNames + "; disable dxBarReload; prepare sensors axes; ");
}

TEST(StartUp, EveryPlainFileOfTheManualGetsAnIconBetweenCaptionAndCards) {
  const TTempFolder folder;
  std::filesystem::create_directories(folder / "doc_shock/a-folder");
  for (const char* name : {"Quick-Start-1.pdf", "notes"}) WriteFile(folder / "doc_shock" / name, {1});
  TLoggingScreen screen;
  FormCreate({folder.Path(), "1.0.0.0", "", ""}, screen);
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

}  // namespace
