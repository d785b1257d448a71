#include "shell/uExportCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "base/uFiles.h"
#include "shell/uOrderingCommands.h"
#include "shell/uViewSwitch.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uThreeEvents.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

using TCommand = void (TExportCommands::*)();
using E = TExportCommands;

class TEndPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override {
    const std::lock_guard lock(FMutex);
    FLast = message;
    FPosted.notify_one();
  }
  TMessage WaitForEnd() {
    std::unique_lock lock(FMutex);
    FPosted.wait(lock, [this] { return FLast.Msg == kReadFileMessage && FLast.wParam != kReadProgress; });
    return std::exchange(FLast, {});
  }

 private:
  std::mutex FMutex;
  std::condition_variable FPosted;
  TMessage FLast{};
};

const std::string kPanels = kDockPanelNames + " dxDockPanelFilter";
const std::string kOutOfReach = " Ribbon WellcomePanel MainPanel; ";
const std::string kHidden = "enable" + kOutOfReach + "hide pnlLoading; taskbar off; ";
const std::string kCsvShown = "text PnlLoadingMsg \"Creating CSV exports...\"; progress 0; progress maximum ";
const std::string kCsvInFront =
    "; taskbar on; front pnlLoading; show pnlLoading; hide" + kPanels + "; disable" + kOutOfReach + "messages\n";

class ExportCommands : public testing::Test {
 protected:
  ExportCommands() {
    WriteFile(FFolder / "three.kshock", Deflated(ThreeEvents().content));
    fs::create_directory(FTo);
    FFlow.Open((FFolder / "three.kshock").string());
    FFlow.HandleMessage(FPort.WaitForEnd());
    MissionData.sID = "A17";
    MissionData.rec_starttime = 45123.25;
    FWindow.log.Take();
  }
  // The calls of a command whose dialog gets this answer.
  std::string Run(TCommand command, const fs::path& chosen) {
    FWindow.dialogs.ChosenFile = chosen.string();
    (FCommands.*command)();
    return FWindow.log.Take();
  }
  std::string RunIn(TCommand command, std::string_view name) { return Run(command, FTo / name); }
  // Leaves event 0, of 20 g, and event 1, of 9 g.
  void HideEventTwo() {
    TEventFilter filter;
    filter.ranges[0].from = 6;
    ChangeFilter(FFlow.Mission(), filter, FWindow.views);
    FWindow.log.Take();
  }
  std::vector<std::string> Written() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(FTo)) {
      if (!entry.is_directory()) names.push_back(fs::relative(entry.path(), FTo).generic_string());
    }
    std::ranges::sort(names);
    return names;
  }
  std::string WrittenIn(std::string_view name) {
    const fs::path place = FTo / name;
    return fmt::format("notice \"Written: {}\" in {}; ", place.string(),
                       (place.has_extension() ? FTo : place).string());
  }
  std::string TextOf(std::string_view name) {
    const TBytes bytes = BytesOfFile(FTo / name);
    return {bytes.begin(), bytes.end()};
  }
  std::ptrdiff_t LinesOf(std::string_view name) { return std::ranges::count(TextOf(name), '\n'); }

  TTempFolder FFolder;
  fs::path FTo = FFolder / "to";
  TFakeWindow FWindow;
  TEndPort FPort;
  TPortHandle FHandle{FPort};
  TFileFlow FFlow{{"/opt/shockscope", "1.0.0.0", "/recordings", ""},
                  FHandle.Value(),
                  [] { return std::uint64_t{1000000}; },
                  FWindow.controls,
                  FWindow.dialogs,
                  FWindow.views};
  TExportCommands FCommands{FFlow, FWindow.controls, FWindow.dialogs, FWindow.views};
};

