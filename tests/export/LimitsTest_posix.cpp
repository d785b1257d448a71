// Exports at the limits that the system sets for a process.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "analysis/uMissionDatasets.h"
#include "export/uCsvExports.h"
#include "export/uWorkbook.h"
#include "export/uXlsxExports.h"
#include "platform/uProcessLimits.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uPackagePart.h"
#include "tests/support/uTestRecording.h"
#include "tests/support/uThreeEvents.h"

namespace fs = std::filesystem;

namespace {

// A limit of the process, until the end of the test.
class TLimit {
 public:
  TLimit(__rlimit_resource kind, rlim_t soft) : FKind(kind) {
    getrlimit(kind, &FBefore);
    const rlimit wanted{soft, FBefore.rlim_max};
    setrlimit(kind, &wanted);
  }
  ~TLimit() { setrlimit(FKind, &FBefore); }
  TLimit(const TLimit&) = delete;
  TLimit& operator=(const TLimit&) = delete;

 private:
  __rlimit_resource FKind;
  rlimit FBefore{};
};

std::ptrdiff_t OpenFiles() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

// A file cannot grow past the limit, as on a full disk.
TEST(ExportLimits, ACsvFileForWhichThereIsNoRoomIsNamedAndTheOlderOneStays) {
  const TTempFolder folder;
  TNoProgress progress;
  TEvent event(0);
  for (int i = 0; i < 50000; ++i) event.AddValues(i, 1, 2, 3);
  const fs::path file = folder / "old.csv";
  WriteFile(file, {1, 2, 3});
  SurviveFileSizeLimit();
  try {
    const TLimit sizes(RLIMIT_FSIZE, 400000);
    ExportEventCsv(event, false, file, progress);
    FAIL();
  } catch (const fs::filesystem_error& error) {
    EXPECT_EQ(error.path1(), file);
    EXPECT_EQ(error.code(), std::errc::file_too_large);
  }
  EXPECT_EQ(BytesOfFile(file), (TBytes{1, 2, 3}));
}

TEST(ExportLimits, MoreSheetsThanFilesAreRefusedBeforeAnythingIsWritten) {
  const TTempFolder folder;
  TNoProgress progress;
  TMissionDatasets tables;
  Read(ThreeEvents());
  LoadKorvexFileData(MissionData, EventList, SensorList, {}, progress, tables);
  constexpr std::uint32_t kAll[] = {0, 1, 2};
  constexpr std::uint32_t kTwo[] = {0, 1};
  const fs::path file = folder / "e.xlsx";
  {
    const TLimit files(RLIMIT_NOFILE, static_cast<rlim_t>(OpenFiles()) + 16 + 2 + 1);  // 1: the file in work
    EXPECT_THROW(ExportEventsXlsx({MissionData, EventList, tables.Events}, kAll, file, progress), std::runtime_error);
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    EXPECT_NO_THROW(ExportEventsXlsx({MissionData, EventList, tables.Events}, kTwo, file, progress));
    RaiseOpenFileLimit();
    EXPECT_NO_THROW(ExportEventsXlsx({MissionData, EventList, tables.Events}, kAll, file, progress));
  }
}

// Limits between what the rows take and what the sheet takes with them: the library says nothing of such a loss.
TEST(ExportLimits, AFullDiskWhileRowsAreWrittenIsAnError) {
  const TTempFolder folder;
  constexpr std::size_t kRows = 3000;
  const auto write = [&folder] {
    TWorkbook book(folder / "e.xlsx", {}, "yyyy", 0);
    book.AddSheet("a", 0);
    for (std::size_t row = 0; row < kRows; ++row) book.WriteNumber(row, 0, 1);
    book.Close({});
  };
  write();
  const std::string sheet = PartOf(folder / "e.xlsx", "xl/worksheets/sheet1.xml");
  const std::size_t head = sheet.find("<sheetData>") + 11;
  const std::size_t rows = sheet.find("</sheetData>") - head;
  SurviveFileSizeLimit();
  for (const std::size_t limit : {std::size_t{0}, rows - 1, rows, rows + head - 1}) {
    const TLimit sizes(RLIMIT_FSIZE, limit);
    EXPECT_THROW(write(), std::system_error) << limit;
  }
}

// The library does not close its streams after an error.
TEST(ExportLimits, WhatAFailedWorkbookCouldNotWriteReachesNoLaterFile) {
  const TTempFolder folder;
  SurviveFileSizeLimit();
  const std::ptrdiff_t open = OpenFiles();
  {
    const TLimit sizes(RLIMIT_FSIZE, 0);
    TWorkbook book(folder / "e.xlsx", {.sheets = 2}, "yyyy", 0);
    for (const char* name : {"a", "b"}) {
      book.AddSheet(name, 0);
      book.WriteNumber(0, 0, 1);
    }
    EXPECT_THROW(book.Close({}), std::system_error);
  }
  EXPECT_EQ(OpenFiles(), open);
  std::vector<std::ofstream> later;
  for (int i = 0; i < 8; ++i) later.emplace_back(folder / std::to_string(i));
  std::fflush(nullptr);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(fs::file_size(folder / std::to_string(i)), 0U) << i;
}

}  // namespace
