#include "shell/uFileFlow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "analysis/uShockMetrics.h"
#include "base/uFiles.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uThreeEvents.h"

using testing::HasSubstr;
using testing::Not;

namespace {

// Keeps what the reader posts until the test takes it.
class TQueueingPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override {
    const std::lock_guard lock(FMutex);
    FMessages.push_back(message);
    FPosted.notify_one();
  }
  // Nothing when a minute brings nothing.
  std::optional<TMessage> Take() {
    std::unique_lock lock(FMutex);
    if (!FPosted.wait_for(lock, std::chrono::minutes(1), [this] { return !FMessages.empty(); })) return std::nullopt;
    const TMessage message = FMessages.front();
    FMessages.pop_front();
    return message;
  }
  bool Empty() {
    const std::lock_guard lock(FMutex);
    return FMessages.empty();
  }

 private:
  std::mutex FMutex;
  std::condition_variable FPosted;
  std::deque<TMessage> FMessages;
};

const std::string kOpenButtons = " dxBarOpenNewFile barbtnlrgOpenDemoFile dxBarReload; ";

// The end of every log after which the welcome panel is shown.
const std::string kWelcome = "empty grids and charts; hide pnlLoading; taskbar off; enable" + kOpenButtons +
                             "caption \"Korvex165 ShockScope [W64] v1.0.0.0\"; front WellcomePanel; hide" +
                             kDockPanelNames + "; groups of no file; hide dxDockPanelFilter; ";

// The log has these calls, in this order; others may stand between them.
void ExpectInOrder(const std::string& log, std::initializer_list<std::string> calls) {
  std::size_t from = 0;
  for (const std::string& call : calls) {
    const std::size_t found = log.find(call, from);
    ASSERT_NE(found, std::string::npos) << call << " is not after the calls before it in\n" << log;
    from = found + call.size();
  }
}

class FileFlow : public testing::Test {
 protected:
  std::string Save(const std::string& name, const TBytes& stream) {
    WriteFile(FFolder / name, stream);
    return (FFolder / name).string();
  }
  std::string Save(const std::string& name, const TTestRecording& recording) {
    return Save(name, Deflated(recording.content));
  }
  // Handles messages until the read and what follows have ended.
  void Finish() {
    while (FFlow.Busy()) {
      const auto message = FPort.Take();
      ASSERT_TRUE(message);
      FFlow.HandleMessage(*message);
    }
  }
  void Open(const std::string& path) {
    FFlow.Open(path);
    Finish();
  }
  void ExpectWelcome() {
    EXPECT_EQ(FFlow.State(), TFileFlow::TState::Welcome);
    EXPECT_EQ(FFlow.Mission().Tables.Events.RecordCount(), 0U);
    EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 0U);
    EXPECT_EQ(FFlow.Mission().SelectedEvent, std::nullopt);
    EXPECT_EQ(EventList.Count() + SensorList.Count(), 0U) << "a failed open frees the memory";
    EXPECT_FALSE(MissionData.bValid);
  }

  TTempFolder FFolder;
  std::string FThree = Save("three.kshock", ThreeEvents());
  TFakeWindow FWindow;
  TQueueingPort FPort;
  TPortHandle FHandle{FPort};
  std::uint64_t FMemory = 1000000;  // bytes that a read may take
  TFileFlow FFlow{{"/opt/shockscope", "1.0.0.0", "/recordings", ""},
                  FHandle.Value(),
                  [this] { return FMemory; },
                  FWindow.controls,
                  FWindow.dialogs,
                  FWindow.views};
};