TEST_F(ExportCommands, AFolderOfEventsChangesTheWindowInThisOrderAndEndsInTheShockView) {
  EXPECT_EQ(
      Run(&E::barbtnEventsCSVAllShocksClick, FTo),
      "ask \"Choose the folder for the CSV files\" in " + FFolder.Path().string() + "; text PnlLoadingDetail \"" +
          FTo.string() + "\"; hide" + kDockPanelNames + "; front WellcomePanel; " + kCsvShown + "2" + kCsvInFront +
          "progress 0; messages\nprogress 1; messages\nprogress 2; messages\n" + kHidden +
          "front MainPanel; show dxDockPanelFilter; " +
          [this] {
            TFakeWindow shock;
            SetViewShock(shock.controls, shock.views, FFlow.Mission().SelectedEvent);
            return shock.log.Take();
          }() +
          WrittenIn("Mission-A17"));
  EXPECT_THAT(Written(), ElementsAre("Mission-A17/ID-0.csv", "Mission-A17/ID-1.csv", "Mission-A17/ID-2.csv"));
  EXPECT_EQ(FFlow.RememberedFolder(), FTo.string());
  WriteFile(FTo / "Mission-A17" / "ID-1.csv", {1});
  Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  EXPECT_THAT(TextOf("Mission-A17/ID-1.csv"),
              StartsWith("\"Time (msec)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\",\r\n"));
}

TEST_F(ExportCommands, EachFolderExportHasItsEventsAndNames) {
  const std::string all = "Peaks-Mission-A17-2023-07-16-06-00-00/ID-";
  const std::string visible = "Calibration-Mission-A17-2023-07-16-06-00-00/ID-";
  Run(&E::barbtnEventsCSVCalibrationClick, FTo);
  HideEventTwo();
  const std::string log = Run(&E::barbtnEventsCSVCalibrationVisibleClick, FTo);
  EXPECT_THAT(log, HasSubstr("progress maximum 1;"));
  Run(&E::barbtnEventsCSVVisibleShocksClick, FTo);
  EXPECT_THAT(Written(), ElementsAre(visible + "0-X-pos-20.csv", visible + "1-X-pos-9.csv", "Mission-A17/ID-0.csv",
                                     "Mission-A17/ID-1.csv", all + "0-X-pos-20.csv", all + "1-X-pos-9.csv",
                                     all + "2-X-pos-5.csv"));
}

