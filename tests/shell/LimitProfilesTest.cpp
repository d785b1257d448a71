#include "shell/uLimitProfiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/uAllowances.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uShownVerdict.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uTestRecording.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using enum TQuantity;

constexpr std::size_t kHumidity = static_cast<std::size_t>(Humidity);

// One run of the program: what the window would show goes back into the settings.
struct TRun {
  explicit TRun(const TTempFolder& folder)
      : profiles([&folder] { return (folder.Path() / "").string(); }, mission, window.controls, window.dialogs) {}

  // The limits are edited in the window.
  void Type(TQuantity quantity, TLimits limits) {
    mission.Settings.display.limits[static_cast<std::size_t>(quantity)] = limits;
    UpdateProfile(mission.Settings.display);
  }
  [[nodiscard]] const std::optional<TLimitProfile>& InForce() const { return mission.Settings.display.profile; }

  TShownMission mission;
  TFakeWindow window;
  TLimitProfiles profiles;
};

class LimitProfiles : public testing::Test {
 protected:
  std::string TextOf(const char* name) {
    const TBytes bytes = BytesOfFile(FFolder / name);
    return {bytes.begin(), bytes.end()};
  }

  TTempFolder FFolder;
};

TEST_F(LimitProfiles, WhatIsEditedIsKeptAndInForceAfterARestart) {
  TRun first(FFolder);
  first.Type(Humidity, {30, 55});
  first.profiles.SaveAs("Fragile");
  EXPECT_TRUE(first.window.controls.Settings->display.alarmActive) << "whoever sets limits wants a judgement";
  EXPECT_EQ(first.profiles.Allow(Humidity, true, "2 h"), "");
  first.Type(Temperature, {-4, 35});
  EXPECT_THAT(TextOf("limits/Fragile.ini"), testing::Not(HasSubstr("2 h"))) << "not before the panel closes";
  first.profiles.Keep();

  TRun second(FFolder);
  second.profiles.Restore();
  ASSERT_TRUE(second.InForce());
  EXPECT_EQ(*second.InForce(), *first.InForce());
  EXPECT_EQ(second.InForce()->allowedTimes[kHumidity].above, 2 * 3600000.0);
  EXPECT_FALSE(second.window.controls.Settings->display.alarmActive) << "as the settings say";
  EXPECT_EQ(second.window.controls.Settings->display.limits[kHumidity], (TLimits{30, 55}));

  second.profiles.Choose({});
  EXPECT_FALSE(second.InForce());
  TRun third(FFolder);
  third.profiles.Restore();
  EXPECT_FALSE(third.InForce());
}

TEST_F(LimitProfiles, ANewOneJudgesNothingUntilALimitIsChosen) {
  TRun run(FFolder);
  run.Type(Humidity, {30, 55});
  run.profiles.Create("Empty");
  EXPECT_EQ(run.window.controls.Settings->display.limits, DefaultSettings().display.limits);
  run.mission.Settings.display = run.window.controls.Settings->display;
  const auto sources = [&] {
    const TVerdictLimits limits = *LimitsInForce(run.mission.Settings.display);
    return std::pair(limits[kHumidity].minSource, limits[kHumidity].maxSource);
  };
  EXPECT_EQ(sources(), std::pair(TLimitSource::Default, TLimitSource::Default));
  EXPECT_EQ(run.profiles.Allow(Humidity, true, "none"), "") << "the default, chosen";
  EXPECT_EQ(sources(), std::pair(TLimitSource::Default, TLimitSource::User));
}

