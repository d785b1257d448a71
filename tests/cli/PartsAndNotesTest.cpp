#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "shell/uNotes.h"
#include "tests/support/uKshockRun.h"
#include "tests/support/uThreeEvents.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string kStairs = TEST_DATA "/stairs.kshock";

class Cut : public TKshockTest {};

// Without their IDs, which count from 0 in every recording.
std::vector<json> RowsBetween(const json& table, double from, double to) {
  std::vector<json> rows;
  for (json row : table["rows"]) {
    row.erase(0);
    if (row[0].get<double>() >= from && row[0].get<double>() <= to) rows.push_back(row);
  }
  return rows;
}

TEST_F(Cut, FiguresOfThePartAreThoseOfTheWholeRecording) {
  const std::string part = File("part.kshock");
  ASSERT_EQ(Kshock({"cut", kStairs, "--from", "2023-02-01 12:00", "--to", "14:00:00", part}).status, 0);
  const json whole = json::parse(Kshock({"dump", kStairs}).out);
  const json cut = json::parse(Kshock({"dump", part}).out);
  EXPECT_FALSE(cut["damaged"]);
  EXPECT_EQ(
      cut["mission"]["sTitle"],
      "Belt-worn logger, stairs up and down (cut from stairs.kshock: 2023-02-01 12:00:00 to 2023-02-01 14:00:00)");
  EXPECT_EQ(cut["startTime"], whole["startTime"]);
  EXPECT_EQ(cut["texts"], whole["texts"]);
  const double noon = 44958.5;
  for (const auto& [table, rows] : {std::pair{"events", 132U}, {"sensors", 720U}}) {
    const auto expected = RowsBetween(whole["tables"][table], noon - 1e-9, noon + 2.0 / 24 + 1e-9);
    EXPECT_EQ(expected.size(), rows) << table;
    EXPECT_EQ(RowsBetween(cut["tables"][table], 0, 1e9), expected) << table;
    EXPECT_EQ(cut["tables"][table]["fields"], whole["tables"][table]["fields"]);
  }
}

TEST_F(Cut, ADamagedRecordingIsCutFromWhatWasReadAndTheTitleSaysSo) {
  TTestRecording recording = ThreeEvents();
  recording.content.push_back(8);
  const std::string damaged = Save("damaged.kshock", Deflated(recording.content));
  const TRun run = Kshock({"cut", damaged, "--from", "2023-07-16 06:00:30", File("part.kshock")});
  EXPECT_EQ(run.status, 5);
  EXPECT_THAT(run.err, HasSubstr("damaged or cut short"));
  const json part = json::parse(Kshock({"dump", File("part.kshock")}).out);
  EXPECT_EQ(part["events"].size(), 2U);
  EXPECT_THAT(part["mission"]["sTitle"],
              StartsWith("Prüfstand (cut from the damaged damaged.kshock: 2023-07-16 06:00:30 to "));
}

TEST_F(Cut, ASensorThatTwoChannelListsNameKeepsItsReadings) {
  TTestRecording recording = TTestRecording().Creator().StartTime(45123).MissionHeader(2, 1);
  recording.Channels({"T"}).Data({{0, {20}}, {1000, {21}}}).Channels({"T"}).Data({{2000, {22}}});
  ASSERT_EQ(Kshock({"cut", Save("twice.kshock", Deflated(recording.content)), File("part.kshock")}).status, 0);
  const json part = json::parse(Kshock({"dump", File("part.kshock")}).out);
  ASSERT_EQ(part["sensors"].size(), 1U);
  EXPECT_EQ(part["sensors"][0]["samples"], 3);
  EXPECT_EQ(part["sensors"][0]["first"], 20);
}

