#include "shell/uFileFlow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "analysis/uShockMetrics.h"
#include "shell/uFilterCommands.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"
#include "tests/support/uLoggingScreen.h"
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

std::string LogOfPreamble(const std::string& path) {
  return "disable" + kOpenButtons + "hide" + kDockPanelNames + kFileControlNames +
         " dxLayoutItemReportIsFiltered dxLayoutItemReportIsFilteredCover; front WellcomePanel; " +
         R"(text PnlLoadingMsg "Reading file data..."; text PnlLoadingDetail ""; progress maximum 9; progress 0; )" +
         R"(taskbar on; show pnlLoading; front pnlLoading; messages
text PnlLoadingDetail ")" +
         path + " · 0 blocks read\"; hide pnlDamaged; empty grids and charts; caption " +
         R"("Korvex165 ShockScope v1.0.0.0 [)" + path + "]\"; ";
}

const std::string kLogOfWelcome = "empty grids and charts; hide pnlLoading; taskbar off; enable" + kOpenButtons +
                                  "caption \"Korvex165 ShockScope [W64] v1.0.0.0\"; front WellcomePanel; hide" +
                                  kDockPanelNames + kFileControlNames + "; ";

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
    EXPECT_EQ(EventList.Count() + SensorList.Count(), 0U) << "nothing of a mission stays";
    EXPECT_FALSE(MissionData.bValid);
  }

  TTempFolder FFolder;
  std::string FThree = Save("three.kshock", ThreeEvents());
  TLoggingScreen FScreen;
  TQueueingPort FPort;
  TPortHandle FHandle{FPort};
  std::uint64_t FMemory = 1000000;  // bytes that a read may take
  TFileFlow FFlow{
      {"/opt/shockscope", "1.0.0.0", "/recordings", ""}, FHandle.Value(), [this] { return FMemory; }, FScreen};
};

TEST_F(FileFlow, ARecordingIsOpenedReadCompletedAndShownInThisOrder) {
  FFlow.Open(FThree);
  EXPECT_EQ(FScreen.Said(), LogOfPreamble(FThree));
  EXPECT_EQ(FFlow.State(), TFileFlow::TState::Reading);
  Finish();
  EXPECT_EQ(FScreen.Said(), "text PnlLoadingDetail \"" + FThree +
                                " · 1 blocks read\"; "
                                R"log(text PnlLoadingMsg "Loading the data..."; progress 1; messages
text PnlLoadingMsg "Populating Shock Event Dataset..."; progress 2; )log"
                                R"log(text PnlLoadingMsg "Loading Shock Events (1 of 3)"; messages
progress 3; progress 4; text PnlLoadingMsg "Populating the Shock Cards Dataset..."; )log"
                                R"log(text PnlLoadingMsg "Loading Shock Cards (1 of 3)"; messages
progress 5; text PnlLoadingMsg "Populating Sensors Dataset..."; )log"
                                R"log(text PnlLoadingMsg "Loading Sensors data (1 of 3)"; messages
text PnlLoadingMsg "Populating the Battery Dataset..."; )log"
                                R"log(text PnlLoadingMsg "Loading Battery data (1 of 3)"; messages
