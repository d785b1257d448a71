#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "tests/support/uKshockRun.h"
#include "tests/support/uThreeEvents.h"

using nlohmann::json;
using testing::HasSubstr;

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
  EXPECT_THAT(part["mission"]["sTitle"], HasSubstr("(cut from the damaged damaged.kshock: 2023-07-16 06:00:30 to "));
}

TEST_F(Cut, NothingIsWrittenWhereThereIsNothingToWrite) {
  const std::string three = Save("three.kshock", Deflated(ThreeEvents().content));
  const std::string part = SaveText("part.kshock", "older");
  const std::string invalid = Save("invalid.kshock", Deflated(TTestRecording().Creator("unknown").content));
  EXPECT_EQ(Kshock({"cut", three, "--from", "2024-01-01", "--to", "2024-01-02", part}).status, 6);
  EXPECT_EQ(Kshock({"cut", three, "--from", "noon", part}).status, 2);
  EXPECT_EQ(Kshock({"cut", three, "--from", "06:01", "--to", "2023-07-16 06:00:30", part}).status, 2);
  EXPECT_EQ(Kshock({"cut", three, three}).status, 2);
  EXPECT_EQ(Kshock({"cut", invalid, part}).status, 1);
  EXPECT_EQ(Kshock({"cut", three, File("no/folder.kshock")}).status, 4);
  EXPECT_EQ(BytesOfFile(part).size(), 5U);
}

}  // namespace