TEST_F(LimitProfiles, RubbishIsNamedAndChangesNothing) {
  std::filesystem::create_directories(FFolder / "limits");
  WriteFile(FFolder / "limits/broken.ini", {'[', 'A', 'l', 'a', 'r', 'm', ']', '\n', '?'});
  WriteFile(FFolder / "limits/notes.txt", {'x'});
  WriteFile(FFolder / "outside.ini", {'[', 'A', 'l', 'a', 'r', 'm', ']', '\n'});
  const std::string chosen = "[Profile]\nFile = ../outside.ini\n";
  WriteFile(FFolder / "limit-profile.ini", TBytes(chosen.begin(), chosen.end()));

  TRun run(FFolder);
  run.profiles.Restore();
  EXPECT_THAT(run.window.log.Take(), HasSubstr("box \"The limit profile cannot be used.\""))
      << "it is not in \"limits\"";
  EXPECT_FALSE(run.InForce());
  run.profiles.SaveAs("Good");
  const std::vector<TListedProfile> listed = run.profiles.List();
  ASSERT_EQ(listed.size(), 2U);
  EXPECT_EQ(listed[0].name, "Good");
  EXPECT_THAT(listed[1].problem, HasSubstr("Line 2"));
  run.window.log.Take();
  run.profiles.Choose(listed[1].file);
  EXPECT_THAT(run.window.log.Take(), HasSubstr("broken.ini"));
  EXPECT_EQ(run.InForce()->name, "Good");
  run.Type(Humidity, {70, 60});
  run.profiles.Keep();
  EXPECT_THAT(run.window.log.Take(), HasSubstr("RH Min = 70 is above RH Max = 60"));
  EXPECT_THAT(TextOf("limits/Good.ini"), testing::Not(HasSubstr("70")));
}

TEST_F(LimitProfiles, ANameIsNoPathAndReplacesNoOtherProfile) {
  TRun run(FFolder);
  run.profiles.SaveAs("../../evil");
  EXPECT_EQ(run.profiles.File().parent_path(), FFolder / "limits");
  EXPECT_EQ(run.profiles.List().at(0).name, "../../evil");
  run.profiles.SaveAs("Other");
  run.window.log.Take();
  run.profiles.Create("Other");
  EXPECT_THAT(run.window.log.Take(), HasSubstr("There is a profile of this name"));
  EXPECT_EQ(run.profiles.List().size(), 2U);
}

TEST_F(LimitProfiles, DeletingAsksAndLeavesTheLimits) {
  TRun run(FFolder);
  run.Type(Humidity, {30, 55});
  run.profiles.SaveAs("Fragile");
  run.window.dialogs.Confirms = false;
  run.profiles.Delete();
  EXPECT_EQ(run.profiles.List().size(), 1U);
  run.window.dialogs.Confirms = true;
  run.profiles.Delete();
  EXPECT_THAT(run.profiles.List(), IsEmpty());
  EXPECT_FALSE(run.InForce());
  EXPECT_EQ(run.window.controls.Settings->display.limits[kHumidity], (TLimits{30, 55}));
}

TEST(Allowances, ReadAsTheyAreTypedAndRefuseWhatTheyAreNot) {
  TLimitProfile profile;
  for (std::size_t i = 0; i < profile.limits.size(); ++i) {
    profile.limits[i] = {DefaultSettings().display.limits[i], TLimitSource::Default, TLimitSource::Default};
  }
  const auto type = [&](TQuantity quantity, std::string_view text) {
    const std::string problem = TypeAllowance(text, quantity, true, profile);
    return problem.empty() ? AllowanceText(profile, quantity, true) : problem;
  };
  EXPECT_EQ(AllowanceText(profile, Acceleration, true), "") << "not judged";
  EXPECT_EQ(type(Acceleration, " 3 "), "3 events");
  EXPECT_EQ(type(Acceleration, "1 Event"), "1 event");
  EXPECT_THAT(type(Acceleration, "2 h"), HasSubstr("\"2 h\" is no number of events"));
  EXPECT_EQ(AllowanceText(profile, Acceleration, true), "1 event") << "as before";
  EXPECT_EQ(type(Humidity, "1.5h"), "1 h 30 min");
  EXPECT_EQ(type(Humidity, "0"), "none");
  EXPECT_THAT(type(Humidity, "3 events"), HasSubstr("no length of time"));
  EXPECT_EQ(type(Humidity, ""), "") << "it equals its default";
  profile.limits[kHumidity].values.max = 55;
  EXPECT_EQ(type(Humidity, ""), "none") << "a limit of one's own is judged";
}

}  // namespace
