#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "analysis/uShockMetrics.h"
#include "base/uText.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"
#include "tests/support/uKshockRun.h"
#include "tests/support/uThreeEvents.h"

using nlohmann::json;
using testing::HasSubstr;

namespace {

class KshockCommands : public TKshockTest {};

const std::string kStairs = TEST_DATA "/stairs.kshock";

TEST_F(KshockCommands, TheWorstStatusOfSeveralFilesIsReturned) {
  TBytes cut = BytesOfFile(kStairs);
  cut.resize(cut.size() / 2);
  const std::string damaged = Save("damaged.kshock", cut);
  const std::string unfit = Save("unfit.kshock", Deflated(TTestRecording().Creator("unknown").content));
  const std::string tooShort = Save("short.kshock", Deflated(TTestRecording().Block(2, {1}).content));
  const std::string missing = File("missing.kshock");
  EXPECT_EQ(Kshock({"info", kStairs}).status, 0);
  EXPECT_EQ(Kshock({"info", damaged, kStairs}).status, 5);
  EXPECT_EQ(Kshock({"info", damaged, unfit}).status, 1);
  EXPECT_EQ(Kshock({"info", unfit, missing, kStairs}).status, 3);
  const TRun invalid = Kshock({"info", tooShort, kStairs});
  EXPECT_EQ(invalid.status, 3);
  EXPECT_THAT(invalid.err, HasSubstr("than what it must hold. Read before: 0 data blocks, 24 bytes of content."));
  const TRun all = Kshock({"info", missing, damaged, kStairs});
  EXPECT_THAT(all.out, HasSubstr("Belt-worn logger, stairs up and down")) << "all files are tried";
  EXPECT_THAT(all.err, HasSubstr("damaged or cut short"));
}

TEST_F(KshockCommands, WrongUseIsReportedOnTheErrorStream) {
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{},
                                             {"nothing"},
                                             {"info"},
                                             {"dump", kStairs, "--rows", "-1"},
                                             {"table", kStairs, "none"},
                                             {"table", kStairs, "events", "--order", "BatteryASC"},
                                             {"filter", kStairs},
                                             {"spectrum", kStairs, "--event", "-1"},
                                             {"spectrum", kStairs, "--event", "0", "--type", "Loudness"},
                                             {"spectrum", kStairs, "--event", "0", "--window", "Round"},
                                             {"export", kStairs, "events-csv"},
                                             {"export", kStairs, "--to", "."},
                                             {"export", kStairs, "--to", "", "events-csv"},
                                             {"export", kStairs, "--to", ".", "all-csv"},
                                             {"notes", kStairs, "--from", "x", "--to", "y"},
                                             {"fleet", "--to", "x"},
                                             {"fleet", kStairs},
                                             {"fleet", kStairs, "--to", "x", "--format", "xml"},
                                             {"fleet", kStairs, "--to", "x", "--shard", "3/2"},
                                             {"demo", "x", "--events", "many"}}) {
    const TRun run = Kshock(wrong);
    EXPECT_EQ(run.status, 2);
    EXPECT_FALSE(run.err.empty());
    EXPECT_TRUE(run.out.empty());
  }
  EXPECT_EQ(Kshock({"--help"}).status, 0);
  EXPECT_THAT(Kshock({"make", "--help"}).out, HasSubstr("time_ms"));
}