TEST_F(Cut, NothingIsWrittenWhereThereIsNothingToWrite) {
  const std::string three = Save("three.kshock", Deflated(ThreeEvents().content));
  const std::string part = SaveText("part.kshock", "older");
  const std::string invalid = Save("invalid.kshock", Deflated(TTestRecording().Creator("unknown").content));
  EXPECT_EQ(Kshock({"cut", three, "--from", "2024-01-01", "--to", "2024-01-02", part}).status, 6);
  EXPECT_EQ(Kshock({"cut", three, "--from", "2024-01-01", part}).status, 6);
  EXPECT_EQ(Kshock({"cut", three, "--to", "2022-01-01", part}).status, 6);
  EXPECT_EQ(Kshock({"cut", three, "--from", "noon", part}).status, 2);
  EXPECT_EQ(Kshock({"cut", three, "--from", "06:01", "--to", "2023-07-16 06:00:30", part}).status, 2);
  EXPECT_EQ(Kshock({"cut", three, three}).status, 2);
  EXPECT_EQ(Kshock({"cut", invalid, part}).status, 1);
  const std::string timeless = Save("timeless.kshock", Deflated(ThreeEvents().StartTime(std::nan("")).content));
  EXPECT_EQ(Kshock({"cut", timeless, part}).status, 6);
  EXPECT_EQ(Kshock({"cut", three, File("no/folder.kshock")}).status, 4);
  EXPECT_EQ(BytesOfFile(part).size(), 5U);
}

class Notes : public TKshockTest {
 protected:
  // Events begin at 0, 60 and 120 s.
  const std::string Three = Save("three.kshock", Deflated(ThreeEvents().content));
  const std::string Kept = Three + ".notes.json";
  [[nodiscard]] json Read() const {
    const TBytes bytes = BytesOfFile(Kept);
    return json::parse(bytes.begin(), bytes.end());
  }
};

TEST_F(Notes, LabelsGoInAndComeOutAgain) {
  const std::string lines = "0.000\t0.000\tarrived wet\n60.000\t60.005\tfork lift\n90.000\t95.500\t\n";
  const std::string labels = SaveText("labels.txt", lines + "\\\t100\t200\n");
  EXPECT_EQ(Kshock({"notes", Three, "--from", labels}).out, "3 notes added, 0 already there\n");
  EXPECT_EQ(Kshock({"notes", Three}).out, lines);
  EXPECT_EQ(Kshock({"notes", Three, "--from", labels}).out, "0 notes added, 3 already there\n");
  EXPECT_THAT(
      Kshock({"info", Three}).out,
      HasSubstr(
          "  Note                   arrived wet\n  Note                   event 1, 2023-07-16 06:01:00: fork lift\n"
          "  Note                   2023-07-16 06:01:30 to 2023-07-16 06:01:35: \n"));
  ASSERT_EQ(Kshock({"notes", Three, "--to", File("events.tsv")}).status, 0);
  const TBytes table = BytesOfFile(File("events.tsv"));
  EXPECT_EQ(std::string(table.begin(), table.end()),
            "onset\tduration\ttext\n0.000\t0.000\tarrived wet\n60.000\t0.005\tfork lift\n90.000\t5.500\t\n");
  EXPECT_EQ(Kshock({"notes", Three, "--from", File("events.tsv")}).out, "0 notes added, 3 already there\n");
  EXPECT_EQ(Kshock({"notes", Three, "--from", SaveText("old.txt", "1\t2\tn\xE4sse\n")}).out,
            "1 note added, 0 already there\n");
  EXPECT_THAT(Kshock({"notes", Three}).out, HasSubstr("1.000\t2.000\tnässe\n"));
  const TBytes recording = BytesOfFile(Three);
  for (const std::string& input : {Three, Three + ".notes.json"}) {
    EXPECT_EQ(Kshock({"notes", Three, "--to", input}).status, 2) << input;
  }
  EXPECT_EQ(BytesOfFile(Three), recording);
  EXPECT_EQ(Read()["notes"].size(), 4U);
  EXPECT_EQ(Read()["recording"]["size"], BytesOfFile(Three).size());
}

TEST_F(Notes, NotesForAnotherContentStayWithAWarning) {
  ASSERT_EQ(Kshock({"notes", Three, "--from", SaveText("labels.txt", "60\t60\tfork lift\n")}).status, 0);
  Save("three.kshock", Deflated(ThreeEvents().Block(99, {1}).content));
  const TRun info = Kshock({"info", Three});
  EXPECT_EQ(info.status, 0);
  EXPECT_THAT(info.err, HasSubstr("another content"));
  EXPECT_THAT(info.out, HasSubstr("fork lift"));
  Kshock({"notes", Three, "--from", SaveText("labels.txt", "61\t61\tmore\n")});
  EXPECT_THAT(Kshock({"info", Three}).err, HasSubstr("another content")) << "a new note does not hide that";
}

