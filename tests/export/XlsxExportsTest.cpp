#include "export/uXlsxExports.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>
#include <zlib.h>

#include <cmath>
#include <cstring>

#include "analysis/uMissionDatasets.h"
#include "base/uBeside.h"
#include "base/uDateTime.h"
#include "export/uPackage.h"
#include "export/uWorkbook.h"
#include "model/uExceptions1V0.h"
#include "platform/uSignals.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uTestRecording.h"
#include "tests/support/uThreeEvents.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

template <class T>
T NumberAt(const TBytes& bytes, std::size_t at) {
  T value{};
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

// One file of a zip archive, found by the archive's directory.
std::string PartOf(const fs::path& archive, std::string_view name) {
  const TBytes zip = BytesOfFile(archive);
  std::size_t entry = NumberAt<std::uint32_t>(zip, zip.size() - 6);
  while (NumberAt<std::uint32_t>(zip, entry) == 0x02014B50) {
    const std::size_t length = NumberAt<std::uint16_t>(zip, entry + 28);
    const std::string_view found(reinterpret_cast<const char*>(zip.data()) + entry + 46, length);
    if (found == name) {
      const std::size_t local = NumberAt<std::uint32_t>(zip, entry + 42);
      const std::size_t from =
          local + 30 + NumberAt<std::uint16_t>(zip, local + 26) + NumberAt<std::uint16_t>(zip, local + 28);
      std::string text(NumberAt<std::uint32_t>(zip, entry + 24), '\0');
      z_stream stream{};
      inflateInit2(&stream, -15);
      stream.next_in = const_cast<Bytef*>(zip.data()) + from;
      stream.avail_in = NumberAt<std::uint32_t>(zip, entry + 20);
      stream.next_out = reinterpret_cast<Bytef*>(text.data());
      stream.avail_out = static_cast<uInt>(text.size());
      inflate(&stream, Z_FINISH);
      inflateEnd(&stream);
      return text;
    }
    entry += 46 + length + NumberAt<std::uint16_t>(zip, entry + 30) + NumberAt<std::uint16_t>(zip, entry + 32);
  }
  return {};
}

std::ptrdiff_t OpenFiles() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

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

TEST_F(XlsxExports, SheetsAreToldBeforeTheyAreWritten) {
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
  const std::ptrdiff_t before = OpenFiles();
  Progress.most = 3;
  EXPECT_THROW(ExportEventsXlsx({MissionData, EventList, Tables.Events}, kAll, file, Progress), EKorvex);
  EXPECT_EQ(OpenFiles(), before);
  EXPECT_EQ(BytesOfFile(file), (TBytes{1, 2, 3}));
  EXPECT_EQ(std::distance(fs::directory_iterator(Folder.Path()), fs::directory_iterator()), 1);
}

TEST_F(XlsxExports, StoppedInThePackingItLeavesNothingOpenAndIsNotDone) {
  const std::ptrdiff_t before = OpenFiles();
  std::stop_source stop;
  stop.request_stop();
  {
    TWorkbook book(Folder / "e.xlsx", "yyyy", 0);
    for (const char* name : {"a", "b", "c"}) {
      book.AddSheet(name, 0);
      for (std::size_t row = 0; row < 10000; ++row) book.WriteNumber(row, 0, 1234567);
    }
    EXPECT_THROW(book.Close(stop.get_token()), std::system_error);
  }
  EXPECT_EQ(OpenFiles(), before);
  EXPECT_THAT(PartOf(Folder / "e.xlsx", "xl/worksheets/sheet1.xml"), Not(HasSubstr("1234567")));
}

// The library compresses a long sheet in one go.
TEST_F(XlsxExports, ACancelCutsTheSheetInWorkShort) {
  TWorkbook book(Folder / "e.xlsx", "yyyy", 0);
  book.AddSheet("a", 0);
  constexpr std::size_t kRows = 400000;
  for (std::size_t row = 0; row < kRows; ++row) book.WriteNumber(row, 0, static_cast<double>(row) / 7);
  Progress.most = 0;
  EXPECT_THROW(RunBeside([&book](const std::stop_token& stop) { book.Close(stop); }, Progress), EKorvex);
  EXPECT_THAT(PartOf(Folder / "e.xlsx", "xl/worksheets/sheet1.xml"),
              Not(HasSubstr("r=\"A" + std::to_string(kRows) + "\"")));
}

TEST_F(XlsxExports, NoEventsAreAnEmptySheetOfTheMission) {
  MissionData.sID = "A/17";
  const std::ptrdiff_t before = OpenFiles();
  ExportEventsXlsx({MissionData, EventList, Tables.Events}, {}, Folder / "e.xlsx", Progress);
  EXPECT_EQ(OpenFiles(), before);
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

TEST_F(XlsxExports, APackageThatIsNotWholeIsFound) {
  const fs::path file = Folder / "b.xlsx";
  ExportTableXlsx(MissionData, Tables.Battery, file, Progress);
  const TBytes whole = BytesOfFile(file);
  EXPECT_NO_THROW(CheckPackage(file, {}));
  for (const std::size_t size : {std::size_t{0}, std::size_t{21}, whole.size() / 2, whole.size() - 1}) {
    WriteFile(file, TBytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_THROW(CheckPackage(file, {}), std::system_error) << size;
  }
  const std::size_t packed = NumberAt<std::uint32_t>(whole, whole.size() - 6) - 10;  // of the last part
  TBytes changed = whole;
  changed[packed] ^= 1;
  WriteFile(file, changed);
  EXPECT_THROW(CheckPackage(file, {}), std::system_error);
}

TEST_F(XlsxExports, SheetsThatAreWrittenKeepNoFileOpen) {
  struct TCounting final : IProgress {
    void SetStatus(std::string_view) override { open.push_back(OpenFiles()); }
    void SetPosition(double) override {}
    void ProcessMessages() override {}
    std::vector<std::ptrdiff_t> open;
  } progress;
  constexpr std::uint32_t kAll[] = {0, 1, 2};
  const std::ptrdiff_t before = OpenFiles();
  ExportEventsXlsx({MissionData, EventList, Tables.Events}, kAll, Folder / "e.xlsx", progress);
  EXPECT_THAT(progress.open, testing::ElementsAre(before, before + 3, before + 3, before + 3));
}

// The rows' file knows no places, or takes nothing at the end; what is not on it must not be missing in silence.
TEST_F(XlsxExports, ARowsFileThatFailsEndsTheExport) {
  const int folder = dup(STDIN_FILENO);
  const int rowsFile = dup(STDIN_FILENO);  // the second that is opened from here on
  close(folder);
  close(rowsFile);
  int ends[2];
  {
    TWorkbook book(Folder / "e.xlsx", "yyyy", 0);
    book.AddSheet("a", 0);
    book.WriteNumber(0, 0, 1);
    ASSERT_EQ(pipe(ends), 0);
    dup2(ends[1], rowsFile);
    EXPECT_THROW(book.AddSheet("b", 0), std::system_error);
  }
  close(ends[0]);
  close(ends[1]);
  TWorkbook book(Folder / "e.xlsx", "yyyy", 0);
  book.AddSheet("a", 0);
  book.WriteNumber(0, 0, 1);
  const int readOnly = open("/dev/null", O_RDONLY);
  dup2(readOnly, rowsFile);
  close(readOnly);
  try {
    book.Close({});
    FAIL();
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::bad_file_descriptor);
  }
}

// Limits between what the rows take and what the sheet takes with them. The reason tells that the loss was seen where
// it happened: what another file still took afterwards is not looked at.
TEST_F(XlsxExports, RowsThatDoNotFitAreALossOfTheirOwn) {
  constexpr std::size_t kRows = 3000;
  const auto write = [this] {
    TWorkbook book(Folder / "e.xlsx", "yyyy", 0);
    book.AddSheet("a", 0);
    for (std::size_t row = 0; row < kRows; ++row) book.WriteNumber(row, 0, 1);
    book.Close({});
  };
  write();
  const std::string sheet = PartOf(Folder / "e.xlsx", "xl/worksheets/sheet1.xml");
  const std::size_t head = sheet.find("<sheetData>") + 11;
  const std::size_t rows = sheet.find("</sheetData>") - head;
  SurviveFileSizeLimit();
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const std::size_t limit : {std::size_t{0}, rows - 1, rows, rows + head - 1}) {
    const rlimit small{limit, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    std::error_code reason;
    try {
      write();
    } catch (const std::system_error& error) {
      reason = error.code();
    }
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(reason, std::errc::file_too_large) << limit;
  }
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