TEST_F(KshockCommands, MessagesContainNoControlCharacters) {
  const std::string word = "a\x1B[2J\nb\xC2\x9B\x9B";
  if (!std::ofstream(Folder / word)) GTEST_SKIP() << "no file may have such a name";
  const std::string file = Save(word, Deflated(ThreeEvents().content));
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{word},
                                             {"--" + word},
                                             {"info", file, word},
                                             {"info", "--" + word},
                                             {"dump", word},
                                             {"dump", file, word},
                                             {"dump", file, "--rows", word},
                                             {"blocks", word},
                                             {"table", file, word},
                                             {"table", file, "events", "--order", word},
                                             {"filter", file, "--event", "99"},
                                             {"spectrum", file, "--event", "0", "--type", word},
                                             {"export", file, "--to", word, "shocks-csv"},
                                             {"export", file, "--to", ".", word},
                                             {"export", file, "--to", ".", "shocks-csv", "--filter", word},
                                             {"cut", file, "--from", word, "x"},
                                             {"notes", file, "--from", word},
                                             {"fleet", word, "--merge", "--to", File("x")},
                                             {"fleet", "--files-from", word, "--to", File("x")},
                                             {"fleet", file, "--to", word + "/x"},
                                             {"make", word, "x"},
                                             {"demo", word + "/x"}}) {
    std::string text = Kshock(arguments).err;
    EXPECT_FALSE(text.empty());
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at)) text.erase(at, 1);
    EXPECT_TRUE(IsPlainLine(text)) << testing::PrintToString(text);
    EXPECT_THAT(text, testing::Not(HasSubstr("[2Jb"))) << "a line break of the user's";
  }
}

TEST_F(KshockCommands, AnEventWithoutAResultGivesTheReason) {
  TTestRecording recording = TTestRecording().Creator().MissionHeader(2, 1).Channels({"ACC x", "ACC y", "ACC z"});
  recording.Data({{0, {1, 2, 3}}, {0, {1, 2, 3}}});
  const std::string file = Save("still.kshock", Deflated(recording.content));
  recording.content.push_back(8);
  const std::string cut = Save("cut.kshock", Deflated(recording.content));
  const TRun still = Kshock({"spectrum", file, "--event", "0"});
  EXPECT_EQ(still.status, 6);
  EXPECT_THAT(still.err, HasSubstr("Event 0 has no spectrum. The times of the samples repeat or go back."));
  EXPECT_EQ(Kshock({"spectrum", cut, "--event", "0"}).status, 5) << "damage is worse";
  EXPECT_EQ(Kshock({"filter", file, "--event", "0"}).status, 0);
  const TTestRecording noNumbers = TTestRecording()
                                       .Creator()
                                       .MissionHeader(2, 1)
                                       .Channels({"ACC x", "ACC y", "ACC z"})
                                       .Data({{0, {kOtherNaN, kOtherNaN, kOtherNaN}}, {1, {1, 2, 3}}});
  for (const char* command : {"filter", "spectrum"}) {
    const TRun nothing = Kshock({command, Save("nan.kshock", Deflated(noNumbers.content)), "--event", "0"});
    EXPECT_EQ(nothing.status, 6);
    EXPECT_EQ(nothing.out, "");
    EXPECT_THAT(nothing.err, HasSubstr("Each axis has a sample that is no finite number."));
    const TRun none = Kshock({command, file, "--event", "1"});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("There is no event 1; the recording has 1."));
  }
}

TEST_F(KshockCommands, EverySampleIsWalkedOnce) {
  const std::string file = Save("three.kshock", Deflated(ThreeEvents().content));
  for (const std::vector<std::string>& command :
       std::vector<std::vector<std::string>>{{"info", file}, {"dump", file}, {"table", file, "cards"}}) {
    const std::size_t before = WalkedSamples();
    EXPECT_EQ(Kshock(command).status, 0);
    EXPECT_EQ(WalkedSamples() - before, 18U + 5U + 6U) << command[0];
  }
}

