// The settings' file, the colours in it, and what the settings make of a cell.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "base/uFiles.h"
#include "base/uIniFile.h"
#include "shell/uAlarmMarks.h"
#include "shell/uColourNames.h"
#include "shell/uSettingsCommands.h"
#include "shell/uSettingsSchema.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uTestRecording.h"

using testing::HasSubstr;

namespace {

class SettingsFile : public testing::Test {
 protected:
  void Write(const std::string& text) { std::ofstream(FPath, std::ios::binary) << text; }
  std::string Text() {
    std::ifstream file(FPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string Read() {
    ReadSettings(FFolder.Path(), FScreen);
    return FLog.Take();
  }

  TTempFolder FFolder;
  std::filesystem::path FPath = FFolder / "settings.ini";
  TCallLog FLog;
  TFakeControls FScreen{FLog};
};

TEST_F(SettingsFile, WithoutAFileNothingIsSetAndTheFirstCloseWritesEveryKey) {
  EXPECT_EQ(Read(), "");
  WriteSettings(FFolder.Path(), FScreen);
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

TEST_F(SettingsFile, EveryControlComesBackAndTogglesAreClickedOnce) {
  TFakeControls changed{FLog};
  int number = 0;
  for (const TSetting& row : Settings()) {
    TControlValue& value = changed.Values[std::string(row.control)];
    ++number;
    if (auto* on = std::get_if<bool>(&value)) *on = !*on;
    if (auto* index = std::get_if<int>(&value)) *index = *index == 1 ? 0 : 1;
    if (auto* limit = std::get_if<double>(&value)) *limit = number + 0.1;
    if (auto* text = std::get_if<std::string>(&value)) {
      *text =
          row.type == TSettingType::Colour ? fmt::format("$00{:06X}", number) : fmt::format(" Name {} = ü;", number);
    }
  }
  WriteSettings(FFolder.Path(), changed);
  const std::string log = Read();
  for (const TSetting& row : Settings()) {
    const bool restored = FScreen.Value(row.control) == changed.Value(row.control);
    EXPECT_EQ(restored, row.type != TSettingType::WriteOnly) << row.control;
  }
  EXPECT_EQ(FScreen.Value("swtHPFilter"), TControlValue(false)) << "it always starts off";
  EXPECT_THAT(log, HasSubstr("click barbtnlrgAlarm; set cmbSettingsTimeDec; "));
  EXPECT_THAT(Read(), testing::Not(HasSubstr("click"))) << "nothing flips back";
}

TEST_F(SettingsFile, WhatDoesNotParseTakesItsDefaultAndWhatIsUnknownStays) {
  Write(
      "[Mine]\nkey = 1\n[Alarm]\nAcc. Min = low\nTemp. Max = 1e999\nAcc. Max = 7\nActive = yes\nExtra = x\n"
      "[Date]\nDate Format = 99\n[Colors]\nAcc. X Series = mauve\nAcc. Y Series = CLNAVY\nA4=$000000FF\n");
  Read();
  EXPECT_EQ(FScreen.Value("dxBarSpinAlarmAccMin"), TControlValue(-6.0));
  EXPECT_EQ(FScreen.Value("dxBarSpinAlarmTempMax"), TControlValue(40.0));
  EXPECT_EQ(FScreen.Value("dxBarSpinAlarmAccMax"), TControlValue(7.0));
  EXPECT_EQ(FScreen.Value("barbtnlrgAlarm"), TControlValue(false));
  EXPECT_EQ(FScreen.Value("cmbSettingsDateTimeFormat"), TControlValue(99)) << "as read; the list rejects it";
  EXPECT_EQ(FScreen.Value("ccmbShockX"), TControlValue("clBlue"));
  EXPECT_EQ(FScreen.Value("ccmbShockY"), TControlValue("clNavy"));
  EXPECT_EQ(FScreen.Value("ccmbSensorsA4"), TControlValue("clRed"));
  WriteSettings(FFolder.Path(), FScreen);
  EXPECT_THAT(Text(), testing::StartsWith("[Mine]\nkey = 1\n"));
  EXPECT_THAT(Text(), HasSubstr("Extra = x\n"));
}

TEST_F(SettingsFile, WhatCannotBeReadOrMakesNoSenseIsKeptAsideAndSaidOnce) {
  using namespace std::string_literals;
  const std::string texts[] = {std::string(2'000'000, 'x'), "[Date]\nDate Format=3\0"s, "\xFF\xFE[\0D\0a\0"s,
                               "somebody's notes\n", "[Mine]\nDate Format=3\n"};
  for (const std::string& text : texts) {
    Write(text);
    EXPECT_THAT([this] { Read(); }, testing::ThrowsMessage<std::runtime_error>(HasSubstr("kept as"))) << text.size();
    EXPECT_EQ(FScreen.Value("cmbSettingsDateTimeFormat"), TControlValue(0)) << text.size();
    EXPECT_EQ(BytesOfFile(FFolder / "settings-kept.ini"), TBytes(text.begin(), text.end()));
    WriteSettings(FFolder.Path(), FScreen);
    EXPECT_EQ(TIniFile::Load(FPath).ReadInteger("Date", "Date Format", 9), 0);
    for (const char* name : {"settings.ini", "settings-kept.ini"}) std::filesystem::remove(FFolder / name);
  }
  std::filesystem::create_directories(FPath / "mine");
  EXPECT_THROW(Read(), std::runtime_error);
  EXPECT_TRUE(std::filesystem::is_directory(FFolder / "settings-kept.ini/mine"));
  Write("");
  EXPECT_NO_THROW(Read());
}

TEST(Quantities, HaveControlsThatAreSettingsOfTheirKind) {
  for (const TQuantityRow* row : kColouredSensors) {
    EXPECT_EQ(FindSetting(row->colourControl).type, TSettingType::Colour) << row->colourControl;
  }
  for (const TQuantityRow* row : kAnalogInputs) {
    EXPECT_EQ(FindSetting(row->nameControl).def, row->sensorName) << "the name of an input is at first the channel's";
  }
  for (std::size_t i = 0; i < kQuantityCount; ++i) {
    EXPECT_EQ(FindSetting(kQuantityControls[i].format).type, TSettingType::Index);
    if (i >= kLimitedQuantityCount) continue;
    EXPECT_LT(std::stod(std::string(FindSetting(kQuantityControls[i].min).def)),
              std::stod(std::string(FindSetting(kQuantityControls[i].max).def)));
  }
}

TEST(ColourNames, AreWrittenAsNameOrAsBlueGreenRed) {
  EXPECT_EQ(TextFromColour(0xA6CAF0), "clSkyBlue");
  EXPECT_EQ(TextFromColour(0x123456), "$00563412");
  for (const std::uint32_t rgb : {0x000000U, 0x800000U, 0x123456U, 0xFFFFFEU}) {
    EXPECT_EQ(ColourFromText(TextFromColour(rgb)), rgb);
  }
  for (const char* none : {"", "$", "$1FFFFFF", "$12x", "red", "clNone", "#ff0000"}) {
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

  TCallLog FLog;
  TFakeControls FScreen{FLog};
  TDisplaySettings FDisplay = ReadDisplaySettings({}, FScreen);
};

TEST_F(Cells, AreMarkedBeyondALimitWhileTheAlarmIsOn) {
  EXPECT_EQ(Words(Draw("Battery", 2.4F)), "0 6 2.4 V");
  FDisplay.AlarmActive = true;
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

// 2.2, 2.4 and 2.6 are no singles; neither are most tenths.
TEST_F(Cells, AValueEqualToALimitAsItIsTypedIsInside) {
  FDisplay.AlarmActive = true;
  for (int tenths = -60; tenths <= 60; ++tenths) {
    const double limit = tenths / 10.0;
    const auto value = static_cast<float>(limit);
    FDisplay.Limits.fill({limit, limit});
    EXPECT_EQ(Draw("Battery", value).image, TCellImage::None) << limit;
    EXPECT_EQ(Draw("Temp.", value).image, TCellImage::Within) << limit;
    EXPECT_EQ(Draw("Battery", std::nextafter(value, 99.0F)).image, TCellImage::Alarm) << limit;
    EXPECT_EQ(Draw("Temp.", std::nextafter(value, -99.0F)).image, TCellImage::BelowMinimum) << limit;
  }
  FDisplay.Limits.fill({-1e300, 1e300});
  EXPECT_EQ(Draw("Battery", 3e38F).image, TCellImage::None) << "inside limits that no single reaches";
}

TEST_F(Cells, OfTemperaturesAlwaysSayWhereTheyStand) {
  for (const char* field : {"Temp.", "Temp. RH", "Temp. P", "Dew Point", "Temperature"}) {
    EXPECT_EQ(Words(Draw(field, -4.5F)), "4 22 -4.5") << field;
    EXPECT_EQ(Words(Draw(field, 40)), "5 22 40") << field;
    EXPECT_EQ(Words(Draw(field, 40.5F)), "3 22 40.5") << field;
  }
  FScreen.Values["cmbSettingsTempDec"] = 8;
  FScreen.Values["dxBarSpinAlarmTempMin"] = 21.0;
  FDisplay = ReadDisplaySettings({}, FScreen);
  EXPECT_EQ(Words(Draw("Dew Point", 20)), "4 22 20.000");
}

TEST(DisplaySettings, TakeTheAccelerationLimitsOfTheFileUnlessToldOtherwise) {
  TCallLog log;
  TFakeControls screen{log};
  TMissionData data;
  data.adxl_level_on = 3.5F;
  const auto limits = [&] { return ReadDisplaySettings(data, screen).Limits[0]; };
  EXPECT_EQ(limits(), (TLimits{-6, 6})) << "no file is shown";
  data.bValid = true;
  EXPECT_EQ(limits(), (TLimits{-3.5, 3.5}));
  screen.Values["chboxLoadAccAlarmFromFile"] = false;
  EXPECT_EQ(limits(), (TLimits{-6, 6}));
}

TEST(DisplaySettings, WithoutALevelInTheFileTheUsersLimitsCountAndCanBeEdited) {
  TCallLog log;
  TFakeControls screen{log};
  TShownMission mission;
  TMissionData data;
  data.bValid = true;
  const auto shown = [&] {
    mission.Display = ReadDisplaySettings(data, screen);
    ShowLimitsInForce(&mission, screen);
    return log.Take();
  };
  for (const float level : {0.0F, -2.0F, std::nanf(""), std::numeric_limits<float>::infinity()}) {
    data.adxl_level_on = level;
    EXPECT_EQ(shown(),
              "text lblAlarmAccFromFile \"the file names no level\"; enable dxBarSpinAlarmAccMin "
              "dxBarSpinAlarmAccMax; ")
        << level;
    EXPECT_EQ(mission.Display.Limits[0], (TLimits{-6, 6})) << level;
  }
  data.adxl_level_on = 2.5F;
  EXPECT_EQ(shown(),
            "text lblAlarmAccFromFile \"from the file: -2.5 … 2.5 g\"; disable dxBarSpinAlarmAccMin "
            "dxBarSpinAlarmAccMax; ");
  screen.Values["chboxLoadAccAlarmFromFile"] = false;
  EXPECT_EQ(shown(), "text lblAlarmAccFromFile \"\"; enable dxBarSpinAlarmAccMin dxBarSpinAlarmAccMax; ");
}

}  // namespace
