#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uProgress.h"
#include "shell/uOrderingCommands.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uThreeEvents.h"

namespace {

class Ordering : public testing::Test {
 protected:
  void SetUp() override { Show(ThreeEvents()); }
  void Show(const TTestRecording& recording) {
    Read(recording);
    TNoProgress progress;
    LoadKorvexFileData(FMission.Data, FMission.Events, FMission.Sensors, {}, progress, FMission.Tables);
    FillCompanion(FMission);
  }
  void Click(std::initializer_list<const char*> titles) {
    for (const char* title : titles) {
      FLog.Take();
      ShockGridTitleClick(FMission, title, FViews);
    }
  }
  static std::vector<int> Ids(TDataset& table) {
    std::vector<int> ids;
    for (table.First(); !table.Eof(); table.Next()) ids.push_back(table.Integer(table.CurrentRow(), 0));
    return ids;
  }

  TShownMission FMission;
  TCallLog FLog;
  TFakeViews FViews{FLog};
};

TEST_F(Ordering, TitleClicksSelectAnIndexInBothTablesAndItsFirstEvent) {
  const struct {
    std::initializer_list<const char*> titles;
    const char* index;
    const char* selected;
  } cases[] = {
      {{"ToT max"}, "DBCSMDesc", "2"},
      {{"ToT max", "ToT max"}, "DBCSMASC", "0"},
      {{"ToT max", "ToT max", "ToT max"}, "DBCSMDesc", "2"},
      {{"Acceleration max"}, "MaxAccDesc", "0"},
      {{"ToT total", "ToT total"}, "DBCASC", "1"},
      {{"IoT total"}, "IntDesc", "1"},
      {{"IoT max", "IoT max"}, "IntSMASC", "0"},
      {{"Timestamp"}, "TimestampDesc", "2"},
      {{"Timestamp", "ID"}, "TimestampASC", "0"},
      {{"IoT total", "ToT max", "IoT total"}, "IntDesc", "1"},
      {{"Temp."}, "Temp.Desc", "1"},
      {{"Dew Point", "Dew Point"}, "DewPointASC", "0"},
      {{"Battery"}, "BatteryDesc", "1"},
      {{"IoT total", "Chart"}, "IntDesc", "1"},
      {{"IoT total", "Light"}, "IntDesc", "1"},  // a column that this recording lacks
  };
  for (const auto& expected : cases) {
    SetUp();
    Click(expected.titles);
    const std::string where = expected.index;
    EXPECT_EQ(FMission.Tables.Events.IndexName(), where);
    EXPECT_EQ(FMission.CLDS.IndexName(), where);
    EXPECT_EQ(FLog.Take(),
              fmt::format("grid dbgShocks; grid dbgFilteredShocks; selected {0}; position {0}; ", expected.selected))
        << where;
  }
}

TEST_F(Ordering, TheCompanionsFirstRowIsTheOneSelected) {
  FMission.CLDS.SetShownRows({false, true, true});
  Click({"Acceleration max"});
  EXPECT_EQ(FMission.SelectedEvent, 1U) << "event 0 is filtered out";
}

TEST_F(Ordering, WithoutEventsNothingIsSelected) {
  Show(TTestRecording().Creator().MissionHeader(2, 2).Channels({"T"}).Data({{0, {1}}}));
  FMission.SelectedEvent = 0;
  Click({"ID"});
  EXPECT_EQ(FLog.Take(), "grid dbgShocks; grid dbgFilteredShocks; selected none; position none; ");
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FLog.Take(), "");
}

TEST_F(Ordering, SensorsAndBatteryToggleOnTheirOwn) {
  using TClick = void (*)(TShownMission&, std::string_view, IMissionViews&);
  const struct {
    TClick click;
    TDataset* table;
    const char* grid;
    const char* title;
    const char* indexKey;
    std::vector<int> descending;
  } cases[] = {
      {SensorsGridTitleClick, &FMission.Tables.Sensors, "DBGrid2", "Temp.", "Temp.", {1, 2, 0}},
      {SensorsGridTitleClick, &FMission.Tables.Sensors, "DBGrid2", "Dew Point", "DewPoint", {1, 2, 0}},
      {SensorsGridTitleClick, &FMission.Tables.Sensors, "DBGrid2", "Timestamp", "Timestamp", {2, 1, 0}},
      {BatteryGridTitleClick, &FMission.Tables.Battery, "DBGrid8", "Battery", "Battery", {1, 2, 0}},
      {BatteryGridTitleClick, &FMission.Tables.Battery, "DBGrid8", "Timestamp", "Timestamp", {2, 1, 0}},
  };
  for (const auto& [click, table, grid, title, key, descending] : cases) {
    for (const char* direction : {"Desc", "ASC", "Desc"}) {
      click(FMission, title, FViews);
      EXPECT_EQ(table->IndexName(), std::string(key) + direction);
    }
    EXPECT_EQ(Ids(*table), descending) << title;
    EXPECT_EQ(FLog.Take(), fmt::format("grid {0}; grid {0}; grid {0}; ", grid));
    click(FMission, "ID", FViews);
    EXPECT_EQ(FLog.Take(), "") << "a title that does not sort";
  }
  EXPECT_EQ(FMission.Tables.Events.IndexName(), "TimestampASC");
}

TEST_F(Ordering, OrderByRanksTheMostImportantEventsAndLeavesTheGridsOrder) {
  Click({"ToT total"});
  const std::vector<int> ranked[] = {{1, 2, 0}, {1, 0, 2}, {2, 1, 0}, {0, 2, 1}, {0, 1, 2}};
  for (int entry = 0; entry < 5; ++entry) {
    FLog.Take();
    OrderMostImportantBy(FMission, entry, FViews);
    EXPECT_EQ(Ids(FMission.Tables.Important), ranked[entry]) << entry;
    EXPECT_EQ(FLog.Take(), "grid dbgMostImportant; selected 0; report on 3; ");
    EXPECT_EQ(FMission.Tables.Events.IndexName(), "DBCDesc");
  }
  for (const int none : {-1, 5}) OrderMostImportantBy(FMission, none, FViews);
  EXPECT_EQ(FLog.Take(), "");
}

TEST_F(Ordering, SteppingInTimeIgnoresTheGridsOrderAndLeavesIt) {
  Click({"ToT total"});  // 0, 2, 1
  const std::pair<int, std::size_t> steps[] = {{1, 1}, {1, 2}, {1, 2}, {-1, 1}};
  for (const auto& [step, event] : steps) {
    StepEventInTime(FMission, step, FViews);
    EXPECT_EQ(FMission.SelectedEvent, event);
  }
  EXPECT_EQ(FMission.CLDS.IndexName(), "DBCDesc");
}

TEST_F(Ordering, SteppingFollowsTheGridAndStopsAtItsEnds) {
  Click({"ToT total"});  // 0, 2, 1
  const std::pair<int, std::size_t> steps[] = {{1, 2}, {1, 1}, {1, 1}, {-1, 2}, {-9, 0}, {9, 1}};
  for (const auto& [step, event] : steps) {
    StepEvent(FMission, step, FViews);
    EXPECT_EQ(FMission.SelectedEvent, event);
  }
  SelectEvent(FMission, 3, FViews);
  EXPECT_EQ(FMission.SelectedEvent, std::nullopt) << "there is no such event";
  StepEvent(FMission, 1, FViews);
  EXPECT_EQ(FMission.SelectedEvent, 0U) << "without a selection it begins at the first row";
}

}  // namespace