TEST_F(KshockCommands, InfoPrintsMissionAndSummary) {
  const std::string text = Kshock({"info", kStairs}).out;
  for (const char* part : {"165-00233", "Limit= 2.5 g, Measurement rate= ~128 Hz", "215 with 43266 samples",
                           "8.2669 g (7.812 g on X-neg) in event 211",
                           "2023-02-01 08:00:04 to 2023-02-01 19:59:54 (12 h)", "4320 readings, 22.88 to 28.56 °C"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
  EXPECT_THAT(text, testing::Not(HasSubstr("lacks")));
  const auto flat = TTestRecording().Creator().MissionHeader(2, 1).Channels({"ACC x", "ACC z"}).Data({{0, {9, 9}}});
  EXPECT_THAT(Kshock({"info", Save("flat.kshock", Deflated(flat.content))}).out,
              HasSubstr("Events need all three axes; the recording lacks ACC y."));
}

TEST_F(KshockCommands, InfoJudgesByAProfileWithoutAnotherStatus) {
  // Peaks of 20, 9 and 5 g; a reading of each sensor a minute, the last of 22 °C at 60 s.
  TTestRecording recording = ThreeEvents();
  const std::string file = Save("three.kshock", Deflated(recording.content));
  recording.content.push_back(8);
  const std::string cut = Save("cut.kshock", Deflated(recording.content));
  const auto profile = [this](const std::string& events, const std::string& time) {
    return SaveText("p.ini", "[Profile]\nName=Glass\n[Alarm]\nAcc. Max=8\nTemp. Max=21.5\n[Allowed]\nAcc. Max=" +
                                 events + "\nTemp. Max=" + time + "\n");
  };
  const TRun passed = Kshock({"info", file, "--limits", profile("2 events", "1 min")});
  EXPECT_EQ(passed.status, 0);
  EXPECT_THAT(passed.out,
              HasSubstr("  Verdict                2 of 3 events above 8 g; the highest peak, event 0, reached 20 g"));
  EXPECT_THAT(
      passed.out,
      HasSubstr("  Judgement              passed the limits \"Glass\": 2 of 3 events above 8 g (at most 2 allowed); "
                "temperature above 21.5 °C for 1 min (at most 1 min allowed)\n"));
  const TRun failed = Kshock({"info", "--limits", profile("1 event", "59.999 s"), file, cut});
  EXPECT_EQ(failed.status, 5) << "of the damaged recording";
  EXPECT_THAT(failed.out,
              HasSubstr("failed the limits \"Glass\": 2 of 3 events above 8 g (at most 1 allowed); temperature "
                        "above 21.5 °C for 1 min (at most 59.999 s allowed)\n"));
  EXPECT_THAT(failed.out, HasSubstr("failed the limits \"Glass\" in what could be read: 2 of 3"));
  EXPECT_THAT(failed.out, HasSubstr("the recording was not read whole, and only what could be read is judged\n"));
  EXPECT_EQ(Kshock({"info", file, "--limits", profile("1 event", "1 min")}).status, 0) << "failing is no error";
  const std::string settings = SaveText("settings.ini", "[Alarm]\nLoad Acc. from File=1\nAcc. Max=8\nTemp. Max=40\n");
  const TRun byTrigger = Kshock({"info", file, "--limits", settings});
  EXPECT_THAT(byTrigger.out, HasSubstr("all events exceed the trigger level of 2 g; set limits to judge"));
  EXPECT_THAT(byTrigger.out, HasSubstr("not judged by the limits \"settings\": no limit was chosen"));
  for (const std::string& unusable : {File("none.ini"), SaveText("bad.ini", "[Alarm]\n\x1B[2J=1\n")}) {
    const TRun run = Kshock({"info", file, "--limits", unusable});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr(unusable));
    EXPECT_THAT(run.err, testing::Not(HasSubstr("\x1B")));
  }
  EXPECT_THAT(Kshock({"info", file}).out, testing::Not(HasSubstr("Verdict")));
}

TEST_F(KshockCommands, BlocksAreListedUpToTheDamage) {
  TTestRecording recording = TTestRecording().Creator().Channels({"T", "p"}).Data({{0, {1, 2}}});
  recording.content.insert(recording.content.end(), {8, 0, 20, 0, 1, 2, 3});
  const TRun run = Kshock({"blocks", Save("cut.kshock", Deflated(recording.content))});
  EXPECT_EQ(run.status, 5);
  EXPECT_EQ(run.out,
            "     0  type 0         15 bytes  file header: HALVORNIC\n"
            "     1  type 1         22 bytes  creator: korvex165_reader.exe\n"
            "     2  type 6          6 bytes  channel list: T, p\n"
            "     3  type 8         16 bytes  data\n"
            "     4  type 8          3 bytes  data; cut, its size says 20\n"
            "damaged: the stream ends after 82 bytes of content, in or behind block 4\n");
}

TEST_F(KshockCommands, EveryBlockThatIsTooShortForItsTypeIsNamed) {
  TTestRecording recording;
  recording.Block(1, {9, 0, 'k'}).Block(2, {1, 2, 3, 4, 5, 6, 7}).Block(27, {1, 0, 1, 0}).Channels({"T", "p"});
  const auto whole = TBody().Put(0.0).Put(1.0F).Put(2.0F);
  recording.Block(8, whole.bytes)
      .Block(8, TBody(whole).Put(0.5).Put(1.0F).bytes)
      .Block(8, TBody(whole).Put(0.5F).bytes);
  recording.Block(8, TBody(whole).Put(-1.0).bytes).Block(8, TBody(whole).Put(std::uint8_t{7}).bytes);
  recording.Block(6, {3, 0, 'A'}).Block(99, {1});
  const auto [status, out, err] = Kshock({"blocks", Save("short.kshock", Deflated(recording.content))});
  EXPECT_EQ(status, 5) << err;
  std::vector<std::string> ends;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);) ends.push_back(line.substr(line.find("bytes  ") + 7));
  EXPECT_THAT(ends,
              testing::ElementsAre("file header: HALVORNIC", "creator: too short", "start time: too short",
                                   "mission header: too short", "channel list: T, p", "data", "data: too short",
                                   "data: too short", "data", "data", "channel list: too short", "unknown, skipped"));
}