TEST_F(ExportCommands, OneEventShowsProgressAndNoEventStillMakesTheFolder) {
  TEventFilter filter;
  filter.ranges[0].from = 10;
  ChangeFilter(FFlow.Mission(), filter, FWindow.views);
  EXPECT_THAT(Run(&E::barbtnEventsCSVVisibleShocksClick, FTo), HasSubstr("progress maximum 1; taskbar on"));
  filter.ranges[0].from = 100;
  ChangeFilter(FFlow.Mission(), filter, FWindow.views);
  fs::remove_all(FTo / "Mission-A17");
  EXPECT_THAT(Run(&E::barbtnEventsCSVVisibleShocksClick, FTo), HasSubstr("progress maximum 1; taskbar on"));
  EXPECT_TRUE(fs::is_directory(FTo / "Mission-A17"));
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ExportCommands, ATableIsWrittenWhileItsGridIsHidden) {
  const struct {
    TCommand csv, xlsx;
    std::string title, name, grid, xlsxTitle, xlsxName;
    std::ptrdiff_t lines;
  } tables[] = {
      {&E::barbtnTablesExportCSVBatteryClick, &E::barbtnTablesExportXLSXBatteryClick, "the Battery Grid",
       "Battery Mission-A17", "DBGrid8", "the Battery Grid", "Battery Mission-A17", 4},
      {&E::barbtnTablesExportCSVClick, &E::barbtnTablesExportXLSXClick, "the Filtered Shocks Grid",
       "Shocks Mission-A17", "dbgFilteredShocks", "the Shocks Grid", "Shocks of Mission-A17", 3},
      {&E::barbtnTablesExportCSVSensorsClick, &E::barbtnTablesExportXLSXSensorsClick, "the Sensors Grid",
       "Sensors Mission-A17", "DBGrid2", "the Sensors Grid", "Sensors Mission-A17", 4},
  };
  HideEventTwo();
  std::string folder = FFolder.Path().string();
  for (const auto& table : tables) {
    const auto asks = [&folder](const std::string& title, const std::string& kind, const std::string& name) {
      const std::string extension = kind == "CSV" ? "csv" : "xlsx";
      return fmt::format("ask \"Save {} to {} file\" for {}/{} of {} file|*.{} as {}; ", title, kind, folder, name,
                         kind, extension, extension);
    };
    const std::string csv = (FTo / "t.csv").string();
    EXPECT_EQ(RunIn(table.csv, "t.csv"), asks(table.title, "CSV", table.name) + "hide " + table.grid +
                                             "; text PnlLoadingDetail \"" + csv + "\"; " + kCsvShown +
                                             std::to_string(table.lines - 1) + kCsvInFront + "progress 0; messages\n" +
                                             kHidden + "show" + kPanels + " " + table.grid + "; " + WrittenIn("t.csv"));
    folder = FTo.string();
    EXPECT_EQ(LinesOf("t.csv"), table.lines) << csv;
    EXPECT_EQ(FFlow.Mission().CLDS.CurrentRow(), table.name.starts_with("Battery") ? 0U : 1U) << "its last record";
    const std::string xlsx = (FTo / "t.xlsx").string();
    EXPECT_EQ(RunIn(table.xlsx, "t.xlsx"),
              asks(table.xlsxTitle, "XLSX", table.xlsxName) + "hide " + table.grid + "; text PnlLoadingDetail \"" +
                  xlsx + "\"; front WellcomePanel; text PnlLoadingMsg \"Creating XLSX File...\"; progress 0; " +
                  kCsvInFront.substr(2) +
                  "progress maximum 1; progress 0; text PnlLoadingMsg \"Creating Sheet 1 of 1\"; "
                  "messages\nprogress 1; messages\n" +
                  kHidden + "front MainPanel; show" + kPanels + " " + table.grid + "; " +
                  "information \"Excel sheet created\"; " + WrittenIn("t.xlsx"));
    FWindow.dialogs.ChosenFile.reset();
    (FCommands.*table.csv)();
    EXPECT_EQ(FWindow.log.Take(), asks(table.title, "CSV", table.name) + "show " + table.grid + "; ") << "cancelled";
  }
  EXPECT_EQ(FFlow.Mission().SelectedEvent, 1U);
  EXPECT_TRUE(ActivateFilter(FFlow.Mission(), false, FWindow.views));
  RunIn(&E::barbtnTablesExportCSVClick, "all.csv");
  EXPECT_EQ(LinesOf("all.csv"), 4);
}

// The golden files were checked by a person.
TEST_F(ExportCommands, CsvFilesEqualTheGoldenFiles) {
  Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  Run(&E::barbtnEventsCSVCalibrationClick, FTo);
  RunIn(&E::barbtnTablesExportCSVClick, "shocks.csv");
  RunIn(&E::barbtnTablesExportCSVSensorsClick, "sensors.csv");
  RunIn(&E::barbtnTablesExportCSVBatteryClick, "battery.csv");
  const fs::path golden = TEST_DATA "/golden";
  std::size_t compared = 0;
  for (const auto& entry : fs::recursive_directory_iterator(golden)) {
    if (entry.is_directory()) continue;
    const std::string name = fs::relative(entry.path(), golden).string();
    const TBytes bytes = BytesOfFile(entry.path());
    EXPECT_EQ(TextOf(name), std::string(bytes.begin(), bytes.end())) << name;
    ++compared;
  }
  EXPECT_EQ(compared, Written().size());
}