TEST_F(Notes, AFileThatCannotBeUnderstoodIsNeverReplaced) {
  const std::string labels = SaveText("labels.txt", "60\t60\tfork lift\n");
  for (const char* text : {"", "{", "[]", "{\"notes\": 1}", "{\"schema\": 2, \"notes\": []}"}) {
    SaveText("three.kshock.notes.json", text);
    EXPECT_EQ(Kshock({"notes", Three, "--from", labels}).status, 3) << text;
    EXPECT_EQ(BytesOfFile(Kept).size(), std::string_view(text).size()) << text;
    EXPECT_EQ(Kshock({"info", Three}).status, 0) << text;
  }
  SaveText("three.kshock.notes.json", "{}");
  for (const char* text : {"60", "60\tx\ty", "2\t1\tback"}) {
    EXPECT_EQ(Kshock({"notes", Three, "--from", SaveText("labels.txt", text)}).status, 3) << text;
  }
  EXPECT_EQ(BytesOfFile(Kept).size(), 2U);
}

TEST_F(Notes, WhatAnotherProgramWroteMeanwhileIsMergedByEntry) {
  SaveText("three.kshock.notes.json", R"({"own": 1, "notes": [
      {"id": "a", "text": "A", "colour": "red"}, {"id": "b", "text": "B"}, {"id": "c", "text": "C"}, {"odd": true}]})");
  TNotes notes(Three, {});
  ASSERT_EQ(notes.Items().size(), 3U);
  TNote changed = notes.Items()[0];
  changed.text = "A2";
  notes.Change(changed);
  notes.Remove("b");
  notes.Remove("c");
  notes.Add({.text = "D"});
  SaveText("three.kshock.notes.json", R"({"own": 2, "notes": [{"id": "a", "text": "A3", "colour": "blue"},
      {"id": "b", "text": "B2"}, {"id": "c", "text": "C"}, {"odd": true}, {"id": "e", "text": "E"}]})");
  notes.Save();
  std::vector<std::string> texts;
  for (const TNote& note : notes.Items()) texts.push_back(note.text);
  EXPECT_THAT(texts, testing::UnorderedElementsAre("A2", "B2", "D", "E")) << "b was changed, so it is not removed";
  const json document = Read();
  EXPECT_EQ(document["own"], 2);
  EXPECT_EQ(document["notes"][0]["colour"], "blue");
  EXPECT_EQ(document["notes"][2], json({{"odd", true}}));
}

TEST_F(Notes, OnlyFilesThatCannotBeReadAreKeptAside) {
  SaveText("three.kshock.notes.json", "{");
  const auto kept = TNotes::KeepUnreadableAside(Three, Folder.Path());
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(BytesOfFile(kept[0]).size(), 1U);
  TNotes notes(Three, Folder.Path());
  notes.Add({.text = "A"});
  notes.Save();
  EXPECT_TRUE(TNotes::KeepUnreadableAside(Three, Folder.Path()).empty());
  EXPECT_EQ(Read()["notes"].size(), 1U);
}

TEST_F(Notes, WithoutItsChecksumARecordingIsKnownByItsSizeUntilItIsComputed) {
  TNotes notes(Three, {});
  notes.Add({.text = "A"});
  notes.Save();
  EXPECT_FALSE(Read()["recording"].contains("sha256"));
  EXPECT_EQ(TNotes(Three, {}).WhyOtherRecording(), "");
  notes.SetChecksum("1234");
  notes.Save();
  EXPECT_EQ(Read()["recording"]["sha256"], "1234");
  notes.SetChecksum("5678");
  EXPECT_THAT(notes.WhyOtherRecording(), HasSubstr("another content"));
}

TEST_F(Notes, NotesGoIntoTheSettingsFolderWhereTheRecordingsFolderRefusesThem) {
  std::error_code error;  // where there are no links
  std::filesystem::create_symlink(File("no/such/folder"), Kept,
                                  error);  // stands for a folder without permission to write
  if (error) GTEST_SKIP();
  TNotes notes(Three, Folder.Path());
  notes.Add({.text = "kept elsewhere"});
  notes.Save();
  EXPECT_EQ(TNotes(Three, Folder.Path()).Items().size(), 1U);
  std::filesystem::remove(Kept);
  TNotes writable(Three, Folder.Path());
  writable.Add({.text = "beside"});
  writable.Save();
  EXPECT_EQ(TNotes(Three, {}).Items().size(), 2U) << "both are beside the recording now";
}

}  // namespace