TEST_F(KshockCommands, ATableIsPrintedByItsIndexInTheLineFormat) {
  const std::string file =
      Save("two.kshock",
           Deflated(TTestRecording()
                        .Creator()
                        .StartTime(45123.25)
                        .MissionHeader(2.5F, 2)
                        .Channels({"ACC x", "ACC y", "ACC z", "BAT"})
                        .Data({{0, {3, 0, 4, 3.5F}}, {0, {kEnd, kNone, kNone, kNone}}, {2000, {0, 0, 12.5F, kNone}}})
                        .content));
  EXPECT_EQ(
      Kshock({"table", file, "important", "--order", "MaxAccDesc"}).out,
      "\"ID\",\"Timestamp\",\"Acceleration max\",\"ToT total\",\"ToT max\",\"IoT total\",\"IoT max\",\"Battery\",\r\n"
      "\"1\",\"2023-07-16 06:00:02\",\"12.5\",\"0\",\"0\",\"0\",\"0\",\"3.5\",\r\n"
      "\"0\",\"2023-07-16 06:00:00\",\"5\",\"0\",\"0\",\"0\",\"0\",\"3.5\",\r\n");
  EXPECT_EQ(Kshock({"table", file, "battery"}).out,
            "\"ID\",\"Timestamp\",\"Battery\",\r\n\"0\",\"2023-07-16 06:00:00\",\"3.5\",\r\n");
}

TEST_F(KshockCommands, ExportWritesTheFilesOfTheVisibleEvents) {
  const std::string file = Save("three.kshock", Deflated(ThreeEvents().content));
  const auto run = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {"export", file, "--to", Folder.Path().string()});
    return Kshock(more);
  };
  for (const auto& [filter, why] : {std::pair("acc=9..6", "the range of acc begins above its end"),
                                    {"acc=6..,acc=..9", "acc stands twice"},
                                    {"tot=..", "tot takes a range"},
                                    {"tot=5", "tot takes a range"},
                                    {"dv=1..x", "\"x\" is no number"},
                                    {"acc=6..,peak=1..", "\"peak\" is none of acc, tot"},
                                    {"axis=W", "the axis \"W\" is none of X-pos"}}) {
    const TRun refused = run({"shocks-csv", "--filter", filter});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr(why));
  }
  ASSERT_EQ(run({"events-csv", "peaks-csv", "shocks-csv", "--filter", "acc=5..9.5,iot=..13,axis=X-pos"}).status, 0);
  const std::filesystem::path mission = Folder / "Mission-165-00007";
  EXPECT_TRUE(std::filesystem::exists(mission / "ID-2.csv"));
  EXPECT_FALSE(std::filesystem::exists(mission / "ID-1.csv"));
  EXPECT_TRUE(std::filesystem::exists(Folder / "Peaks-Mission-165-00007-2023-07-16-06-00-00" / "ID-0-X-pos-20.csv"));
  const TBytes shocks = BytesOfFile(Folder / "Shocks Mission-165-00007.csv");
  EXPECT_THAT(std::string(shocks.begin(), shocks.end()),
              HasSubstr("\r\n\"2\",\"2023-07-16 06:02:00\",\"5\",\"4\",\"4\",\"9\",\"9\",\"21\""));

  // One failure does not stop the others.
  const TRun slash = run({"peaks-csv", "battery-csv", "--date-format", "dd/mm/yyyy"});
  EXPECT_EQ(slash.status, 4);
  EXPECT_THAT(slash.err, HasSubstr("\"dd/mm/yyyy\""));
  const TBytes battery = BytesOfFile(Folder / "Battery Mission-165-00007.csv");
  EXPECT_THAT(std::string(battery.begin(), battery.end()), HasSubstr("\"16/07/2023 06:01:00\",\"3.5"));
  const TRun lost = Kshock({"export", file, "--to", File("none"), "battery-csv"});
  EXPECT_EQ(lost.status, 4);
  EXPECT_THAT(lost.err, HasSubstr(File("none/Battery Mission-165-00007.csv")));
}