TEST_F(ExportCommands, WorkbooksShowProgressBySheets) {
  HideEventTwo();
  const std::string ask = fmt::format(" for {}/Mission-A17 of XLSX file|*.xlsx as xlsx; ", FFolder.Path().string());
  std::string log = RunIn(&E::barbtnEventsXLSXVisibileShocksClick, "v.xlsx");
  EXPECT_THAT(log, StartsWith("ask \"Export Shock Events to XLSX file\"" + ask));
  EXPECT_THAT(log,
              HasSubstr("progress 1; text PnlLoadingMsg \"Creating Sheet 2 of 2\"; messages\nprogress 2; messages\n"));
  log = RunIn(&E::barbtnEventsXLSXAllShocksClick, "a.xlsx");
  EXPECT_THAT(log, StartsWith("ask \"Export Shock Events to XLSX file\" for " + FTo.string()));
  EXPECT_THAT(log, HasSubstr("\"Creating Sheet 3 of 3\""));
  log = RunIn(&E::barbtnSensorsExportToXLSXClick, "s.xlsx");
  EXPECT_THAT(log, StartsWith("ask \"Save the Sensor Measurments to XLSX file\" for " + FTo.string() + "/Mission-A17"));
  EXPECT_THAT(log, HasSubstr("\"Creating Sheet 2 of 2\""));
  EXPECT_THAT(log, EndsWith(kHidden + "front MainPanel; show" + kPanels + "; " +
                            "information \"Excel sheet created\"; " + WrittenIn("s.xlsx")));
}

// Event 0 has 18 samples, which the spectrum sees in 128 points.
TEST_F(ExportCommands, TheEventInTheChartIsExportedAsTheChartShowsIt) {
  SelectEvent(FFlow.Mission(), 0, FWindow.views);
  FWindow.log.Take();
  std::string log = RunIn(&E::actExportShockToCSVExecute, "raw.csv");
  EXPECT_THAT(log, StartsWith("ask \"Save the Shock Event CSV file\" for " + FFolder.Path().string() +
                              "/Mission-A17 ID-0 of CSV file|*.csv as csv; "));
  EXPECT_THAT(log, EndsWith(kHidden + "show" + kPanels + "; " + WrittenIn("raw.csv")));
  EXPECT_THAT(TextOf("raw.csv"), HasSubstr("\r\n\"1\",\"4\",\"0\",\"0\",\"4\",\r\n"));
  FFlow.Mission().Settings.highPass = true;
  RunIn(&E::actExportShockToCSVExecute, "high.csv");
  EXPECT_EQ(LinesOf("high.csv"), 19);
  EXPECT_THAT(TextOf("high.csv"), Not(HasSubstr("\"1\",\"4\",")));

  FWindow.views.Spectrum = {.type = 2};
  EXPECT_THAT(RunIn(&E::actExportShockToCSVExecute, "psd.csv"), HasSubstr("/Mission-A17 ID-0 PSD of"));
  EXPECT_THAT(TextOf("psd.csv"), StartsWith("\"HZ\",\"X\",\"Y\",\"Z\",\"Total\",\r\n\"0\","));
  EXPECT_EQ(LinesOf("psd.csv"), 19) << "as many as the time series";
  FWindow.views.Spectrum->window = 2;
  RunIn(&E::actExportShockToCSVExecute, "window.csv");
  EXPECT_NE(TextOf("window.csv"), TextOf("psd.csv"));
  log = RunIn(&E::barbtnShockSaveChartAsXLSXClick, "spectrum.xlsx");
  EXPECT_THAT(log, StartsWith("ask \"Export Shock Event to XLSX file\" for " + FTo.string() + "/Mission-A17 of XLSX"));
  EXPECT_THAT(log, EndsWith("information \"Excel sheet created\"; " + WrittenIn("spectrum.xlsx")));
}

