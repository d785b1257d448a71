// The reference: what is kept of a mission, its file, and the differences to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "shell/uCompareCommands.h"
#include "shell/uLayoutCommands.h"
#include "shell/uMissionLoad.h"
#include "shell/uOrderingCommands.h"
#include "shell/uReferenceFigures.h"
#include "shell/uReferenceFile.h"
#include "shell/uVerdictCells.h"
#include "tests/support/uFakeWindow.h"
#include "tests/support/uThreeEvents.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Reference : public testing::Test {
 protected:
  Reference() {
    FProgram.findSettingsFolder = [this] { return (FFolder.Path() / "").string(); };
  }
  void Load(const TTestRecording& recording) {
    Read(recording);
    TNoProgress progress;
    FMission.Analysis.reset();
    FMission.ReferenceIsShown = false;
    FillMission(FMission, progress);
    FMission.Display = DefaultSettings().display;
  }
  void Analyse() {
    TNoProgress progress;
    TakeAnalysis(FMission, AnalysisOf(FMission, progress), FWindow.views);
  }
  void Write(const std::string& text) { std::ofstream(FFile, std::ios::binary) << text; }
  std::vector<std::string> Lines() {
    const auto figures = ReferenceFigures(*FMission.Reference, VerdictOf(FMission), true, FMission.Display);
    std::vector<std::string> lines;
    for (const auto& [label, text] : DeltaFigures(figures)) lines.push_back(label + ": " + text);
    return lines;
  }

  TTempFolder FFolder;
  std::filesystem::path FFile = FFolder / "user-layout.ini";
  TProgram FProgram;
  TFakeWindow FWindow;
  TShownMission FMission;
};

TEST_F(Reference, KeepsWhatAFileGivesBack) {
  Load(Triangles());
  EXPECT_EQ(UseAsReference(FMission, "/a/b/tri.angles.kshock", FWindow.views),
            "tri.angles is the reference: other recordings show Δ against it");
  EXPECT_EQ(FWindow.log.Take(), "await analysis; reference tri.angles; ");
  EXPECT_FALSE(FMission.Reference->hasPulses);
  Analyse();
  EXPECT_TRUE(FMission.Reference->hasPulses) << "they follow with the analysis";
  Load(RisingEvents(2));
  Analyse();
  EXPECT_EQ(FMission.Reference->events, 4U) << "another recording leaves the reference as it is";

  const std::string sections = ReferenceSections(*FMission.Reference);
  Write("[Panels]\nSpace = 100x100\n" + sections);
  const auto read = ReadReference(FFile);
  ASSERT_TRUE(read);
  EXPECT_EQ(ReferenceSections(*read), sections);
  EXPECT_EQ(read->file, "/a/b/tri.angles.kshock");
  EXPECT_EQ(read->hours[6], 4U);
  ASSERT_EQ(read->directions.size(), 2U);
  EXPECT_EQ(read->directions[0].direction, (TDirection{1, 0, 0}));
  std::vector<float> peaks;
  for (const auto& [value, count] : read->distributions[kPeakQuantity]) peaks.push_back(value);
  EXPECT_THAT(peaks, ElementsAre(15, 30, 40, 60));
  EXPECT_EQ(read->distributions[0].size(), 3U) << "one event has no velocity change";
}

TEST_F(Reference, DifferencesAreSaidWithBothFigures) {
  Load(ThreeEvents());
  UseAsReference(FMission, "three.kshock", FWindow.views);
  EXPECT_EQ(ReferenceLine(FMission), "This recording is the reference");
  EXPECT_EQ(VerdictCells(VerdictOf(FMission), FMission)[0].delta, "");
  FMission.Reference->sensors[0].max = 25.5F;
  FMission.Reference->days = 2;
  Load(RisingEvents(2));  // 5 and 6 g, a minute apart
  EXPECT_EQ(ReferenceLine(FMission), "Δ against three: 3 events in 2 d");
  FMission.Display.alarmActive = true;
  FMission.Display.accelerationFromFile = false;
  FMission.Display.limits[0] = {-5.5, 5.5};
  const TVerdict verdict = VerdictOf(FMission);
  const auto lines = Lines();
  EXPECT_THAT(lines, testing::IsSupersetOf({std::string("Events: Δ -1 (2 against 3)"),
                                            std::string("Events above alarm: Δ -16.7 % (50.0 % against 66.7 %)")}));
  const TVerdictCell peak = VerdictCells(verdict, FMission)[1];
  EXPECT_THAT(peak.delta, testing::MatchesRegex("Δ -14\\.?0* g"));
  EXPECT_THAT(peak.tip, testing::ContainsRegex("Δ -14\\.?0* g against three \\(20\\.?0* g\\)"));
  EXPECT_THAT(Lines(), testing::Not(testing::Contains(testing::StartsWith("Events a day")))) << "of a minute";

  Load(ThreeEvents());
  EXPECT_THAT(Lines(), testing::Contains(testing::MatchesRegex("Temperature: Δ ±0\\.?0* … -3\\.50* °C .*")));
  FMission.Reference->days = 0;
  FMission.Reference->events = 0;
  for (TDistribution& each : FMission.Reference->distributions) each.clear();
  EXPECT_THAT(Lines(), testing::Contains(testing::MatchesRegex("Peak: 20\\.?0* g against –")));
}

