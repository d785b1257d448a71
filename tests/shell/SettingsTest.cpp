// The settings file, the names of colours, and how the settings change the cells of grids.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "shell/uAlarmMarks.h"
#include "shell/uColourNames.h"
#include "shell/uSettingsCommands.h"
#include "shell/uSettingsSchema.h"
#include "shell/uSettingsStore.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uTestRecording.h"

using testing::HasSubstr;

namespace {

class SettingsFile : public testing::Test {
 protected:
  void Write(const std::string& text) { std::ofstream(FPath, std::ios::binary) << text; }
  std::string Text() {
    std::ifstream file(FPath);  // lines end as the system ends them
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::optional<TSettings> Read() { return ReadSettings(FFolder.Path()); }
  void WriteDefaults() { WriteSettings(FFolder.Path(), {}); }

  TTempFolder FFolder;
  std::filesystem::path FPath = FFolder / "settings.ini";
};

TEST_F(SettingsFile, WithoutAFileNothingIsReadAndTheFirstCloseWritesEveryKey) {
  EXPECT_EQ(Read(), std::nullopt);
  WriteDefaults();
  const std::string text = Text();
  std::size_t at = 0;
  // In the order of writing.
  for (const char* line : {"[General Settings]",
                           "Sync Confirmations = 1",
                           "Shock Chart Point Absorption = 1",
                           "[Date]",
                           "Date Format = 0",
                           "[Company]",
                           "Name = Korvex",
                           "[File&Folder]",
                           "Default File Filter = 0",
                           "[Alarm]",
                           "Active = 0",
                           "Load Acc. from File = 1",
                           "Acc. Min = -6",
                           "Acc. Max = 6",
                           "Temp. Min = -4",
                           "Temp. Max = 40",
                           "Pressure Min = 0",
                           "Pressure Max = 1000",
                           "RH Min = 30",
                           "RH Max = 60",
                           "Light Min = 0",
                           "Light Max = 1000",
                           "Battery Min = 2.5",
                           "Battery Max = 4.5",
                           "A1 Min = 0",
                           "A4 Max = 1000",
                           "[Value Decimal Formats]",
                           "Time = 3",
                           "Intesity = 2",
                           "A4 = 6",
                           "[Colors]",
                           "Acc. X Series = clBlue",
                           "A4 = clSkyBlue",
                           "[Analog Settings]",
                           "A1 Name = A1",
                           "A4 Name = A4",
                           "[Shock Events Chart]",
                           "Indicator Visibility = 1",
                           "Axis Zoom Lock = 1",
                           "[Selected Shock Event Chart]",
                           "HP Filtering = 0",
                           "Table Visibility = 0",
                           "Total Series Visibility = 0",
                           "Axis Zoom Lock = 1",
                           "[Sensors Chart]",
                           "Nearest Visibility = 0",
                           "Points Visibility = 1",
                           "Indicator Visibility = 1",
                           "Left Inner Axis Zoom Lock = 1",
                           "[Most Important Events]",
                           "Order By = 0"}) {
    const std::size_t found = text.find(std::string(line) + '\n', at);
    ASSERT_NE(found, std::string::npos) << line << " after\n" << text.substr(0, at);
    at = found;
  }
  EXPECT_EQ(std::ranges::count(text, '='), 85);
}

TEST_F(SettingsFile, EverySettingComesBackButTheHighPass) {
  TSettings changed;
  int number = 0;
  for (const TSetting& row : Settings()) {
    ++number;
    std::visit(TByType{[&](TFieldOf<bool> field) { field(changed) = !field(changed); },
                       [&](TFieldOf<int> field) { field(changed) = field(changed) == 1 ? 0 : 1; },
                       [&](TFieldOf<double> field) { field(changed) = number + 0.1; },
                       [&](TFieldOf<std::string> field) { field(changed) = fmt::format(" Name {} = ü;", number); },
                       [&](TFieldOf<std::uint32_t> field) { field(changed) = 0xAB00CD + (number << 8); }},
               row.field);
  }
  WriteSettings(FFolder.Path(), changed);
  auto read = Read();
  ASSERT_TRUE(read);
  EXPECT_FALSE(read->highPass) << "it always starts off";
  for (const TSetting& row : Settings()) {
    const bool restored = std::visit([&](auto field) { return field(*read) == field(changed); }, row.field);
    EXPECT_EQ(restored, row.control != "swtHPFilter") << row.control;
  }
}

TEST_F(SettingsFile, WhatDoesNotParseTakesItsDefaultAndWhatIsUnknownStays) {
  Write(
      "[Mine]\nkey = 1\n[Alarm]\nAcc. Min = low\nTemp. Max = 1e999\nAcc. Max = 7\nActive = yes\nExtra = x\n"
      "[Date]\nDate Format = 99\n[Colors]\nAcc. X Series = mauve\nAcc. Y Series = CLNAVY\nA4=$000000FF\n");
  TDisplaySettings read = Read().value().display;
  EXPECT_EQ(read.limits[0], (TLimits{-6, 7}));
  EXPECT_EQ(read.LimitsOf(TQuantity::Temperature).max, 40);
  EXPECT_FALSE(read.alarmActive);
  EXPECT_EQ(read.dateFormat, 99) << "as read; the list rejects it";
  EXPECT_EQ(read.DateFormat(), "yy-mm-dd");
  EXPECT_THAT(read.accelerationColours, testing::ElementsAre(0x0000FF, 0x000080, 0x008000, 0x000000));
  EXPECT_EQ(read.sensorColours.back(), 0xFF0000U);
  WriteDefaults();
  EXPECT_THAT(Text(), testing::StartsWith("[Mine]\nkey = 1\n"));
  EXPECT_THAT(Text(), HasSubstr("Extra = x\n"));
}

TEST_F(SettingsFile, AnUnusableFileIsKeptUnderAnotherName) {
  using namespace std::string_literals;
  const std::string texts[] = {std::string(2'000'000, 'x'), "[Date]\nDate Format=3\0"s, "\xFF\xFE[\0D\0a\0"s,
                               "somebody's notes\n", "[Mine]\nDate Format=3\n"};
  for (const std::string& text : texts) {
    Write(text);
    EXPECT_THROW(LoadSettings(FFolder.Path()), std::runtime_error);
    EXPECT_THAT([this] { Read(); }, testing::ThrowsMessage<std::runtime_error>(HasSubstr("kept as"))) << text.size();
    EXPECT_EQ(BytesOfFile(FFolder / "settings-kept.ini"), TBytes(text.begin(), text.end()));
    WriteDefaults();
    EXPECT_EQ(TIniFile::Load(FPath).ReadInteger("Date", "Date Format", 9), 0);
    for (const char* name : {"settings.ini", "settings-kept.ini"}) std::filesystem::remove(FFolder / name);
  }
  std::filesystem::create_directories(FPath / "mine");
  EXPECT_THROW(Read(), std::runtime_error);
  EXPECT_TRUE(std::filesystem::is_directory(FFolder / "settings-kept.ini/mine"));
  Write("");
  EXPECT_NO_THROW(Read());
}

TEST(ColourNames, AreWrittenAsNameOrAsBlueGreenRed) {
  EXPECT_EQ(TextFromColour(0xA6CAF0), "clSkyBlue");
  EXPECT_EQ(TextFromColour(0x123456), "$00563412");
  for (const std::uint32_t rgb : {0x000000U, 0x800000U, 0x123456U, 0xFFFFFEU}) {
    EXPECT_EQ(ColourFromText(TextFromColour(rgb)), rgb);
  }
  const std::pair<const char*, std::uint32_t> others[] = {{"255", 0xFF0000},      {"16711680", 0x0000FF},
                                                          {"0x00ff01", 0x01FF00}, {"clMoneyGreen", 0xC0DCC0},
                                                          {"clcream", 0xFFFBF0},  {"clLtGray", 0xC0C0C0}};
  for (const auto& [text, rgb] : others) EXPECT_EQ(ColourFromText(text), rgb) << text;
  EXPECT_EQ(TextFromColour(0x808080), "clGray") << "not its other name";
  for (const char* none : {"", "$", "0x", "-1", "12 3", "16777216", "$1FFFFFF", "$12x", "red", "clNone", "#ff0000"}) {
    EXPECT_EQ(ColourFromText(none), std::nullopt) << none;
  }
}

class Cells : public testing::Test {
 protected:
  TCellDrawing Draw(const std::string& field, float value) {
    TDataset table;
    const std::size_t at = table.AddField(field, TFieldType::Single);
    table.Append();
    table.SetSingle(at, value);
    return DrawCell(table, 0, at, FDisplay);
  }
  static std::string Words(const TCellDrawing& cell) {
    return fmt::format("{} {} {}", static_cast<int>(cell.image), cell.textOffset, cell.text);
  }