TEST_F(FileFlow, OpeningEmptiesTheWindowAndShowsTheLoadingPanelInThisOrder) {
  Open(FThree);
  ASSERT_EQ(EventList.Count(), 3U);
  FWindow.log.Take();
  FWindow.views.OnEmpty = [&] {
    EXPECT_EQ(EventList.Count(), 3U) << "the model is cleared later";
    EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
  };
  FFlow.Open(FThree);
  EXPECT_EQ(FWindow.log.Take(),
            "disable" + kOpenButtons + "hide" + kDockPanelNames +
                "; groups of no file; hide dxDockPanelFilter dxLayoutItemReportIsFiltered "
                "dxLayoutItemReportIsFilteredCover; front WellcomePanel; text PnlLoadingMsg \"Reading file data...\"; "
                "text PnlLoadingDetail \"\"; progress maximum 9; progress 0; taskbar on; show pnlLoading; "
                "front pnlLoading; messages\ntext PnlLoadingDetail \"" +
                FThree +
                " · 0 blocks read\"; hide pnlDamaged; empty grids and charts; "
                "caption \"Korvex165 ShockScope v1.0.0.0 [" +
                FThree + "]\"; ");
  EXPECT_EQ(FFlow.State(), TFileFlow::TState::Reading);
}

TEST_F(FileFlow, AFinishedReadFillsTheViewsStepByStepAndEndsInTheOverview) {
  FFlow.Open(FThree);
  FWindow.log.Take();
  Finish();
  const std::string log = FWindow.log.Take();
  ExpectInOrder(log, {" · 1 blocks read", "\"Loading the data...\"; progress 1; messages\n",
                      "\"Loading Shock Events (1 of 3)\"; messages\n", "\"Loading Battery data (1 of 3)\"; messages\n",
                      "\"Populating the chart series...\"; progress 6; messages\nseries of 3; ",
                      "\"Updating UI...\"; progress 7; messages\nupdate with 3; ",
                      "\"Preparing Report...\"; progress 8; messages\nreport on 3; ",
                      "\"Finishing up...\"; progress 9; messages\nhide pnlLoading; taskbar off; enable" + kOpenButtons,
                      "selected 1; position 1; ", "groups of overview; front MainOverviewPanel; ",
                      "recent 1 files 1 folders; ", "text lblStatusFile \"three.kshock · complete\"; "});
  EXPECT_EQ(FFlow.Mission().SelectedEvent, FFlow.Mission().Summary.mostIntense);
  EXPECT_EQ(FWindow.controls.AtOnce, 6) << "the panel and five steps; rows are painted when it is time";
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(SensorList.StartTime, 45123.25);
  EXPECT_TRUE(MissionData.bValidStartTime);
  EXPECT_EQ(EventList.ChannelInfo[2].name, "ACC z");
  EXPECT_EQ(SensorList.ChannelInfo[2].name, "Battery");
}

TEST_F(FileFlow, TheRecentDocumentsSayTheTitleUnlessItIsBlank) {
  TTestRecording untitled = ThreeEvents();
  const auto found = std::ranges::search(untitled.content, std::string_view("fstand"));
  ASSERT_FALSE(found.empty());
  std::fill(found.begin() - 3, found.end(), ' ');
  Open(FThree);
  Open(Save("untitled.kshock", untitled));
  const std::vector<TRecentEntry>& files = FFlow.Recent().Files.Entries();
  EXPECT_THAT(files.at(0).About, testing::MatchesRegex("3 events · peak 20\\.?0* g"));
  EXPECT_THAT(files.at(1).About, testing::MatchesRegex("3 events · peak 20\\.?0* g · Prüfstand"));
}

TEST_F(FileFlow, ALoadWalksEverySampleOnce) {
  const std::size_t before = WalkedSamples();
  Open(FThree);
  ASSERT_EQ(FFlow.Mission().Summary.samples, 18U + 5U + 6U);
  EXPECT_EQ(WalkedSamples() - before, FFlow.Mission().Summary.samples);
}