TEST_F(KshockCommands, WithoutABatteryItsExportsSaySoAndTheOthersAreWritten) {
  const std::string file =
      Save("none.kshock",
           Deflated(TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"}).Data({{0, {21}}}).content));
  std::filesystem::create_directory(Folder / "to");
  const TRun run = Kshock({"export", file, "--to", File("to"), "battery-csv", "battery-xlsx", "sensors-csv"});
  EXPECT_EQ(run.status, 6);
  EXPECT_EQ(run.err, fmt::format("kshock: {0}: battery-csv: the recording has no battery channel\n"
                                 "kshock: {0}: battery-xlsx: the recording has no battery channel\n",
                                 file));
  const std::filesystem::directory_iterator written(Folder / "to");
  EXPECT_EQ(std::distance(written, std::filesystem::directory_iterator()), 1);
}

TEST_F(KshockCommands, MakeWritesWhatReadingReturns) {
  const std::string source = SaveText("source.json", R"({"startTime": 45123.25, "creator": "korvex_createShockFile.exe",
      "mission": {"sID": "165-€", "adxl_level_on": 2.5, "options": 7, "rec_fast_rate": 0.001},
      "channels": ["T", "ACC x", "ACC y", "ACC z"], "records": "records.csv"})");
  static_cast<void>(SaveText("records.csv",
                             "time_ms,ACC x,ACC y,ACC z,T,unused\r\n0,1,-2.5,3e-3,,9\n10,END,,,21.5,\n\n20,1,1,1,,\n"));
  const TRun run = Kshock({"make", source, File("made.kshock")});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(ReadFile(Folder / "made.kshock").Last(), kReadFinished);
  EXPECT_TRUE(EventList.ValidCreator);
  EXPECT_EQ(EventList.StartTime, 45123.25);
  EXPECT_EQ(MissionData.sID, "165-€");
  EXPECT_EQ(MissionData.sTitle, " ");
  EXPECT_EQ(MissionData.options, 7);
  ASSERT_EQ(EventList.Count(), 2U);
  EXPECT_EQ(EventList.GetItem(0).GetItem(0).yvalue, -2.5F);
  ASSERT_EQ(SensorList.GetItem(0).Count(), 1U);
  EXPECT_EQ(SensorList.GetItem(0).GetItem(0).xvalue, 21.5F);
}

TEST_F(KshockCommands, MakeReportsAFaultySourceAndWritesNothing) {
  const auto make = [this](std::string_view description, std::string_view records) {
    static_cast<void>(SaveText("r.csv", records));
    return Kshock({"make", SaveText("s.json", description), File("made.kshock")});
  };
  const char* good = R"({"startTime": 1, "channels": ["T"], "records": "r.csv"})";
  EXPECT_THAT(make(good, "time_ms,T\n0,1\n5,x\n").err, HasSubstr("Line 3 of the records: \"x\""));
  EXPECT_THAT(make(good, "time_ms,T\n0,1,2\n").err, HasSubstr("Line 2"));
  EXPECT_THAT(make(good, "time_ms,RH\n").err, HasSubstr("no column \"T\""));
  EXPECT_THAT(make(R"({"startTime": 1, "channels": ["T"], "records": "none.csv"})", "").err, HasSubstr("none.csv"));
  EXPECT_THAT(make(R"({"startTime": 1, "mission": {"sid": "x"}, "channels": [], "records": "r.csv"})", "").err,
              HasSubstr("unknown name: \"sid\""));
  for (const char* field : {R"("options": 70000)", R"("rec_ctrl": -1)", R"("version": 2.7)", R"("sID": 5)"}) {
    EXPECT_THAT(make(std::string(R"({"startTime": 1, "channels": [], "records": "r.csv", "mission": {)") + field + "}}",
                     "time_ms\n")
                    .err,
                HasSubstr("does not fit"));
  }
  EXPECT_THAT(make(good, "time_ms,T\n-1,1\n").err, HasSubstr("a time lies in"));
  const std::string nest(200000, '[');
  EXPECT_THAT(make(R"({"mission": )" + nest, "").err, HasSubstr("nested too deep"));
  EXPECT_EQ(make("{", "").status, 3);
  EXPECT_EQ(make(R"({"startTime": "x"})", "").status, 3);
  EXPECT_FALSE(std::filesystem::exists(Folder / "made.kshock"));
  static_cast<void>(make(good, "time_ms,T\n0,1\n"));
  EXPECT_EQ(Kshock({"make", File("s.json"), File("no folder/made.kshock")}).status, 4);
  EXPECT_EQ(Kshock({"make", File("s.json"), File("r.csv")}).status, 2) << "the source is not overwritten";
}

TEST_F(KshockCommands, MakeRefusesTextsThatAFileCannotKeepAndNamesTheField) {
  static_cast<void>(SaveText("r.csv", "time_ms\n"));
  const auto make = [this](const std::string& fields) {
    return Kshock(
        {"make", SaveText("s.json", R"({"startTime": 1, "records": "r.csv", )" + fields + "}"), File("made")});
  };
  const std::string most(65533, 'x');  // the count takes two bytes of the block
  const std::pair<std::string, const char*> refused[] = {
      {R"("channels": [], "mission": {"sTitle": "\u4E2D"})", "\"sTitle\" has a character"},
      {R"("channels": ["T", "\u2192"])", "\"channels\" has a character"},
      {R"("channels": [], "creator": ")" + most + "xxx\"", "\"creator\" is too long"},  // 65,536 counts as 0
      {R"("channels": ["T", ")" + most + "\"]", "\"channels\" is too long"},
      {R"("channels": [], "mission": {"sOperator": "x", "sID": ")" + most + "\"}", "\"sID\" is too long"}};
  for (const auto& [fields, complaint] : refused) {
    const TRun run = make(fields);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr(complaint));
    EXPECT_FALSE(std::filesystem::exists(Folder / "made"));
  }
  EXPECT_EQ(make(R"("channels": [], "creator": ")" + most + "\"").status, 0);
}

