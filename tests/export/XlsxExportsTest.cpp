#include "export/uXlsxExports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/uMissionDatasets.h"
#include "base/uDateTime.h"
#include "export/uPackage.h"
#include "export/uWorkbook.h"
#include "model/uExceptions1V0.h"
#include "platform/uProcessLimits.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uPackagePart.h"
#include "tests/support/uTestRecording.h"
#include "tests/support/uThreeEvents.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

class XlsxExports : public testing::Test {
 protected:
  XlsxExports() {
    Read(ThreeEvents());
    TNoProgress progress;
    LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, Tables);
  }
  TTempFolder Folder;
  TMissionDatasets Tables;
  TLogProgress Progress;
};

TEST_F(XlsxExports, EachSheetIsReportedBeforeItIsWritten) {
  constexpr std::uint32_t kTwo[] = {2, 0};
  ExportEventsXlsx({MissionData, EventList, Tables.Events}, kTwo, Folder / "e.xlsx", Progress);
  EXPECT_EQ(Progress.log, "Creating XLSX File... @0 of 2 @0Creating Sheet 1 of 2 @1Creating Sheet 2 of 2 @2");
  const std::string book = PartOf(Folder / "e.xlsx", "xl/workbook.xml");
  EXPECT_LT(book.find("\"Event 2\""), book.find("\"Event 0\"")) << "the order is that of the list";
  Progress.log.clear();
  ExportMeasurementsXlsx(MissionData, Tables.Sensors, Tables.Battery, Folder / "m.xlsx", Progress);
  EXPECT_THAT(Progress.log, HasSubstr("Creating Sheet 2 of 2"));
}

TEST_F(XlsxExports, TheChartsEventIsItsCurvesOrItsSpectrum) {
  TSpectrum spectrum;
  spectrum.lines = {{0, 1, 2, 3, 4}, {0.5, 6.25, 7, 8, 9}};
  ExportSpectrumXlsx({MissionData, EventList, Tables.Events}, 1, spectrum, Folder / "s.xlsx", Progress);
  EXPECT_THAT(PartOf(Folder / "s.xlsx", "xl/workbook.xml"), HasSubstr("name=\"Event 1 Spectral Analysis\""));
  const std::string sheet = PartOf(Folder / "s.xlsx", "xl/worksheets/sheet1.xml");
  EXPECT_THAT(sheet, HasSubstr("<t>HZ</t>"));
  EXPECT_THAT(sheet, HasSubstr(R"(<row r="7"><c r="A7"><v>0.5</v></c><c r="B7"><v>6.25</v></c>)"));

  ExportEventXlsx({MissionData, EventList, Tables.Events}, 1, false, Folder / "s.xlsx", Progress);
  EXPECT_THAT(PartOf(Folder / "s.xlsx", "xl/worksheets/sheet1.xml"), HasSubstr(R"(<c r="B7"><v>9</v></c>)"));
  ExportEventXlsx({MissionData, EventList, Tables.Events}, 1, true, Folder / "s.xlsx", Progress);
  EXPECT_THAT(PartOf(Folder / "s.xlsx", "xl/worksheets/sheet1.xml"), Not(HasSubstr(R"(<c r="B7"><v>9</v></c>)")));
}

// A date format may hold what means something else in a spreadsheet.
TEST_F(XlsxExports, TheDateFormatBecomesTheSpreadsheets) {
  for (const auto& [mask, format] :
       {std::pair("dd/mm/yyyy", "dd\\/mm\\/yyyy hh:mm:ss.000"), {"[Red]yy", "\\[\\R\\ed\\]yy hh:mm:ss.000"}}) {
    SetShortDateFormat(mask);
    ExportTableXlsx(MissionData, Tables.Battery, Folder / "b.xlsx", Progress);
    EXPECT_THAT(PartOf(Folder / "b.xlsx", "xl/styles.xml"), HasSubstr(std::string("formatCode=\"") + format));
  }
  SetShortDateFormat("yyyy-mm-dd");
}

TEST_F(XlsxExports, CancelLeavesTheOlderFileAndNothingOpen) {
  const fs::path file = Folder / "e.xlsx";
  WriteFile(file, {1, 2, 3});
  constexpr std::uint32_t kAll[] = {0, 1, 2};
  const std::size_t before = OpenFilesLeft();
  Progress.most = 3;
  EXPECT_THROW(ExportEventsXlsx({MissionData, EventList, Tables.Events}, kAll, file, Progress), EKorvex);
  EXPECT_EQ(OpenFilesLeft(), before);
  EXPECT_EQ(BytesOfFile(file), (TBytes{1, 2, 3}));
  EXPECT_EQ(std::distance(fs::directory_iterator(Folder.Path()), fs::directory_iterator()), 1);
}