text PnlLoadingMsg "Populating the chart series..."; progress 6; messages
series of 3; text PnlLoadingMsg "Updating UI..."; progress 7; messages
update with 3; text PnlLoadingMsg "Preparing Report..."; progress 8; messages
report on 3; text PnlLoadingMsg "Finishing up..."; progress 9; messages
hide pnlLoading; taskbar off; enable)log" +
                                kOpenButtons +
                                "show btngrpView dxBarOverview dxBarLargeShockView dxBarReport"
                                " btngrpEventsExport btngrpSensorsExport btngrpTables; "
                                "enable barbtnTablesExportCSVBattery barbtnTablesExportXLSXBattery; "
                                "selected 1; position 1; "  // the most intense event
                                "ribbon suspended; hide dxBarShockPrint dxBarShockExport btngrpShock btngrpFilter"
                                " btngrpShockSeries btngrpShockTools btngrpShockExport btngrpShockImage"
                                " dxBarReportPrintOnly dxBarReportExportOnly; "
                                "show dxBarOverviewPrint dxBarOverviewExport btngrpEventsChart btngrpEventsImage"
                                " btngrpSensorsTools btngrpSensorsAxes btngrpSensorsImage"
                                " btngrpNavigator btngrpLayout btngrpAlarm btngrpFiltering; front MainOverviewPanel; "
                                "check actSetViewOverview; show dxBarShowSensorGrid dxBarShowBatteryGrid" +
                                kDockPanelNames +
                                "; ribbon resumed; repaint ChartAllSensors; recent 1 files 1 folders; "
                                "text lblStatusFile \"three.kshock · complete\"; ");
  EXPECT_EQ(FScreen.AtOnce, 6) << "the panel and five steps; rows are painted when it is time";
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(SensorList.StartTime, 45123.25);
  EXPECT_TRUE(MissionData.bValidStartTime);
  EXPECT_EQ(EventList.ChannelInfo[2].name, "ACC z");
  EXPECT_EQ(SensorList.ChannelInfo[2].name, "Battery");
}

TEST_F(FileFlow, ALoadWalksEverySampleOnce) {
  const std::size_t before = WalkedSamples();
  Open(FThree);
  ASSERT_EQ(FFlow.Mission().Summary.samples, 18U + 5U + 6U);
  EXPECT_EQ(WalkedSamples() - before, FFlow.Mission().Summary.samples);
}

TEST_F(FileFlow, TheDialogStartsInTheFolderOfTheCommandWithTheFilterOfTheSettings) {
  const std::string filters = "Korvex ShockScope File|*.kshock|Korvex Data File|*.kshock;*.korvex; ";
  FScreen.ChosenFile = FThree;
  FFlow.AskAndOpen();
  EXPECT_EQ(FScreen.Said(), "ask in /recordings for entry 1 of " + filters + LogOfPreamble(FThree));
  Finish();
  FScreen.Said();
  FFlow.Mission().Settings.fileFilter = 1;
  FFlow.AskAndOpenDemo();
  EXPECT_EQ(FScreen.Said(), "ask in /opt/shockscope/data/ for entry 2 of " + filters + LogOfPreamble(FThree));
}

TEST_F(FileFlow, ACancelledDialogLeavesTheShownFile) {
  Open(FThree);
  FFlow.SwitchView(TView::Report);
  FScreen.Said();
  FFlow.AskAndOpen();
  EXPECT_THAT(FScreen.Said(), testing::MatchesRegex("ask in [^;]*;[^;]*; "));
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(FFlow.View(), TView::Report);
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
}

TEST_F(FileFlow, WhatCannotBeShownIsSaidInOneBoxAfterTheWelcomeState) {
  TTestRecording large = TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"});
  for (int block = 0; block < 20; ++block) large.Data(std::vector<TTestRecord>(5000, {1, {1}}));
  const std::string unfit = "This file cannot be displayed.";
  const struct {
    std::string path, text, reason;
  } cases[] = {
      {Save("text.kshock", {'n', 'o'}), unfit, "It is no data file."},
      {Save("headless.kshock", TTestRecording().Creator()), unfit, "It has no mission header."},
      {Save("stranger.kshock", TTestRecording().Creator("x").MissionHeader(2, 2)), unfit, "Its creator is unknown."},
      {(FFolder / "missing.kshock").string(), "The file cannot be opened.", "cannot be opened"},
      {FFolder.Path().string(), "The file cannot be opened.", "cannot be opened"},
      {Save("large.kshock", large), "The file cannot be read.", "more memory than the 1 MB"},
  };
  for (const auto& [path, text, reason] : cases) {
    Open(FThree);
    FScreen.Said();
    Open(path);
    const std::string log = FScreen.Said();
    EXPECT_THAT(log, testing::StartsWith(LogOfPreamble(path)));
    EXPECT_THAT(log, HasSubstr(kLogOfWelcome + fmt::format("box \"{}\" {}\n", text, path)));
    EXPECT_THAT(log.substr(log.find("box ")), HasSubstr(reason));
    EXPECT_THAT(log.substr(log.find("box ") + 1), Not(HasSubstr("box ")));
    ExpectWelcome();
  }
}