TEST_F(KshockCommands, TheDemoIsAPlausibleMissionAndTheSameForASeed) {
  for (const auto& [name, seed] : {std::pair("a", "1"), {"b", "1"}, {"c", "2"}}) {
    ASSERT_EQ(Kshock({"demo", File(name), "--sensors", "1000", "--seed", seed}).status, 0);
  }
  EXPECT_EQ(BytesOfFile(File("a")), BytesOfFile(File("b")));
  EXPECT_NE(BytesOfFile(File("a")), BytesOfFile(File("c")));

  ASSERT_FALSE(ReadFile(Folder / "a").extent.damaged);
  EXPECT_TRUE(MissionData.bValid && EventList.ValidCreator);
  ASSERT_EQ(EventList.Count(), 300U);
  std::size_t clipped = 0;
  std::size_t falls = 0;
  double lastStart = 0;
  for (const TEvent& event : EventList.Events()) {
    EXPECT_GE(event.GetStartTime(), lastStart);
    EXPECT_LT(event.GetStartTime(), 10 * 86400000.0);
    lastStart = event.GetStartTime();
    EXPECT_GT(event.Max, MissionData.adxl_level_on) << "event " << event.ID;
    EXPECT_GE(event.Count(), 160U);
    EXPECT_LE(event.Count(), 960U);
    clipped += event.MaxSingle == 16;
    falls += std::ranges::count_if(event.Values(), [](const TEventValue& v) {
               return v.zvalue < 0.3 && std::fabs(v.zvalue) < 0.3;
             }) > 300;
  }
  EXPECT_GT(clipped, 5U);
  EXPECT_EQ(falls, 1U);
  ASSERT_EQ(SensorList.Count(), 12U);
  for (const TSensor& sensor : SensorList.Sensors()) EXPECT_EQ(sensor.Count(), 1000U) << sensor.Name;

  ASSERT_EQ(Kshock({"demo", File("sized"), "--events", "7", "--samples", "11", "--sensors", "0"}).status, 0);
  ReadFile(Folder / "sized");
  ASSERT_EQ(EventList.Count(), 7U);
  EXPECT_EQ(EventList.GetItem(6).Count(), 11U);
  EXPECT_EQ(Kshock({"demo", File("no folder/x")}).status, 4);
}