TEST_F(ExportCommands, AResponseSpectrumIsExportedWithItsRangesAndAnEnvelopeUnderItsOwnName) {
  SelectEvent(FFlow.Mission(), 0, FWindow.views);
  const double none = std::nan("");
  FWindow.views.Response = {
      .response = TResponse::PseudoVelocity,
      .lines = {{10, 1.5, 2, 3, 4, TResponseRange::Valid}, {20, none, none, none, none, TResponseRange::None}}};
  FWindow.log.Take();
  EXPECT_THAT(RunIn(&E::actExportShockToCSVExecute, "r.csv"), HasSubstr("/Mission-A17 ID-0 Response of"));
  EXPECT_EQ(TextOf("r.csv"),
            "\"Frequency (Hz)\",\"X (m/s)\",\"Y (m/s)\",\"Z (m/s)\",\"Total (m/s)\",\"Range\",\r\n"
            "\"10\",\"1.5\",\"2\",\"3\",\"4\",\"valid\",\r\n\"20\",\"\",\"\",\"\",\"\",\"none\",\r\n");
  EXPECT_THAT(RunIn(&E::barbtnShockSaveChartAsXLSXClick, "r.xlsx"), EndsWith(WrittenIn("r.xlsx")));
  FWindow.views.Response->isEnvelope = true;
  EXPECT_THAT(RunIn(&E::actExportShockToCSVExecute, "e.csv"), HasSubstr("/Mission-A17 Response Envelope of"));
  EXPECT_THAT(RunIn(&E::barbtnShockSaveChartAsXLSXClick, "e.xlsx"), EndsWith(WrittenIn("e.xlsx")));
  FWindow.views.Response = {.lines = {}, .why = "No event is visible."};
  EXPECT_EQ(RunIn(&E::actExportShockToCSVExecute, "n.csv"),
            "box \"There is no response spectrum to export.\" No event is visible.; ");
}

TEST_F(ExportCommands, WithoutAnEventOrASpectrumAMessageIsShownAndNothingIsWritten) {
  SelectEvent(FFlow.Mission(), std::nullopt, FWindow.views);
  FWindow.log.Take();
  EXPECT_EQ(RunIn(&E::actExportShockToCSVExecute, "e.csv"),
            "box \"There is no event to export.\" No shock event is selected.; ");
  WriteFile(FFolder / "uneven.kshock", Deflated(TTestRecording()
                                                    .Creator()
                                                    .MissionHeader(2, 2)
                                                    .Channels({"ACC x", "ACC y", "ACC z"})
                                                    .Data({{0, {1, 1, 1}}, {1, {2, 1, 1}}, {9, {1, 1, 1}}})
                                                    .content));
  FFlow.Open((FFolder / "uneven.kshock").string());
  FFlow.HandleMessage(FPort.WaitForEnd());
  FWindow.views.Spectrum.emplace();
  FWindow.log.Take();
  EXPECT_THAT(RunIn(&E::barbtnShockSaveChartAsXLSXClick, "e.xlsx"),
              StartsWith("box \"There is no spectrum to export.\""));
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ExportCommands, CancelKeepsCompleteFilesAndRestoresTheWindow) {
  FWindow.controls.Closed = {"dxDockPanelNavigator"};
  const std::string kCancelled = "; notice \"Export cancelled\"; ";
  int messages = 0;
  FWindow.controls.OnMessages = [&] {
    if (++messages == 3) FFlow.Cancel();  // before the second file
  };
  const std::string log = Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  const std::string others = kPanels.substr(std::string_view(" dxDockPanelNavigator").size());
  EXPECT_THAT(log, EndsWith(kHidden + "front MainPanel; show" + others + kCancelled))
      << "but for the one that was closed";
  EXPECT_THAT(Written(), ElementsAre("Mission-A17/ID-0.csv"));
  EXPECT_EQ(FFlow.RememberedFolder(), FTo.string());
  WriteFile(FTo / "b.xlsx", {1, 2});
  messages = 1;
  EXPECT_THAT(RunIn(&E::barbtnTablesExportXLSXBatteryClick, "b.xlsx"),
              EndsWith(kHidden + "front MainPanel; show" + others + " DBGrid8" + kCancelled));
  EXPECT_EQ(TextOf("b.xlsx"), "\1\2");
  EXPECT_EQ(Written().size(), 2U);
  messages = 3;
  EXPECT_THAT(RunIn(&E::barbtnTablesExportXLSXBatteryClick, "b.xlsx"), HasSubstr("information")) << "it is forgotten";
}