TEST_F(FileFlow, TheDialogStartsInTheFolderOfTheCommandWithTheFilterOfTheSettings) {
  const std::string filters = "Korvex ShockScope File|*.kshock|Korvex Data File|*.kshock;*.korvex; ";
  FWindow.dialogs.ChosenFile = FThree;
  FFlow.AskAndOpen();
  EXPECT_THAT(FWindow.log.Take(), testing::StartsWith("ask in /recordings for entry 1 of " + filters + "disable"));
  Finish();
  FWindow.log.Take();
  FFlow.Mission().Settings.fileFilter = 1;
  FFlow.AskAndOpenDemo();
  EXPECT_THAT(FWindow.log.Take(), testing::StartsWith("ask in " + Utf8FromPath("/opt/shockscope/data/") +
                                                      " for entry 2 of " + filters + "disable"));
}

TEST_F(FileFlow, ACancelledDialogChangesNothing) {
  Open(FThree);
  FFlow.SwitchView(TView::Report);
  FWindow.log.Take();
  FFlow.AskAndOpen();
  EXPECT_THAT(FWindow.log.Take(), testing::EndsWith("|*.kshock;*.korvex; "));
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(FFlow.View(), TView::Report);
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
}

TEST_F(FileFlow, AFileThatCannotBeShownGivesOneMessageInTheWelcomeState) {
  TTestRecording large = TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"});
  for (int block = 0; block < 20; ++block) large.Data(std::vector<TTestRecord>(5000, {1, {1}}));
  const std::string unfit = "This file cannot be displayed.";
  const struct {
    std::string path, text, reason;
  } cases[] = {
      {Save("text.kshock", {'n', 'o'}), unfit, "It is no data file."},
      {Save("headless.kshock", TTestRecording().Creator()), unfit, "It has no mission header."},
      {Save("stranger.kshock", TTestRecording().Creator("x").MissionHeader(2, 2)), unfit, "Its creator is unknown."},
      {(FFolder / "missing.kshock").string(), "The file cannot be opened.", "No such file or directory."},
      {FFolder.Path().string(), "The file cannot be opened.", "it is no regular file."},
      {Save("large.kshock", large), "The file cannot be read.", "more memory than the 1 MB"},
  };
  for (const auto& [path, text, reason] : cases) {
    Open(FThree);
    FWindow.log.Take();
    Open(path);
    const std::string log = FWindow.log.Take();
    ExpectInOrder(log, {path + "]\"; ", kWelcome + fmt::format("box \"{}\" {}\n", text, path), reason});
    EXPECT_THAT(log.substr(log.find("box ") + 1), Not(HasSubstr("box ")));
    ExpectWelcome();
  }
}

TEST_F(FileFlow, ADamagedFileIsShownWithAWarning) {
  TTestRecording recording = ThreeEvents();
  const std::size_t whole = recording.content.size();
  recording.Data({{1, {1, 1, 1, 1, 1, 1}}});
  recording.content.resize(whole + 20);  // the header of the second data block and half a record
  const std::string cut = Save("cut.kshock", recording);
  Open(cut);
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
  const std::string log = FWindow.log.Take();
  EXPECT_THAT(log, HasSubstr("text lblStatusFile \"cut.kshock · damaged\"; "));
  EXPECT_THAT(log, HasSubstr(fmt::format("2 data blocks, {} bytes of content were read", whole + 20)));
  EXPECT_THAT(log, testing::EndsWith("show pnlDamaged; "));
}

TEST_F(FileFlow, CancelReturnsToTheWelcomeStateAndSaysSo) {
  const std::string cancelled = kWelcome + "notice \"Reading cancelled\"; ";
  using TState = TFileFlow::TState;
  // While the panel paints, while the file is read, at the first and at the last step of filling.
  const std::pair<TState, const char*> moments[] = {
      {TState::Reading, "front pnlLoading"}, {TState::Filling, "progress 1; "}, {TState::Filling, "progress 9; "}};
  for (const auto& [moment, last] : moments) {
    std::string before;
    FWindow.controls.OnMessages = [&, state = moment, at = std::string(last)] {
      before += FWindow.log.Take();
      if (FFlow.State() == state && before.find(at) != std::string::npos) FFlow.Cancel();
    };
    Open(FThree);
    EXPECT_THAT(FWindow.log.Take(), testing::EndsWith(cancelled));
    ExpectWelcome();
  }
  FWindow.controls.OnMessages = [] {};
  FFlow.Open(FThree);
  FFlow.Cancel();
  Finish();
  EXPECT_THAT(FWindow.log.Take(), testing::EndsWith(cancelled));
  ExpectWelcome();
  Open(FThree);
  EXPECT_TRUE(FFlow.FileShown()) << "an earlier Cancel is forgotten";
}