// Ten samples at rest, a half-sine of 50 g and 11 ms on y at 10 kHz, rest again; then an event without a time step.
TTestRecording HalfSineRecording() {
  std::vector<TTestRecord> records;
  for (int i = -10; i < 200; ++i) {
    const double g = i >= 0 && i <= 110 ? 50 * std::sin(3.14159265358979 * i / 110) : 0;
    records.push_back({1000 + i / 10.0, {0, static_cast<float>(g), 0}});
  }
  records.push_back({1100, {kEnd, kEnd, kEnd}});
  for (int i = 0; i < 2; ++i) records.push_back({2000, {0, 9, 0}});
  return TTestRecording().Creator().MissionHeader(0.5, 0.5).Channels({"ACC x", "ACC y", "ACC z"}).Data(records);
}

std::vector<std::vector<std::string>> RowsOf(const std::string& csv) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(csv);
  for (std::string line; std::getline(lines, line);) {
    rows.emplace_back();
    for (std::size_t at = 0; at + 1 < line.size(); at = line.find(',', at) + 1) {
      rows.back().push_back(line.substr(at + 1, line.find("\",", at) - at - 1));
    }
  }
  return rows;
}

TEST_F(KshockCommands, SrsPrintsTheResponseWithHowFarItCanBeTrusted) {
  const std::string file = Save("pulse.kshock", Deflated(HalfSineRecording().content));
  const auto srs = [&file](std::vector<std::string> more) {
    std::vector<std::string> arguments = {"srs", file, "--event", "0", "--frequencies", "20,100,1000.5,3000"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const TRun run = Kshock(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return RowsOf(run.out);
  };
  const auto rows = srs({});
  EXPECT_THAT(rows[0], testing::ElementsAre("Frequency (Hz)", "X (g)", "Y (g)", "Z (g)", "Total (g)", "Range"));
  ASSERT_EQ(rows.size(), 5);
  EXPECT_NEAR(std::stod(rows[1][2]), 39.15236531273329, 1e-5);
  EXPECT_NEAR(std::stod(rows[2][4]), 79.55872589889726, 1e-5);
  EXPECT_EQ(rows[2][5], "valid");
  EXPECT_EQ(rows[3][5], "rough");
  EXPECT_THAT(rows[4], testing::ElementsAre("3000", "", "", "", "", "none"));
  const auto velocity = srs({"--response", "pseudo-velocity"});
  EXPECT_EQ(velocity[0][2], "Y (m/s)");
  EXPECT_NEAR(std::stod(velocity[2][2]), 1.2391592322923175, 1e-7);
  EXPECT_NEAR(std::stod(srs({"--sign", "negative"})[1][2]), 33.45490045410275, 1e-5);
  EXPECT_LT(std::stod(srs({"--q", "5"})[2][2]), 79);

  const auto octaves = RowsOf(Kshock({"srs", file, "--event", "all", "--octave", "3", "--to", "2500"}).out);
  EXPECT_NEAR(std::stod(octaves[1][0]), 10 * std::cbrt(128), 1e-12) << "the first third above 1/(20.9 ms)";
  EXPECT_NEAR(std::stod(octaves.back()[0]), 1280 * std::cbrt(4), 1e-9);
}

TEST_F(KshockCommands, SrsAndPulseSayWhatIsMissing) {
  const std::string file = Save("pulse.kshock", Deflated(HalfSineRecording().content));
  const TRun all = Kshock({"srs", file, "--event", "all", "--frequencies", "1"});
  EXPECT_EQ(all.status, 0);
  EXPECT_THAT(all.err, HasSubstr("Envelope: 1 of 2 events left out; event 1: The times of the samples repeat"));
  EXPECT_THAT(all.err, HasSubstr("below 47.847 Hz (1/duration) the record is shorter than a period"));
  for (const std::vector<std::string>& nothing :
       {std::vector<std::string>{"srs", file, "--event", "1"}, {"srs", file, "--event", "0", "--from", "2600"}}) {
    const TRun run = Kshock(nothing);
    EXPECT_EQ(run.status, 6);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("No response spectrum. Event "));
  }
  const TRun pulse = Kshock({"pulse", file, "--event", "1"});
  EXPECT_EQ(pulse.status, 6);
  EXPECT_EQ(RowsOf(pulse.out)[1].back(), "The times of the samples repeat or go back.");
  EXPECT_THAT(pulse.err, HasSubstr("Event 1 has no pulse. The times"));
  EXPECT_EQ(Kshock({"pulse", file, "--event", "2"}).status, 2);
  for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--event", "0", "--q", "0.5"},
                                                {"--event", "some"},
                                                {"--event", "0", "--octave", "5"},
                                                {"--event", "0", "--frequencies", "10,,20"},
                                                {"--event", "0", "--frequencies", ""},
                                                {"--event", "0", "--from", "20", "--to", "10"},
                                                {"--event", "0", "--sign", "fwmaximax"},
                                                {"--event", "0", "--frequencies", "10,-20"},
                                                {"--event", "0", "--frequencies", "10", "--from", "5"},
                                                {"--event", "0", "--to", "inf"},
                                                {}}) {
    std::vector<std::string> arguments = {"srs", file};
    arguments.insert(arguments.end(), wrong.begin(), wrong.end());
    EXPECT_EQ(Kshock(arguments).status, 2) << testing::PrintToString(wrong);
  }
}

