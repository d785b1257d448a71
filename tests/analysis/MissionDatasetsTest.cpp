#include "analysis/uMissionDatasets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/uMissionSummary.h"
#include "base/uDateTime.h"

using testing::ElementsAre;

namespace {

class TLoggingProgress final : public IProgress {
 public:
  void SetStatus(std::string_view text) override { Log.emplace_back(text); }
  void SetPosition(double position) override { Log.push_back(std::to_string(static_cast<int>(position))); }
  void ProcessMessages() override { Log.emplace_back("messages"); }
  std::vector<std::string> Log;
};

// A mission without a header, so ToT counts from 6 g and IoT from 1 g; the events stand a minute apart.
struct TMission {
  TMissionData data;
  TEventList events;
  TSensorList sensors;
  TDatasetOptions options;
  TLoggingProgress progress;
  TMissionDatasets tables;

  TMission() { events.StartTime = 45123.25; }
  // Stays at a height for so many milliseconds, between two samples of 0 g.
  void AddEvent(float height, int ms = 1) {
    const double start = 60000.0 * static_cast<double>(events.Count());
    events.NewEvent();
    for (int i = 0; i <= ms + 2; ++i) events.AddValues(start + i, 0, 0, i == 0 || i == ms + 2 ? 0 : height);
  }
  void Load() { LoadKorvexFileData(data, events, sensors, options, progress, tables); }
};

std::vector<std::string> LabelsOf(const TDataset& table) {
  std::vector<std::string> labels;
  for (const TField& field : table.Fields()) labels.push_back(field.Label);
  return labels;
}

std::vector<std::string> ColumnOf(TDataset& table, std::string_view field) {
  std::vector<std::string> texts;
  for (table.First(); !table.Eof(); table.Next()) {
    texts.push_back(table.DisplayText(table.CurrentRow(), table.FindField(field).value()));
  }
  return texts;
}

TEST(MissionDatasets, FieldsStandForTheSensorsThatArePresent) {
  TMission mission;
  for (const char* name : {"Marker", "A2", "RH", "Battery", "Temperature", "L", "A1", "Temperature RH", "Pressure"}) {
    mission.sensors.Add(name);
  }
  mission.options.analogNames = {"Strain", "", "", ""};
  mission.Load();
  EXPECT_THAT(
      LabelsOf(mission.tables.Events),
      ElementsAre("ID", "Timestamp", "Acceleration max", "ToT total", "ToT max", "IoT total", "IoT max", "Temp.",
                  "Temp. RH", "Humidity", "Dew Point", "Light", "Pressure", "Battery", "Strain", "A2"));
  EXPECT_EQ(LabelsOf(mission.tables.Important), LabelsOf(mission.tables.Events));
  EXPECT_THAT(LabelsOf(mission.tables.Cards),
              ElementsAre("ID", "Date and Time", "Acceleration max", "ToT total", "ToT max", "IoT total", "IoT max",
                          "Chart", "Temperature", "Temperature (Pressure)", "Temperature (Humidity)", "Humidity",
                          "Dew Point", "Light", "Pressure", "Battery"));
  EXPECT_THAT(LabelsOf(mission.tables.Sensors), ElementsAre("ID", "Timestamp", "Temp.", "Temp. RH", "Humidity",
                                                            "Dew Point", "Pressure", "Light", "Strain", "A2"));
  EXPECT_THAT(LabelsOf(mission.tables.Battery), ElementsAre("ID", "Timestamp", "Battery"));
  for (const char* index : {"MaxAcc", "DBC", "Int", "DBCSM", "IntSM", "ID", "Timestamp", "Temp.", "Temp. RH", "Light",
                            "Pressure", "Humidity", "Battery", "DewPoint", "A1", "A2"}) {
    EXPECT_TRUE(mission.tables.Events.HasIndex(std::string(index) + "Desc")) << index;
    EXPECT_TRUE(mission.tables.Events.HasIndex(std::string(index) + "ASC")) << index;
  }
  EXPECT_FALSE(mission.tables.Events.HasIndex("Temp. PASC"));
  EXPECT_TRUE(mission.tables.Sensors.HasIndex("DewPointDesc"));
  EXPECT_FALSE(mission.tables.Sensors.HasIndex("BatteryASC"));

  TMission bare;
  bare.Load();
  EXPECT_EQ(bare.tables.Events.Fields().size(), 7U);
  EXPECT_EQ(bare.tables.Cards.Fields().size(), 16U);
  EXPECT_TRUE(bare.tables.Battery.Fields().empty());
}

TEST(MissionDatasets, RanksTheMostImportantEventsByOrderBy) {
  TMission mission;
  for (int i = 0; i < 25; ++i) mission.AddEvent(static_cast<float>(2 + (i * 7) % 25), 1 + (i * 3) % 8);
  const std::pair<int, const char*> orders[] = {
      {0, "IoT max"}, {1, "IoT total"}, {2, "ToT max"}, {3, "ToT total"}, {4, "Acceleration max"}};
  for (const auto& [orderBy, field] : orders) {
    mission.options.orderBy = orderBy;
    mission.Load();
    TDataset& important = mission.tables.Important;
    ASSERT_EQ(important.RecordCount(), 10U);
    const std::size_t column = important.FindField(field).value();
    for (std::size_t row = 1; row < 10; ++row) {
      EXPECT_GE(important.Single(row - 1, column), important.Single(row, column)) << field;
    }
    EXPECT_GT(important.Single(0, column), important.Single(9, column)) << field;
    EXPECT_EQ(mission.tables.Events.IndexName(), "TimestampASC");
  }
  EXPECT_EQ(ColumnOf(mission.tables.Important, "Acceleration max").front(), "26");
  mission.options.orderBy = 5;
  mission.Load();
  EXPECT_THAT(ColumnOf(mission.tables.Important, "ID"), ElementsAre("0", "1", "2", "3", "4", "5", "6", "7", "8", "9"));
  FillMostImportantEvents("MaxAccDesc", mission.tables);
  EXPECT_EQ(ColumnOf(mission.tables.Important, "Acceleration max").front(), "26");
}

TEST(MissionSummary, SumsTheMetricsAndNamesTheFirstOfTheMostIntense) {
  TMission mission;
  for (const float height : {3.0F, 8.0F, 8.0F, 2.0F}) mission.AddEvent(height);
  mission.sensors.Add("Temperature").AddValues(500000, 20);
  mission.Load();
  const TMissionSummary summary = SummarizeMission(mission.events, mission.tables.Metrics, mission.sensors);
  EXPECT_EQ(summary.samples, 16U);
  EXPECT_EQ(summary.mostIntense, 1U);
  EXPECT_EQ(summary.maxIot, 7);
  EXPECT_EQ(summary.iotTotal, 2 + 7 + 7 + 1);
  EXPECT_EQ(summary.totTotal, 2 + 2) << "two events reach 6 g";
  EXPECT_EQ(summary.firstTime, mission.events.StartTime);
  EXPECT_EQ(summary.lastTime, DateTimeOf(mission.events.StartTime, 500000));
}

TEST(MissionDatasets, EventsTakeTheLastOfTwoSensorsWithReadingsAndTheSensorsTableTheFirst) {
  TMission mission;
  mission.AddEvent(9);
  mission.sensors.Add("Temperature").AddValues(0, 20);
  mission.sensors.Add("Temperature").AddValues(0, 30);
  mission.sensors.Add("Temperature");
  mission.Load();
  EXPECT_THAT(ColumnOf(mission.tables.Events, "Temp."), ElementsAre("30"));
  EXPECT_THAT(ColumnOf(mission.tables.Cards, "Temperature"), ElementsAre("30"));
  EXPECT_THAT(ColumnOf(mission.tables.Sensors, "Temp."), ElementsAre("20"));
}

TEST(MissionDatasets, SensorRowsGoByPositionAndShortSensorsEndInNull) {
  TMission mission;
  mission.sensors.Add("Battery").AddValues(0, 4);
  mission.sensors.Add("Pressure").AddValues(0, 1000);
  TSensor& humidity = mission.sensors.Add("RH");
  for (int i = 0; i < 3; ++i) humidity.AddValues(1000.0 * i, 50);
  TSensor& temperature = mission.sensors.Add("Temperature");
  for (int i = 0; i < 2; ++i) temperature.AddValues(5000.0 * i, static_cast<float>(20 * (1 - i)));
  mission.Load();
  EXPECT_THAT(ColumnOf(mission.tables.Sensors, "Timestamp"),
              ElementsAre("2023-07-16 06:00:00", "2023-07-16 06:00:01", "2023-07-16 06:00:02"));
  EXPECT_THAT(ColumnOf(mission.tables.Sensors, "Temp."), ElementsAre("20", "0", ""));
  EXPECT_THAT(ColumnOf(mission.tables.Sensors, "Dew Point"), ElementsAre("15.6700000762939", "", ""));
  EXPECT_THAT(ColumnOf(mission.tables.Sensors, "Pressure"), ElementsAre("1000", "", ""));
  EXPECT_EQ(mission.tables.Battery.RecordCount(), 1U);

  TMission undriven;
  undriven.sensors.Add("Battery").AddValues(0, 4);
  undriven.sensors.Add("Pressure").AddValues(0, 1000);
  undriven.Load();
  EXPECT_EQ(undriven.tables.Sensors.RecordCount(), 0U);
  EXPECT_THAT(LabelsOf(undriven.tables.Sensors), ElementsAre("ID", "Timestamp", "Pressure"));
}

TEST(MissionDatasets, TimesFollowTheShortDateFormat) {
  TMission mission;
  mission.AddEvent(9);
  SetShortDateFormat("dd.mm.yy");
  mission.Load();
  SetShortDateFormat("yyyy-mm-dd");
  EXPECT_THAT(ColumnOf(mission.tables.Events, "Timestamp"), ElementsAre("16.07.23 06:00:00"));
  EXPECT_THAT(ColumnOf(mission.tables.Cards, "Date and Time"), ElementsAre("16.07.23 06:00:00.0"));
  ApplyDateFormat(mission.tables);
  EXPECT_THAT(ColumnOf(mission.tables.Important, "Timestamp"), ElementsAre("2023-07-16 06:00:00"));
}

TEST(MissionDatasets, ReportsProgress) {
  TMission mission;
  for (int i = 0; i < 101; ++i) mission.AddEvent(9);
  TSensor& temperature = mission.sensors.Add("Temperature");
  for (int i = 0; i < 2; ++i) temperature.AddValues(i, 20);
  mission.sensors.Add("Battery").AddValues(0, 4);
  mission.Load();
  EXPECT_THAT(
      mission.progress.Log,
      ElementsAre("Populating Shock Event Dataset...", "2", "Loading Shock Events (1 of 101)", "messages",
                  "Loading Shock Events (101 of 101)", "messages", "3", "4", "Populating the Shock Cards Dataset...",
                  "Loading Shock Cards (1 of 101)", "messages", "Loading Shock Cards (101 of 101)", "messages", "5",
                  "Populating Sensors Dataset...", "Loading Sensors data (1 of 2)", "messages",
                  "Populating the Battery Dataset...", "Loading Battery data (1 of 1)", "messages"));
}

TEST(DewPoint, FollowsTheLoggersFormula) {
  // Worked out with 40 decimal digits from v = RH·(61.1·7.5·T/(T+237.7))/100 and (237.7·ln v − 430.22)/(19.08 − ln v).
  EXPECT_FLOAT_EQ(DewPoint(20, 50), 15.672896F);
  EXPECT_FLOAT_EQ(DewPoint(1, 1), -59.472994F);
  for (const auto& [temperature, humidity] : {std::pair(0.0F, 50.0F), {-5.0F, 50.0F}, {20.0F, 0.0F}}) {
    EXPECT_TRUE(std::isnan(DewPoint(temperature, humidity)));
  }
}

}  // namespace