TEST_F(ExportCommands, AFailureShowsOneMessageWithFileAndReasonAfterTheWindowIsRestored) {
  const struct {
    TCommand command;
    fs::path chosen, named;
    std::string reason, restored;
  } cases[] = {
      {&E::barbtnTablesExportCSVClick, FTo / "gone/t.csv", FTo / "gone/t.csv", "No such file or directory.",
       "show" + kPanels + " dbgFilteredShocks; "},
      {&E::barbtnTablesExportXLSXClick, FTo / "gone/t.xlsx", FTo / "gone/t.xlsx", "No such file or directory.",
       "front MainPanel; show" + kPanels + " dbgFilteredShocks; "},
      {&E::barbtnEventsXLSXAllShocksClick, FTo / "gone/e.xlsx", FTo / "gone/e.xlsx", "No such file or directory.",
       "front MainPanel; show" + kPanels + "; "},
      {&E::barbtnEventsCSVAllShocksClick, FTo / "gone", FTo / "gone/Mission-A17", "No such file or directory.",
       "front MainPanel; show" + kPanels + "; "},
  };
  for (const auto& [command, chosen, named, reason, restored] : cases) {
    const std::string log = Run(command, chosen);
    EXPECT_THAT(log, EndsWith(restored + "box \"The export could not be written.\" " + Utf8FromPath(named) + "\n" +
                              reason + "; "));
    EXPECT_THAT(log, HasSubstr(kHidden));
    EXPECT_TRUE(FFlow.FileShown());
    EXPECT_EQ(FFlow.RememberedFolder(), FFolder.Path().string());
  }
  // The folder vanishes after the first file, unless the system keeps the folders of open files.
  std::error_code kept;
  FWindow.controls.OnMessages = [this, &kept, messages = 0]() mutable {
    if (++messages == 3) fs::remove_all(FTo / "Mission-A17", kept);
  };
  const std::string log = Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  EXPECT_TRUE(kept || log.ends_with(Utf8FromPath(FTo / "Mission-A17/ID-1.csv") + "\nNo such file or directory.; "))
      << log;
}

TEST_F(ExportCommands, ForATableTooLongForASheetTheMessageSuggestsCsv) {
  TDataset& battery = FFlow.Mission().Tables.Battery;
  while (battery.RecordCount() < 1048575) battery.Append();
  EXPECT_THAT(
      RunIn(&E::barbtnTablesExportXLSXBatteryClick, "b.xlsx"),
      testing::ContainsRegex("box \"The export could not be written.\" .*b.xlsx\nThe table has 1048575 rows.*CSV"));
  EXPECT_THAT(Written(), IsEmpty());
}

TEST_F(ExportCommands, WhileAnExportRunsEveryCommandIsRefused) {
  const std::string undisturbed = Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  int disturbed = 0;
  FFlow.SwitchView(TView::Overview);
  FWindow.log.Take();
  FWindow.controls.OnMessages = [&] {
    ++disturbed;
    EXPECT_TRUE(FFlow.Busy());
    EXPECT_FALSE(FFlow.FileShown());
    FFlow.Open("other.kshock");
    FFlow.Reload();
    FFlow.AskAndOpen();
    FFlow.SwitchView(TView::Report);
    FCommands.barbtnEventsXLSXAllShocksClick();
    FCommands.barbtnEventsCSVAllShocksClick();
    FCommands.barbtnTablesExportCSVClick();
    FCommands.actExportShockToCSVExecute();
  };
  const std::string log = Run(&E::barbtnEventsCSVAllShocksClick, FTo);
  EXPECT_EQ(log.substr(log.find(';')), undisturbed.substr(undisturbed.find(';')));
  EXPECT_GE(disturbed, 5);
}