TEST_F(KshockCommands, PulseAndTheTableOfShockAnalysisShowTheSameFigures) {
  const std::string file = Save("pulse.kshock", Deflated(HalfSineRecording().content));
  const TRun run = Kshock({"pulse", file});
  EXPECT_EQ(run.status, 0) << "one event has a pulse";
  const auto rows = RowsOf(run.out);
  ASSERT_EQ(rows.size(), 3);
  ASSERT_EQ(rows[1].size(), rows[0].size());
  EXPECT_NEAR(std::stod(rows[1][5]), 3.43371 * std::cos(std::asin(0.1)), 0.02);
  EXPECT_EQ(rows[1][9], "Y-pos");
  EXPECT_EQ(rows[1][10], "Y-neg") << "the sensor reads the reaction";
  EXPECT_THAT(rows[1].back(), testing::StartsWith("It cannot tell rest from fall"));
  const auto table = RowsOf(Kshock({"table", file, "analysis", "--order", "DeltaVASC"}).out);
  EXPECT_EQ(table[1][0], "1") << "no velocity change is below every one";
  EXPECT_NEAR(std::stod(table[2][2]), std::stod(rows[1][5]), 1e-6);
  EXPECT_EQ(table[2][6], "Y-pos");
  EXPECT_EQ(Kshock({"table", file, "analysis", "--order", "MaxAccDesc"}).status, 2);
  EXPECT_THAT(Kshock({"info", file}).out, HasSubstr("Velocity change        3.4"));
}

}  // namespace