  TDisplaySettings FDisplay = DefaultSettings().display;
};

TEST_F(Cells, AreMarkedBeyondALimitWhileTheAlarmIsOn) {
  EXPECT_EQ(Words(Draw("Battery", 2.4F)), "0 6 2.4 V");
  FDisplay.alarmActive = true;
  EXPECT_EQ(Words(Draw("Battery", 2.4F)), "2 22 2.4 V");
  EXPECT_EQ(Words(Draw("Battery", 2.5F)), "0 6 2.5 V");
  EXPECT_EQ(Words(Draw("Humidity", 60)), "0 6 60 %RH") << "equal is inside";
  EXPECT_EQ(Words(Draw("Humidity", 60.1F)), "2 22 60.1 %RH");
  EXPECT_EQ(Words(Draw("Acceleration max", 6.00001F)), "2 22 6");
  EXPECT_EQ(Words(Draw("Pressure", 1000.5F)), "2 22 1000.5 mbar");
  EXPECT_EQ(Words(Draw("Light", -1)), "2 22 -1 lux");
  EXPECT_EQ(Words(Draw("A4", 1e6F)), "2 22 1000000.0");
  EXPECT_EQ(Words(Draw("ToT max", 1e6F)), "0 6 1000000 msec");
  EXPECT_EQ(Words(Draw("IoT total", 1.23456F)), "0 6 1.235");
  EXPECT_EQ(Words(Draw("Humidity", std::numeric_limits<float>::quiet_NaN())), "0 6 NAN %RH");
}

// A single holds 2.2, 2.4, 2.6 and most other tenths only nearly.
TEST_F(Cells, AValueEqualToItsTypedLimitIsInside) {
  FDisplay.alarmActive = true;
  for (int tenths = -60; tenths <= 60; ++tenths) {
    const double limit = tenths / 10.0;
    const auto value = static_cast<float>(limit);
    FDisplay.limits.fill({limit, limit});
    EXPECT_EQ(Draw("Battery", value).image, TCellImage::None) << limit;
    EXPECT_EQ(Draw("Temp.", value).image, TCellImage::Within) << limit;
    EXPECT_EQ(Draw("Battery", std::nextafter(value, 99.0F)).image, TCellImage::Alarm) << limit;
    EXPECT_EQ(Draw("Temp.", std::nextafter(value, -99.0F)).image, TCellImage::BelowMinimum) << limit;
  }
  FDisplay.limits.fill({-1e300, 1e300});
  EXPECT_EQ(Draw("Battery", 3e38F).image, TCellImage::None) << "inside limits that no single reaches";
}

TEST_F(Cells, OfTemperaturesAlwaysHaveAMark) {
  for (const char* field : {"Temp.", "Temp. RH", "Temp. P", "Dew Point", "Temperature"}) {
    EXPECT_EQ(Words(Draw(field, -4.5F)), "4 22 -4.5") << field;
    EXPECT_EQ(Words(Draw(field, 40)), "5 22 40") << field;
    EXPECT_EQ(Words(Draw(field, 40.5F)), "3 22 40.5") << field;
  }
  constexpr auto kTemperature = static_cast<std::size_t>(TQuantity::Temperature);
  FDisplay.formats[kTemperature] = 8;
  FDisplay.limits[kTemperature].min = 21;
  EXPECT_EQ(Words(Draw("Dew Point", 20)), "4 22 20.000");
}

TEST(DisplaySettings, TakeTheAccelerationLimitsOfTheFileUnlessToldOtherwise) {
  TDisplaySettings chosen = DefaultSettings().display;
  TMissionData data;
  data.adxl_level_on = 3.5F;
  const auto limits = [&] { return DisplayInForce(chosen, data).limits[0]; };
  EXPECT_EQ(limits(), (TLimits{-6, 6})) << "no file is shown";
  data.bValid = true;
  EXPECT_EQ(limits(), (TLimits{-3.5, 3.5}));
  chosen.accelerationFromFile = false;
  EXPECT_EQ(limits(), (TLimits{-6, 6}));
}

TEST(DisplaySettings, WithoutALevelInTheFileTheUsersLimitsCountAndCanBeEdited) {
  TCallLog log;
  TFakeControls screen{log};
  TShownMission mission;
  TMissionData data;
  data.bValid = true;
  const auto shown = [&] {
    mission.Display = DisplayInForce(mission.Settings.display, data);
    ShowLimitsInForce(&mission, screen);
    return log.Take();
  };
  for (const float level : {0.0F, -2.0F, std::nanf(""), std::numeric_limits<float>::infinity()}) {
    data.adxl_level_on = level;
    EXPECT_EQ(shown(),
              "text lblAlarmAccFromFile \"the file names no level\"; enable dxBarSpinAlarmAccMin "
              "dxBarSpinAlarmAccMax; ")
        << level;
    EXPECT_EQ(mission.Display.limits[0], (TLimits{-6, 6})) << level;
  }
  data.adxl_level_on = 2.5F;
  EXPECT_EQ(shown(),
            "text lblAlarmAccFromFile \"from the file: -2.5 … 2.5 g\"; disable dxBarSpinAlarmAccMin "
            "dxBarSpinAlarmAccMax; ");
  mission.Settings.display.accelerationFromFile = false;
  EXPECT_EQ(shown(), "text lblAlarmAccFromFile \"\"; enable dxBarSpinAlarmAccMin dxBarSpinAlarmAccMax; ");
}

}  // namespace