TEST_F(ExportCommands, ACloseEndsTheExportAndIsDoneAfterwards) {
  FWindow.controls.OnMessages = [&] { EXPECT_FALSE(FFlow.MayClose()); };
  const std::string log = RunIn(&E::barbtnSensorsExportToXLSXClick, "s.xlsx");
  EXPECT_THAT(log, EndsWith(kHidden + "front MainPanel; show" + kPanels + "; close window; "));
  EXPECT_THAT(Written(), IsEmpty());
  EXPECT_TRUE(FFlow.MayClose());
}

TEST_F(ExportCommands, APartHasWhatLiesInTheBandOrPassesTheFilterAndReplacesNothingUnasked) {
  const auto part = [this](TPartChoice choice, TPartForm form, const fs::path& to) {
    FWindow.dialogs.ChosenFile = to.string();
    FCommands.ExportPart(choice, form);
    return FWindow.log.Take();
  };
  const std::string folder = "Part of Mission-A17";
  const auto lines = [&] {
    std::vector<std::ptrdiff_t> counts;
    for (const char* table : {"/Shocks.csv", "/Sensors.csv", "/Battery.csv"}) counts.push_back(LinesOf(folder + table));
    return counts;
  };
  const double minute = 1.0 / 1440;
  FFlow.Mission().Band = {45123.25 + 0.5 * minute, 45123.25 + 1.5 * minute};
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::TableFiles, FTo), EndsWith(WrittenIn(folder)));
  EXPECT_THAT(lines(), ElementsAre(2, 2, 2)) << "event 1, and the readings at it";
  HideEventTwo();
  part(TPartChoice::Filtered, TPartForm::TableFiles, FTo);
  EXPECT_THAT(lines(), ElementsAre(3, 4, 4));
  part(TPartChoice::All, TPartForm::TableFiles, FTo);
  EXPECT_THAT(lines(), ElementsAre(4, 4, 4)) << "whatever the filter hides";
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::TableSheets, FTo / "part.xlsx"), HasSubstr("Creating Sheet 3 of 3"));
  part(TPartChoice::Band, TPartForm::EventFiles, FTo);
  EXPECT_THAT(Written(), testing::Contains("Mission-A17/ID-1.csv"));
  EXPECT_THAT(Written(), Not(testing::Contains("Mission-A17/ID-0.csv")));
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::Recording, FTo / "part.kshock"), EndsWith(WrittenIn("part.kshock")));

  const fs::path shown = FFolder / "three.kshock";
  const TBytes before = BytesOfFile(shown);
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::Recording, shown), HasSubstr("This is the recording that is shown."));
  EXPECT_EQ(BytesOfFile(shown), before);
  WriteFile(FTo / "part.kshock", {1});
  FWindow.controls.OnMessages = [&] { FFlow.Cancel(); };
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::Recording, FTo / "part.kshock"), HasSubstr("Export cancelled"));
  EXPECT_EQ(BytesOfFile(FTo / "part.kshock").size(), 1U);
  part(TPartChoice::Band, TPartForm::TableFiles, FTo);
  EXPECT_THAT(lines(), ElementsAre(4, 4, 4)) << "none of the three is replaced";
  FWindow.controls.OnMessages = [] {};
  FFlow.Mission().Band = {1, 2};
  EXPECT_THAT(part(TPartChoice::Band, TPartForm::Recording, FTo / "part.kshock"), StartsWith("box \"There is nothing"));
}