TEST_F(FileFlow, TheMemoryBoundIsAskedForEachRead) {
  FMemory = 1000;
  Open(FThree);
  ExpectWelcome();
  FMemory = 1000000;
  Open(FThree);
  EXPECT_TRUE(FFlow.FileShown());
}

TEST_F(FileFlow, ClosingWhileReadingEndsTheReader) {
  TTestRecording recording = TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"});
  for (int block = 0; block < 100; ++block) recording.Data(std::vector<TTestRecord>(5000, {1, {1}}));
  TFileFlow flow(
      {"/opt/shockscope", "1.0.0.0", "", ""}, FHandle.Value(), [] { return TReadFileThread::kNoMemoryBound; },
      FWindow.controls, FWindow.dialogs, FWindow.views);
  flow.Open(Save("long.kshock", recording));
  FWindow.log.Take();
  EXPECT_TRUE(flow.MayClose());
  while (!FPort.Empty()) flow.HandleMessage(*FPort.Take());
  EXPECT_EQ(FWindow.log.Take(), "") << "messages of the ended reader are ignored";
}

TEST_F(FileFlow, ACloseWhileBusyIsDoneAfterwards) {
  for (const auto state : {TFileFlow::TState::Reading, TFileFlow::TState::Filling}) {
    TFileFlow flow(
        {"/opt/shockscope", "1.0.0.0", "", ""}, FHandle.Value(), [] { return std::uint64_t{1000000}; },
        FWindow.controls, FWindow.dialogs, FWindow.views);
    int asked = 0;
    FWindow.controls.OnMessages = [&] {
      if (flow.State() != state) return;
      ++asked;
      EXPECT_FALSE(flow.MayClose());
    };
    flow.Open(FThree);
    while (flow.Busy()) flow.HandleMessage(FPort.Take().value());
    EXPECT_EQ(asked, 1) << "nothing more is filled";
    EXPECT_THAT(FWindow.log.Take(), testing::EndsWith(kWelcome + "close window; "));
    EXPECT_TRUE(flow.MayClose());
    EXPECT_TRUE(FPort.Empty());
  }
}

TEST_F(FileFlow, WhileBusyEveryCommandIsRefused) {
  Open(FThree);
  const std::string undisturbed = FWindow.log.Take();
  const std::string other = Save("other.kshock", {'n', 'o'});
  FWindow.dialogs.ChosenFile = other;
  int disturbed = 0;
  const auto disturb = [&] {
    ++disturbed;
    FFlow.Open(other);
    FFlow.Reload();
    FFlow.AskAndOpen();
    FFlow.AskAndOpenDemo();
    FFlow.SwitchView(TView::Report);
  };
  FWindow.controls.OnMessages = disturb;
  FFlow.Open(FThree);
  disturb();
  Finish();
  EXPECT_EQ(FWindow.log.Take(), undisturbed);
  EXPECT_EQ(disturbed, 11) << "ten times while the window handles its messages";
  EXPECT_EQ(FFlow.FileName(), FThree);
}

TEST_F(FileFlow, AFailureBeforeTheReaderExistsLeavesAUsableWindow) {
  FWindow.controls.OnMessages = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(FFlow.Open(FThree), std::runtime_error);
  EXPECT_THAT(FWindow.log.Take(), testing::EndsWith(kWelcome));
  EXPECT_TRUE(FFlow.MayClose());
  FWindow.controls.OnMessages = [] {};
  Open(FThree);
  EXPECT_TRUE(FFlow.FileShown());
}