TEST_F(Reference, IsSavedWithTheLayoutOnlyWhenAsked) {
  Load(ThreeEvents());
  UseAsReference(FMission, "three.kshock", FWindow.views);
  const auto save = [this] {
    SaveUserLayout(FProgram, FMission, FWindow.controls, FWindow.dialogs);
    Write("[Panels]\n" + FWindow.controls.Sections);
  };
  save();
  EXPECT_EQ(FWindow.controls.Sections, "");
  KeepReference(FMission, true, FWindow.views);
  save();
  EXPECT_THAT(FWindow.controls.Sections, HasSubstr("Recording = three.kshock"));

  const auto load = [this](TShownMission& mission) {
    FWindow.log.Take();
    LoadUserLayout(FProgram, TView::Shock, mission, FWindow.controls, FWindow.dialogs, FWindow.views);
    return FWindow.log.Take();
  };
  TShownMission other;
  EXPECT_THAT(load(other), HasSubstr("load layout user-layout.ini; reference three; "));
  EXPECT_TRUE(other.ReferenceIsKept) << "saving that layout again does not lose it";
  Write("[Panels]\n");
  EXPECT_THAT(load(other), testing::Not(HasSubstr("reference")));
  EXPECT_TRUE(other.Reference) << "a layout without one changes nothing";
  ClearReference(other, FWindow.views);
  EXPECT_FALSE(other.Reference);
  Write("[Reference]\nEvents = 3\n");
  EXPECT_THAT(load(other), HasSubstr("box \"The user layout cannot be used.\" " + FFile.string() +
                                     ": The layout's [Reference] makes no sense at \"Recording\".; "));
  EXPECT_FALSE(other.Reference);
}

TEST_F(Reference, AHostileFileIsRefused) {
  Load(ThreeEvents());
  UseAsReference(FMission, "three.kshock", FWindow.views);
  Analyse();
  const std::string whole = ReferenceSections(*FMission.Reference);
  const auto lineOf = [&whole](const std::string& key) {
    const std::size_t at = whole.find("\n" + key + " = ") + 1;
    return whole.substr(at, whole.find('\n', at) - at);
  };
  std::string many;
  for (std::size_t i = 0; i <= kMaxDistribution; ++i) many += " 1";
  const std::pair<const char*, std::string> changes[] = {{"Recording", ""},
                                                         {"Recording", "\x01"},
                                                         {"Events", "-1"},
                                                         {"Events", "4000000000"},
                                                         {"Events", "2"},
                                                         {"Days", "nan"},
                                                         {"Days", "-1"},
                                                         {"Days", "1e300"},
                                                         {"Hours", "0 0"},
                                                         {"Hours", "4 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"},
                                                         {"Directions", "2 0 0 1"},
                                                         {"Directions", "1 0 0"},
                                                         {"Directions", "1 0 0 1, 1 0 0 1"},
                                                         {"Directions", "1 0 0 4"},
                                                         {"Peak", "5 4"},
                                                         {"Peak", "inf"},
                                                         {"Peak", "1 2 3 4"},
                                                         {"Peak", "x2"},
                                                         {"Peak", "1 x0"},
                                                         {"Peak", "1 x4294967295"},
                                                         {"Peak", "1 x2 x2"},
                                                         {"Peak", "1e99"},
                                                         {"Peak", "1g"},
                                                         {"IoT total", many},
                                                         {"Temperature", "1"},
                                                         {"Temperature", "2 1"},
                                                         {"Temperature", "nan 1"}};
  for (const auto& [key, text] : changes) {
    std::string changed = whole;
    const std::string line = lineOf(key);
    ASSERT_THAT(line, testing::StartsWith(key));
    changed.replace(changed.find("\n" + line) + 1, line.size(), std::string(key) + " = " + text);
    if (text == many) changed.replace(changed.find("Events = 3"), 10, "Events = 9000");
    Write(changed);
    EXPECT_THROW(ReadReference(FFile), std::runtime_error) << key << " = " << text;
  }
  Write(whole + "[Reference sensors]\nNobody = 1 2\n");
  EXPECT_THROW(ReadReference(FFile), std::runtime_error);
  Write("[Panels]\n");
  EXPECT_FALSE(ReadReference(FFile));
}

}  // namespace