TEST_F(ExportCommands, PicturesShowTheChartInFrontAndAskForAFile) {
  SelectEvent(FFlow.Mission(), 2, FWindow.views);
  FWindow.log.Take();
  const std::string ask = "ask \"Save the chart image\" for ";
  const std::string kCopied = "notice \"Picture copied\"; ";
  const std::string jpg = " of JPG|*.jpg as jpg; ";
  const std::string first = FFolder.Path().string();
  EXPECT_EQ(Run(&E::barbtnEventsSaveChartasJPGClick, FTo / "e.jpg"),
            ask + first + "/Mission-A17" + jpg + WrittenIn("e.jpg"));
  const std::string to = FTo.string();
  EXPECT_EQ(Run(&E::barbtnSensorsSaveAsJPGClick, FTo / "s.jpg"), ask + to + "/Mission-A17" + jpg + WrittenIn("s.jpg"));
  EXPECT_EQ(Run(&E::barbtnShockSaveChartAsImageClick, FTo / "x.jpg"),
            ask + to + "/Mission-A17 ID-2" + jpg + WrittenIn("x.jpg"));
  EXPECT_EQ(Run(&E::barbtnShockSaveChartAsPNGClick, FTo / "x.png"),
            ask + to + "/Mission-A17 ID-2 of PNG, size of the screen|*.png|PNG, 2 × size|*.png|PNG, 4 × size|*.png" +
                " as png; " + WrittenIn("x.png"));
  FWindow.dialogs.ChosenFilter = 3;
  Run(&E::barbtnSensorsSaveAsPNGClick, FTo / "s.png");
  FWindow.dialogs.ChosenFilter = 1;
  EXPECT_EQ(Run(&E::barbtnEventsSaveChartAsSVGClick, FTo / "e.svg"),
            ask + to + "/Mission-A17 of SVG|*.svg as svg; " + WrittenIn("e.svg"));
  EXPECT_EQ(TextOf("e.jpg") + TextOf("s.jpg") + TextOf("x.jpg") + TextOf("x.png") + TextOf("s.png") + TextOf("e.svg"),
            "Chart1 as bitmapChartAllSensors as bitmapChart2 as bitmapChart2 as PNG 1xChartAllSensors as PNG 4x"
            "Chart1 as SVG 1x");
  EXPECT_EQ(Run(&E::barbtnEventsCopyChartToClipboardClick, {}) + Run(&E::barbtnShockCopyChartToClipboardClick, {}) +
                Run(&E::barbtnSensorsCopyChartToClipboardClick, {}),
            "copy Chart1; " + kCopied + "copy Chart2; " + kCopied + "copy ChartAllSensors; " + kCopied);

  FWindow.views.Spectrum.emplace();
  FFlow.SwitchView(TView::Shock);
  FWindow.log.Take();
  EXPECT_THAT(Run(&E::barbtnShockSaveChartAsImageClick, FTo / "y.jpg"), HasSubstr("Mission-A17 ID-2 of"));
  Run(&E::barbtnEventsSaveChartAsPNGClick, FTo / "e.png");
  EXPECT_EQ(TextOf("y.jpg") + TextOf("e.png"), "chartSpecAnalysis as bitmapChart20 as PNG 1x");

  fs::create_directory(FTo / "taken");
  EXPECT_THAT(Run(&E::barbtnEventsSaveChartasJPGClick, FTo / "taken"),
              HasSubstr("box \"The picture could not be written.\" " + (FTo / "taken").string() + "\n"));
  FWindow.dialogs.ChosenFile.reset();
  FCommands.barbtnEventsSaveChartasJPGClick();
  EXPECT_EQ(Written().size(), 8U) << "cancelled";
}

TEST_F(ExportCommands, WithoutAMissionNothingHappens) {
  FFlow.Open("/none/missing.kshock");
  FFlow.HandleMessage(FPort.WaitForEnd());
  FWindow.log.Take();
  for (const TCommand command : {&E::barbtnEventsCSVAllShocksClick, &E::barbtnEventsXLSXAllShocksClick,
                                 &E::actExportShockToCSVExecute, &E::barbtnShockSaveChartAsXLSXClick}) {
    EXPECT_EQ(Run(command, FTo), "");
  }
}

}  // namespace
