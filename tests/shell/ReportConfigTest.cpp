#include "shell/uReportConfig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uFiles.h"
#include "shell/uGoTo.h"
#include "tests/support/uTextFileTest.h"

using testing::HasSubstr;

namespace {

class ReportConfigFile : public TTextFileTest<ReadReportConfig> {
 protected:
  ReportConfigFile() : TTextFileTest("customer.ini") {}
};

TEST_F(ReportConfigFile, AWrittenChoiceReadsBack) {
  TReportConfig config;
  std::swap(config.sections.front(), config.sections.back());
  config.sections[3].on = false;
  config.paper = TReportPaper::Letter;
  config.landscape = true;
  config.eventsTable = false;
  config.batteryTable = true;
  config.cardEvents = TCardEvents::AboveAlarm;
  config.worstCount = 1000;
  config.cardsPerPage = 6;
  config.time = {TypedTime("2026-03-04 06:00:00.250", 0), TypedTime("2026-03-05", 0)};
  WriteReportConfig(FPath, config);
  EXPECT_EQ(ReadReportConfig(FPath), config);

  KeepReportConfig(FFolder.Path(), config);
  config.time = {};
  EXPECT_EQ(ReadKeptReportConfig(FFolder.Path()), config) << "a time belongs to one recording";
}

TEST_F(ReportConfigFile, WhatAFileLeavesOutHasItsDefault) {
  EXPECT_EQ(Read(""), TReportConfig());
  EXPECT_EQ(ReadKeptReportConfig(FFolder.Path()), TReportConfig()) << "no file";
  const TReportConfig config = Read("; for Ms Weber\n[sections]\ntables=1\nCOVER = 0\n[Page]\npaper = letter\n");
  EXPECT_EQ(config.sections[0], (TReportSectionChoice{TReportSection::Tables, true}));
  EXPECT_EQ(config.sections[1], (TReportSectionChoice{TReportSection::Cover, false}));
  EXPECT_EQ(config.sections[2], (TReportSectionChoice{TReportSection::MissionDetails, false})) << "not named: off";
  EXPECT_EQ(config.paper, TReportPaper::Letter);
  EXPECT_FALSE(config.landscape);
}

TEST_F(ReportConfigFile, WhatMeansNothingIsRefusedWithItsReason) {
  EXPECT_THAT(Complaint("[Sections]\nCover = yes\n"), HasSubstr("[Sections] Cover = yes is neither 0 nor 1."));
  EXPECT_THAT(Complaint("[Sections]\nIndex = 1\n"), HasSubstr("[Sections] Index is no section of a report."));
  EXPECT_THAT(Complaint("[Sections]\nCover = 1\ncover = 1\n"), HasSubstr("Line 3"));
  for (const auto* none : {"[Sections]\nCover = 0\n", "[Sections]\n"}) {
    EXPECT_THAT(Complaint(none), HasSubstr("every section off"));
  }
  EXPECT_THAT(Complaint("[Page]\nPaper = A3\n"), HasSubstr("[Page] Paper = A3 is none of A4, Letter."));
  EXPECT_THAT(Complaint("[Page]\nColour = 1\n"), HasSubstr("[Page] has a key that is not known: \"Colour\"."));
  EXPECT_THAT(Complaint("[Pages]\nPaper = A4\n"), HasSubstr("[Pages] is no section"));
  EXPECT_THAT(Complaint("[Event cards]\nA page = 5\n"), HasSubstr("[Event cards] A page = 5 is none of 2, 4, 6."));
  for (const auto* worst : {"0", "-3", "12 events", "", "100001", "99999999999999999999"}) {
    EXPECT_THAT(Complaint(std::string("[Event cards]\nWorst = ") + worst + "\n"), HasSubstr("is no number from 1 to"));
  }
  EXPECT_THAT(Complaint("[Time]\nFrom = 04.03.2026\n"), HasSubstr("is no time such as"));
  EXPECT_THAT(Complaint("[Time]\nFrom = 2026-03-05\nTo = 2026-03-04\n"), HasSubstr("From is after To"));
  EXPECT_THAT(Complaint("a note\n"), HasSubstr("Line 1"));
  EXPECT_THROW(ReadReportConfig(FFolder / "missing.ini"), std::filesystem::filesystem_error);
}

}  // namespace