TEST_F(FileFlow, ReloadKeepsTheFilterAndOpenSwitchesItOff) {
  Open(FThree);
  TEventFilter filter;
  filter.ranges[0].to = 9;
  ChangeFilter(FFlow.Mission(), filter, FWindow.views);
  SelectEvent(FFlow.Mission(), 2, FWindow.views);
  FFlow.Reload();
  Finish();
  EXPECT_THAT(FWindow.log.Take(), HasSubstr("update with 2; "));
  EXPECT_TRUE(FFlow.Mission().FilterActive);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 2U);

  filter.ranges[0].to = 1;
  ChangeFilter(FFlow.Mission(), filter, FWindow.views);
  FWindow.controls.Closed = {"dxDockPanelFilter"};
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 0U);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, std::nullopt);
  EXPECT_THAT(FWindow.log.Take(), Not(HasSubstr("show dxDockPanelFilter")));

  FWindow.controls.Closed = {};
  Open(FThree);
  EXPECT_FALSE(FFlow.Mission().FilterActive);
  EXPECT_EQ(FFlow.Mission().Filter, filter) << "its conditions stay";
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
  FWindow.log.Take();
  FFlow.Reload();
  Finish();
  EXPECT_THAT(FWindow.log.Take(), HasSubstr("show dxDockPanelFilter; ")) << "the editor was open";
}

TEST_F(FileFlow, ReloadKeepsTheBandUnlessItWasTheWholeRecording) {
  FWindow.views.Data = TTimeSpan{0, 10};
  Open(FThree);
  const auto reloadedInto = [this](const TTimeSpan& data) {
    FFlow.Reload();
    FWindow.views.Data = data;
    Finish();
    return FFlow.Mission().Band;
  };
  EXPECT_EQ(reloadedInto({0, 12}), (TTimeSpan{0, 12}));
  NavigatorBandResizing(FFlow.Mission(), {3, 7}, FWindow.views);
  EXPECT_EQ(reloadedInto({0, 12}), (TTimeSpan{3, 7}));
  EXPECT_THAT(FWindow.log.Take(),
              HasSubstr("Chart20 shows 3-7; unsynced none; companions of 3-7; repaint Chart1; selected"));
  EXPECT_EQ(reloadedInto({0, 5}), (TTimeSpan{3, 5}));
  Open(FThree);
  EXPECT_EQ(FFlow.Mission().Band, (TTimeSpan{0, 5})) << "another recording is seen whole";
}

TEST_F(FileFlow, ReloadKeepsViewAndSelectionAndOpenDoesNot) {
  FFlow.Reload();
  EXPECT_EQ(FWindow.log.Take(), "") << "there is nothing to reload";
  Open(FThree);
  FFlow.SwitchView(TView::Shock);
  ShockGridTitleClick(FFlow.Mission(), "ToT total", FWindow.views);
  SelectEvent(FFlow.Mission(), 2, FWindow.views);
  FWindow.controls.Closed = {"dxDockPanelNavigator", "dxDockPanelFilter"};
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.View(), TView::Shock);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 2U);
  EXPECT_EQ(FFlow.Mission().CLDS.IndexName(), "DBCDesc") << "the order stays";
  EXPECT_THAT(
      FWindow.log.Take(),
      HasSubstr("position 2; grid DBGrid2; grid DBGrid8; hide dxDockPanelNavigator; recent 1 files 1 folders; text"));

  Save("three.kshock", TTestRecording().Creator().MissionHeader(2, 2));
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.View(), TView::Shock);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, std::nullopt) << "the event is gone";

  Save("three.kshock", ThreeEvents());
  Open(FThree);
  EXPECT_EQ(FFlow.View(), TView::Overview);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 1U);

  SelectEvent(FFlow.Mission(), 2, FWindow.views);
  Save("three.kshock", {'n', 'o'});
  FFlow.Reload();
  Finish();
  ExpectWelcome();
  Save("three.kshock", ThreeEvents());
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 1U) << "what failed to come back is forgotten";
}

}  // namespace