TEST_F(FileFlow, ADamagedFileIsShownAndSaidSo) {
  TTestRecording recording = ThreeEvents();
  const std::size_t whole = recording.content.size();
  recording.Data({{1, {1, 1, 1, 1, 1, 1}}});
  recording.content.resize(whole + 20);  // the header of the second data block and half a record
  const std::string cut = Save("cut.kshock", recording);
  Open(cut);
  EXPECT_TRUE(FFlow.FileShown());
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
  const std::string log = FScreen.Said();
  EXPECT_THAT(log, HasSubstr("text lblStatusFile \"cut.kshock · damaged\"; "));
  EXPECT_THAT(log, HasSubstr(fmt::format("2 data blocks, {} bytes of content were read", whole + 20)));
  EXPECT_THAT(log, testing::EndsWith("show pnlDamaged; "));
}

TEST_F(FileFlow, CancelGoesBackToTheWelcomeStateWithoutABox) {
  using TState = TFileFlow::TState;
  // While the panel paints, while the file is read, at the first and at the last step of filling.
  const std::pair<TState, const char*> moments[] = {
      {TState::Reading, "front pnlLoading"}, {TState::Filling, "progress 1; "}, {TState::Filling, "progress 9; "}};
  for (const auto& [moment, last] : moments) {
    std::string before;
    FScreen.OnMessages = [&, state = moment, at = std::string(last)] {
      before += FScreen.Said();
      if (FFlow.State() == state && before.find(at) != std::string::npos) FFlow.Cancel();
    };
    Open(FThree);
    EXPECT_THAT(FScreen.Said(), testing::EndsWith(kLogOfWelcome));
    ExpectWelcome();
  }
  FScreen.OnMessages = [] {};
  FFlow.Open(FThree);
  FFlow.Cancel();
  Finish();
  EXPECT_THAT(FScreen.Said(), testing::EndsWith(kLogOfWelcome));
  ExpectWelcome();
  Open(FThree);
  EXPECT_TRUE(FFlow.FileShown()) << "an earlier Cancel is forgotten";
}

TEST_F(FileFlow, EachReadGetsTheMemoryThatThereIsByThen) {
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
      {"/opt/shockscope", "1.0.0.0", "", ""}, FHandle.Value(), [] { return TReadFileThread::kNoMemoryBound; }, FScreen);
  flow.Open(Save("long.kshock", recording));
  FScreen.Said();
  EXPECT_TRUE(flow.MayClose());
  while (!FPort.Empty()) flow.HandleMessage(*FPort.Take());
  EXPECT_EQ(FScreen.Said(), "") << "what the reader had posted finds nobody";
}

TEST_F(FileFlow, ACloseWhileTheWindowIsBusyIsDoneAfter) {
  for (const auto state : {TFileFlow::TState::Reading, TFileFlow::TState::Filling}) {
    TFileFlow flow(
        {"/opt/shockscope", "1.0.0.0", "", ""}, FHandle.Value(), [] { return std::uint64_t{1000000}; }, FScreen);
    int asked = 0;
    FScreen.OnMessages = [&] {
      if (flow.State() != state) return;
      ++asked;
      EXPECT_FALSE(flow.MayClose());
    };
    flow.Open(FThree);
    while (flow.Busy()) flow.HandleMessage(FPort.Take().value());
    EXPECT_EQ(asked, 1) << "nothing more is filled";
    EXPECT_THAT(FScreen.Said(), testing::EndsWith(kLogOfWelcome + "close window; "));
    EXPECT_TRUE(flow.MayClose());
    EXPECT_TRUE(FPort.Empty());
  }
}

TEST_F(FileFlow, WhileBusyEveryCommandIsRefused) {
  Open(FThree);
  const std::string undisturbed = FScreen.Said();
  const std::string other = Save("other.kshock", {'n', 'o'});
  FScreen.ChosenFile = other;
  int disturbed = 0;
  const auto disturb = [&] {
    ++disturbed;
    FFlow.Open(other);
    FFlow.Reload();
    FFlow.AskAndOpen();
    FFlow.AskAndOpenDemo();
    FFlow.SwitchView(TView::Report);
  };
  FScreen.OnMessages = disturb;
  FFlow.Open(FThree);
  disturb();
  Finish();
  EXPECT_EQ(FScreen.Said(), undisturbed);
  EXPECT_EQ(disturbed, 11) << "ten times while the window handles its messages";
  EXPECT_EQ(FFlow.FileName(), FThree);
}