TEST_F(XlsxExports, AStopWhilePackingDropsTheRowsAndLeavesNothingOpen) {
  const std::size_t before = OpenFilesLeft();
  std::stop_source stop;
  stop.request_stop();
  {
    TWorkbook book(Folder / "e.xlsx", {}, "yyyy", 0);
    for (const char* name : {"a", "b", "c"}) {
      book.AddSheet(name, 0);
      for (std::size_t row = 0; row < 10000; ++row) book.WriteNumber(row, 0, 1234567);
    }
    EXPECT_THROW(book.Close(stop.get_token()), std::system_error);
  }
  EXPECT_EQ(OpenFilesLeft(), before);
  EXPECT_THAT(PartOf(Folder / "e.xlsx", "xl/worksheets/sheet1.xml"), Not(HasSubstr("r=\"A1\"")));
}

TEST_F(XlsxExports, WithoutEventsThereIsOneEmptySheet) {
  MissionData.sID = "A/17";
  const std::size_t before = OpenFilesLeft();
  ExportEventsXlsx({MissionData, EventList, Tables.Events}, {}, Folder / "e.xlsx", Progress);
  EXPECT_EQ(OpenFilesLeft(), before);
  EXPECT_EQ(Progress.log, "Creating XLSX File... @0 of 1 @1");
  EXPECT_THAT(PartOf(Folder / "e.xlsx", "xl/workbook.xml"), HasSubstr("<sheet name=\"Mission-A_17\""));
}

// So that the same export is the same bytes on another day.
TEST_F(XlsxExports, TheFileWasCreatedWhenTheRecordingStarted) {
  for (const auto& [start, created] : {std::pair(45123.25, "2023-07-16T06:00:00Z"),
                                       {25569.0, "1980-01-01T00:00:00Z"},
                                       {std::nan(""), "1980-01-01T00:00:00Z"}}) {
    MissionData.rec_starttime = start;
    ExportTableXlsx(MissionData, Tables.Battery, Folder / "b.xlsx", Progress);
    EXPECT_THAT(PartOf(Folder / "b.xlsx", "docProps/core.xml"), HasSubstr(std::string(">") + created + "</dcterms:c"));
    EXPECT_THAT(PartOf(Folder / "b.xlsx", "docProps/core.xml"), HasSubstr(std::string(">") + created + "</dcterms:m"));
  }
}

TEST_F(XlsxExports, AnIncompletePackageIsFound) {
  const fs::path file = Folder / "b.xlsx";
  ExportTableXlsx(MissionData, Tables.Battery, file, Progress);
  const std::size_t rows = Tables.Battery.RecordCount() + 2;
  const auto check = [&file](const std::vector<std::size_t>& expected) { CheckPackage(file, expected, {}); };
  EXPECT_NO_THROW(check({rows}));
  EXPECT_THROW(check({rows + 1}), std::system_error);
  EXPECT_THROW(check({rows, rows}), std::system_error);
  EXPECT_THROW(check({}), std::system_error);
  const TBytes whole = BytesOfFile(file);
  for (const std::size_t size : {std::size_t{0}, std::size_t{21}, whole.size() / 2, whole.size() - 22}) {
    WriteFile(file, TBytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_THROW(check({rows}), std::system_error) << size;
  }
  constexpr std::string_view kSheet = "xl/worksheets/sheet1.xml";
  const auto name = std::ranges::search(whole, kSheet).begin();
  for (std::size_t at = 0; at < 200; ++at) {
    TBytes changed = whole;
    changed[static_cast<std::size_t>(name - whole.begin()) + kSheet.size() + at] ^= 1;
    WriteFile(file, changed);
    EXPECT_THROW(check({rows}), std::system_error) << at;
  }
}

// A piece of the unpacked sheet may end anywhere in a row.
TEST_F(XlsxExports, EveryRowOfALongSheetIsCounted) {
  constexpr std::size_t kRows = 100000;
  TWorkbook book(Folder / "e.xlsx", {}, "yyyy", 0);
  book.AddSheet("a", 0);
  for (std::size_t row = 0; row < kRows; ++row) book.WriteNumber(row, 0, static_cast<double>(row) / 7);
  EXPECT_NO_THROW(book.Close({}));
}

TEST_F(XlsxExports, ATableForWhichThereIsNoRoomIsRefusedBeforeAnythingIsWritten) {
  try {
    const TWorkbook book(Folder / "e.xlsx", {1, std::size_t{1} << 60U}, "yyyy", 0);
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("not enough room"));
  }
  EXPECT_TRUE(fs::is_empty(Folder.Path()));
}

TEST_F(XlsxExports, AFileThatCannotBeWrittenIsNamed) {
  const fs::path file = Folder / "vanished" / "e.xlsx";
  try {
    ExportTableXlsx(MissionData, Tables.Events, file, Progress);
    FAIL();
  } catch (const fs::filesystem_error& error) {
    EXPECT_EQ(error.path1(), file);
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
  }
}

}  // namespace
