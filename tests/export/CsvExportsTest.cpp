#include "export/uCsvExports.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/uExceptions1V0.h"
#include "tests/support/uLogProgress.h"
#include "tests/support/uTestRecording.h"

namespace fs = std::filesystem;

namespace {

std::string TextOf(const fs::path& path) {
  const TBytes bytes = BytesOfFile(path);
  return {bytes.begin(), bytes.end()};
}

std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

// Two events and an empty one; the first begins at 1000 ms.
TEventList Events() {
  TEventList events;
  events.NewEvent();
  events.AddValues(1000, 3, 4, 0);
  events.AddValues(1000.5, -0.25F, 0, 0.1F);
  events.NewEvent();
  events.AddValues(5000, 0, 0, kOtherNaN);
  return events;
}

constexpr std::uint32_t kBoth[] = {0, 1};

TEST(CsvExports, AnEventIsWrittenSampleBySample) {
  const TTempFolder folder;
  TMissionData mission;
  mission.sID = "A/17";
  TLogProgress progress;
  const fs::path made = ExportEventsCsv(mission, Events(), kBoth, TEventFiles::Samples, folder.Path(), progress);
  EXPECT_EQ(made, folder / "Mission-A_17");
  EXPECT_EQ(progress.log, "Creating CSV exports... @0 of 1 @0 @1");
  EXPECT_EQ(TextOf(made / "ID-0.csv"),
            "\"Time (msec)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\",\r\n"
            "\"0\",\"3\",\"4\",\"0\",\"5\",\r\n"
            "\"0.5\",\"-0.25\",\"0\",\"0.100000001490116\",\"0.26925824091014\",\r\n");
  EXPECT_EQ(TextOf(made / "ID-1.csv"),
            "\"Time (msec)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\",\r\n\"0\",\"0\",\"0\",\"NAN\",\"NAN\",\r\n");

  // Again, and only one: the folder is used again and the file replaced.
  WriteFile(made / "ID-1.csv", {1, 2, 3});
  constexpr std::uint32_t kSecond[] = {1};
  ExportEventsCsv(mission, Events(), kSecond, TEventFiles::Samples, folder.Path(), progress);
  EXPECT_GT(TextOf(made / "ID-1.csv").size(), 3U);
  EXPECT_EQ(NamesIn(made), (std::vector<std::string>{"ID-0.csv", "ID-1.csv"}));
  EXPECT_TRUE(NamesIn(ExportEventsCsv(mission, Events(), {}, TEventFiles::Peaks, folder.Path(), progress)).empty());
}

TEST(CsvExports, AnEventWithoutSamplesHasOnlyTitles) {
  const TTempFolder folder;
  TNoProgress progress;
  ExportEventCsv(TEvent(3), false, folder / "a.csv", progress);
  EXPECT_EQ(TextOf(folder / "a.csv"), "\"Time (msec)\",\"X (g)\",\"Y (g)\",\"Z (g)\",\"Total (g)\",\r\n");
}

TEST(CsvExports, TheChartsEventIsHighPassedWhenTheChartIs) {
  const TTempFolder folder;
  TNoProgress progress;
  TEvent event(0);
  for (int i = 0; i < 200; ++i) event.AddValues(i, 1, 0, 0);
  ExportEventCsv(event, true, folder / "a.csv", progress);
  // 200 samples in 256 points: more than the constant's rest, and nothing on the other axes.
  const std::string text = TextOf(folder / "a.csv");
  EXPECT_EQ(std::ranges::count(text, '\n'), 201);
  EXPECT_EQ(text.find("\r\n\"0\",\"1\",\"0\""), std::string::npos);
  EXPECT_NE(text.find("\"199\","), std::string::npos);
}

// Kept on purpose: the time series says how many lines there are.
TEST(CsvExports, TheSpectrumHasAsManyLinesAsTheTimeSeriesHasPoints) {
  const TTempFolder folder;
  TNoProgress progress;
  TSpectrum spectrum;
  spectrum.lines = {{0, 1, 2, 3, 4}, {0.5, 1e-7, 0, 0, 1e-7}};
  ExportSpectrumCsv(spectrum, 3, folder / "a.csv", progress);
  EXPECT_EQ(TextOf(folder / "a.csv"),
            "\"HZ\",\"X\",\"Y\",\"Z\",\"Total\",\r\n\"0\",\"1\",\"2\",\"3\",\"4\",\r\n"
            "\"0.5\",\"1E-7\",\"0\",\"0\",\"1E-7\",\r\n\"\",\"\",\"\",\"\",\"\",\r\n");
  ExportSpectrumCsv(spectrum, 1, folder / "a.csv", progress);
  EXPECT_EQ(TextOf(folder / "a.csv"), "\"HZ\",\"X\",\"Y\",\"Z\",\"Total\",\r\n\"0\",\"1\",\"2\",\"3\",\"4\",\r\n");
}

TEST(CsvExports, ATableIsWrittenInItsOrderAndUnescaped) {
  const TTempFolder folder;
  TDataset table;
  const std::size_t id = table.AddField("ID", TFieldType::Integer);
  const std::size_t value = table.AddField("A1", TFieldType::Single, "Flow \"in\", ü");
  for (int i = 0; i < 3; ++i) {
    table.Append();
    table.SetInteger(id, i);
    if (i > 0) table.SetSingle(value, static_cast<float>(i) * 0.25F);
  }
  table.AddIndexPair("A1", "A1");
  ASSERT_TRUE(table.SelectIndex("A1Desc"));
  TLogProgress progress;
  ExportTableCsv(table, folder / "t.csv", progress);
  EXPECT_EQ(TextOf(folder / "t.csv"),
            "\"ID\",\"Flow \"in\", ü\",\r\n\"2\",\"0.5\",\r\n\"1\",\"0.25\",\r\n\"0\",\"\",\r\n");
  EXPECT_EQ(progress.log, "Creating CSV exports... @0 of 3 @0");
}

TEST(CsvExports, CancelKeepsCompleteFilesAndRemovesTheCurrentOne) {
  const TTempFolder folder;
  TEventList events;
  for (int event = 0; event < 3; ++event) {
    events.NewEvent();
    for (int i = 0; i < 250; ++i) events.AddValues(i, 1, 2, 3);
  }
  constexpr std::uint32_t kAll[] = {0, 1, 2};
  TLogProgress progress;
  progress.most = 5;  // the begin, three in the first event, one before the second
  EXPECT_THROW(ExportEventsCsv({}, events, kAll, TEventFiles::Samples, folder.Path(), progress), EKorvex);
  const fs::path made = folder / "Mission-";
  EXPECT_EQ(NamesIn(made), std::vector<std::string>{"ID-0.csv"});
  const std::string whole = TextOf(made / "ID-0.csv");
  EXPECT_EQ(std::ranges::count(whole, '\n'), 251);
}

// The failure names the wanted file, whatever stood there before is whole, and nothing else is left.
TEST(CsvExports, AFileThatCannotBeWrittenIsNamedAndTheOlderOneStays) {
  const TTempFolder folder;
  TNoProgress progress;
  TEvent event(0);
  const fs::path file = folder / "old.csv";
  WriteFile(file, {1, 2, 3});
  const auto fails = [&](const fs::path& path) {
    try {
      ExportEventCsv(event, false, path, progress);
    } catch (const fs::filesystem_error& error) {
      return error.path1() == path && error.code();
    }
    return false;
  };

  EXPECT_TRUE(fails(folder / "vanished" / "new.csv"));
  EXPECT_TRUE(fails(folder.Path()));
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_TRUE(fails(file));
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(BytesOfFile(file), (TBytes{1, 2, 3}));
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"old.csv"});
  EXPECT_THROW(ExportEventsCsv({}, {}, {}, TEventFiles::Samples, folder / "vanished", progress), fs::filesystem_error);
}

}  // namespace