TEST_F(FileFlow, AFailureBeforeTheReaderExistsLeavesAUsableWindow) {
  FScreen.OnMessages = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(FFlow.Open(FThree), std::runtime_error);
  EXPECT_THAT(FScreen.Said(), testing::EndsWith(kLogOfWelcome));
  EXPECT_TRUE(FFlow.MayClose());
  FScreen.OnMessages = [] {};
  Open(FThree);
  EXPECT_TRUE(FFlow.FileShown());
}

TEST_F(FileFlow, ReloadKeepsTheFilterAnOpenSwitchesItOff) {
  Open(FThree);
  TEventFilter filter;
  filter.ranges[0].to = 9;
  ChangeFilter(FFlow.Mission(), filter, FScreen);
  SelectEvent(FFlow.Mission(), 2, FScreen);
  FFlow.Reload();
  Finish();
  EXPECT_THAT(FScreen.Said(), HasSubstr("update with 2; "));
  EXPECT_TRUE(FFlow.Mission().FilterActive);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 2U);

  filter.ranges[0].to = 1;
  ChangeFilter(FFlow.Mission(), filter, FScreen);
  FScreen.Closed = {"dxDockPanelFilter"};
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 0U);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, std::nullopt);
  EXPECT_THAT(FScreen.Said(), Not(HasSubstr("show dxDockPanelFilter")));

  FScreen.Closed = {};
  Open(FThree);
  EXPECT_FALSE(FFlow.Mission().FilterActive);
  EXPECT_EQ(FFlow.Mission().Filter, filter) << "its conditions stay";
  EXPECT_EQ(FFlow.Mission().CLDS.RecordCount(), 3U);
  FScreen.Said();
  FFlow.Reload();
  Finish();
  EXPECT_THAT(FScreen.Said(), HasSubstr("show dxDockPanelFilter; ")) << "the editor was open";
}

TEST_F(FileFlow, ReloadKeepsTheBandUnlessItWasOverEverything) {
  FScreen.Data = TTimeSpan{0, 10};
  Open(FThree);
  const auto reloadedInto = [this](const TTimeSpan& data) {
    FFlow.Reload();
    FScreen.Data = data;
    Finish();
    return FFlow.Mission().Band;
  };
  EXPECT_EQ(reloadedInto({0, 12}), (TTimeSpan{0, 12}));
  NavigatorBandResizing(FFlow.Mission(), {3, 7}, FScreen);
  EXPECT_EQ(reloadedInto({0, 12}), (TTimeSpan{3, 7}));
  EXPECT_THAT(FScreen.Said(),
              HasSubstr("Chart20 shows 3-7; unsynced none; companions of 3-7; repaint Chart1; selected"));
  EXPECT_EQ(reloadedInto({0, 5}), (TTimeSpan{3, 5}));
  Open(FThree);
  EXPECT_EQ(FFlow.Mission().Band, (TTimeSpan{0, 5})) << "another recording is seen whole";
}

TEST_F(FileFlow, ReloadKeepsViewAndSelectionAnOpenDoesNot) {
  FFlow.Reload();
  EXPECT_EQ(FScreen.Said(), "") << "there is nothing to reload";
  Open(FThree);
  FFlow.SwitchView(TView::Shock);
  ShockGridTitleClick(FFlow.Mission(), "ToT total", FScreen);
  SelectEvent(FFlow.Mission(), 2, FScreen);
  FScreen.Closed = {"dxDockPanelNavigator", "dxDockPanelFilter"};
  FFlow.Reload();
  Finish();
  EXPECT_EQ(FFlow.View(), TView::Shock);
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 2U);
  EXPECT_EQ(FFlow.Mission().CLDS.IndexName(), "DBCDesc") << "the order stays";
  EXPECT_THAT(
      FScreen.Said(),
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

  SelectEvent(FFlow.Mission(), 2, FScreen);
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
