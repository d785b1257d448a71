#include "shell/uLimitProfileFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "shell/uSettings.h"
#include "shell/uSettingsStore.h"
#include "tests/support/uTextFileTest.h"

using testing::HasSubstr;

namespace {

using enum TQuantity;
using enum TLimitSource;

class LimitProfileFile : public TTextFileTest<ReadLimitProfile> {
 protected:
  LimitProfileFile() : TTextFileTest("Fragile goods.ini") {}
};

const TJudgedLimits& Of(TQuantity quantity, const TVerdictLimits& limits) {
  return limits.at(static_cast<std::size_t>(quantity));
}

constexpr std::string_view kFragile =
    "; Goods of glass\n[Profile]\nName = Fragile\n\n[Alarm]\nAcc. Max = 10\nTemp. Min = 2.5\nRH Max = 60\n\n"
    "[allowed]\nAcc. Max = 3 events\nrh max = 2 h\nTemp. Min = 1 d 30 min 0.5 s\n"
    "[Product]\nCritical velocity change = 2.1\ncritical acceleration = 40\n";

TEST_F(LimitProfileFile, NamedLimitsAreChosenAndTheOthersHaveTheirDefaults) {
  const TLimitProfile profile = Read(kFragile);
  EXPECT_EQ(profile.name, "Fragile");
  EXPECT_EQ(Of(Acceleration, profile.limits), (TJudgedLimits{{-6, 10}, Default, User}));
  EXPECT_EQ(Of(Temperature, profile.limits), (TJudgedLimits{{2.5, 40}, User, Default}));
  EXPECT_EQ(Of(Humidity, profile.limits), (TJudgedLimits{{30, 60}, Default, User})) << "60 is also the default";
  EXPECT_EQ(Of(Battery, profile.limits), (TJudgedLimits{{2.5, 4.5}, Default, Default}));
  EXPECT_EQ(profile.allowedEvents, 3U);
  EXPECT_EQ(profile.product, (TFragility{2.1, 40}));
  EXPECT_EQ(profile.allowedTimes[static_cast<std::size_t>(Humidity)], (TAllowedTimes{0, 7200000}));
  EXPECT_EQ(profile.allowedTimes[static_cast<std::size_t>(Temperature)], (TAllowedTimes{88200500, 0}));
}

TEST_F(LimitProfileFile, AWrittenProfileReadsBackAndNamesWhatWasChosen) {
  TLimitProfile profile = Read(kFragile);
  profile.name = " Größe \"M\" ";
  profile.accelerationFromFile = true;
  WriteLimitProfile(FPath, profile);
  EXPECT_EQ(ReadLimitProfile(FPath), profile);
  const TBytes bytes = BytesOfFile(FPath);
  std::string text(bytes.begin(), bytes.end());
  std::erase(text, '\r');  // lines end as the system ends them
  EXPECT_THAT(text, HasSubstr("Acc. Max = 3 events\n"));
  EXPECT_THAT(text, HasSubstr("RH Max = 2 h\n"));
  EXPECT_THAT(text, HasSubstr("Temp. Min = 1 d 30 min 0.5 s\n"));
  EXPECT_THAT(text, testing::Not(HasSubstr("Battery")));
  profile.limits[0].values.min = 11;
  EXPECT_THROW(WriteLimitProfile(FPath, profile), std::runtime_error);
  EXPECT_EQ(BytesOfFile(FPath), bytes) << "the older file stays";
}

TEST_F(LimitProfileFile, TheSettingsAreAProfileThatAllowsNothing) {
  TSettings settings;
  settings.display.limits[static_cast<std::size_t>(Humidity)].max = 55;
  WriteSettings(FFolder.Path(), settings);
  const TLimitProfile profile = ReadLimitProfile(FFolder / kSettingsFile);
  EXPECT_EQ(profile.name, "settings");
  EXPECT_EQ(Of(Humidity, profile.limits), (TJudgedLimits{{30, 55}, Default, User}));
  EXPECT_EQ(Of(Pressure, profile.limits), (TJudgedLimits{{0, 1000}, Default, Default}));
  EXPECT_EQ(profile.allowedTimes, decltype(profile.allowedTimes)());

  TMissionData mission;
  EXPECT_EQ(Of(Acceleration, LimitsInForce(profile, mission)), (TJudgedLimits{{-6, 6}, Default, Default}));
  mission.bValid = true;
  mission.adxl_level_on = 4;
  EXPECT_EQ(Of(Acceleration, LimitsInForce(profile, mission)), (TJudgedLimits{{-4, 4}, File, File}));
  const TLimitProfile own = Read("[Alarm]\nAcc. Max=7\n[Skin]\nName=x\n");
  EXPECT_EQ(Of(Acceleration, LimitsInForce(own, mission)), (TJudgedLimits{{-6, 7}, Default, User}));
}

TEST_F(LimitProfileFile, WhatIsWrongIsNamed) {
  const std::string head = "[Profile]\nName=a\n[Alarm]\nRH Max=60\nTemp. Max=30\nAcc. Max=9\n";
  const std::pair<std::string, std::string> wrong[] = {
      {"", "The file has no section [Alarm]."},
      {"[Profile]\nName=a\n", "The file has no section [Alarm]."},
      {"[Profile]\n[Alarm]\n", "[Profile] Name must be a line of 1 to 255 bytes."},
      {"[Alarm]\n[Allowed]\n", "The file has a section [Allowed], but no [Profile]."},
      {"[Alarm]\nRH Mx=3\n", "[Alarm] has a key that is not known: \"RH Mx\"."},
      {"[Alarm]\nRH Max 3\n", "Line 2 is neither a section nor \"key = value\"."},
      {"[Alarm]\nRH Max=1,5\n", "[Alarm] RH Max = 1,5 is no number."},
      {"[Alarm]\nRH Max=\n", "[Alarm] RH Max =  is no number."},
      {"[Alarm]\nRH Max=1e999\n", "[Alarm] RH Max = 1e999 is no number."},
      {"[Alarm]\nRH Max=nan\n", "[Alarm] RH Max = nan is no number."},
      {"[Alarm]\nRH Min=61\n", "[Alarm] RH Min = 61 is above RH Max = 60 (default)."},
      {"[Alarm]\nLoad Acc. from File=yes\n", "[Alarm] Load Acc. from File = yes is neither 0 nor 1."},
      {head + "[Alowed]\n", "[Alowed] is no section of a limit profile."},
      {head + "[Product]\nCritical acceleration=1\n",
       "[Product] must have Critical velocity change and Critical acceleration, both above 0."},
      {head + "[Allowed]\nRH=1 h\n", "[Allowed] has a key that is not known: \"RH\"."},
      {head + "[Allowed]\nRH Min=1 h\n", "[Allowed] names RH Min, but [Alarm] does not."},
      {head + "Acc. Min=-9\n[Allowed]\nAcc. Min=1\n", "[Allowed] cannot name Acc. Min: peaks have no sign."},
      {head + "[Allowed]\nAcc. Max=-1\n", "[Allowed] Acc. Max = -1 is no number of events, such as \"3 events\"."},
      {head + "[Allowed]\nAcc. Max=2 h\n", "[Allowed] Acc. Max = 2 h is no number of events, such as \"3 events\"."},
      {head + "[Allowed]\nRH Max=2\n", "[Allowed] RH Max = 2 is no length of time, such as \"2 h\" or \"1 d 30 min\"."},
      {std::string("[Alarm]\nRH Max=3\0", 17), "The file makes no sense."},
      {"[Alarm]\n" + std::string(1'000'000, ';'), "The file is larger than 1 MB."}};
  for (const auto& [text, complaint] : wrong) EXPECT_EQ(Complaint(text), complaint) << text.substr(0, 200);
  EXPECT_THROW(ReadLimitProfile(FFolder / "missing.ini"), std::filesystem::filesystem_error);
  EXPECT_THROW(ReadLimitProfile(FFolder.Path()), std::runtime_error);
}

TEST_F(LimitProfileFile, AnyCutOrChangedByteIsReadOrRefused) {
  for (std::size_t i = 0; i < kFragile.size(); ++i) {
    Complaint(kFragile.substr(0, i));
    for (const char byte : {'\0', '\n', '[', '=', '9', '\xFF'}) {
      std::string damaged(kFragile);
      damaged[i] = byte;
      if (!Complaint(damaged).empty()) continue;
      const TLimitProfile profile = ReadLimitProfile(FPath);
      WriteLimitProfile(FPath, profile);
      EXPECT_EQ(ReadLimitProfile(FPath), profile) << damaged;
    }
  }
}

TEST(Durations, AreExactInBothDirections) {
  const std::pair<double, const char*> durations[] = {{0, "0 s"},
                                                      {1, "0.001 s"},
                                                      {60000, "1 min"},
                                                      {7200250, "2 h 0.25 s"},
                                                      {129600000, "1 d 12 h"},
                                                      {3153600000000, "36500 d"}};
  for (const auto& [ms, text] : durations) {
    EXPECT_EQ(ExactDuration(ms), text);
    EXPECT_EQ(ParseDuration(text), ms);
  }
  EXPECT_EQ(ParseDuration(" 1.5h30 min "), 7200000);
  for (const char* text : {"", " ", "2", "h", "2 m", "-1 h", "2 h,", "nan h", "inf s", "36500.1 d", "1e3 s", "2 h 3"}) {
    EXPECT_EQ(ParseDuration(text), std::nullopt) << text;
  }
}

}  // namespace
