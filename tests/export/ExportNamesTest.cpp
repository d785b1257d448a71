#include "export/uExportNames.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/uDateTime.h"
#include "base/uText.h"

namespace {

TMissionData MissionOf(std::string id) {
  TMissionData mission;
  mission.sID = std::move(id);
  mission.rec_starttime = 45033 + (8.0 * 60 + 5) / 1440;  // 2023-04-17 08:05
  return mission;
}

TEST(ExportNames, NothingOfAMissionIdLeavesTheFolder) {
  const std::pair<std::string, std::string> cases[] = {{"A17", "Mission-A17"},
                                                       {"/../../etc/x", "Mission-_.._.._etc_x"},
                                                       {R"(..\..\x)", "Mission-.._.._x"},
                                                       {R"(C:*?"<>|)", "Mission-C_______"},
                                                       {"a\r\n\tb\x7F", "Mission-a___b_"},
                                                       {Windows1252ToUtf8("\xFC\x81\x80"), "Mission-ü_€"},
                                                       {"..", "Mission-__"},
                                                       {"A17. .", "Mission-A17___"},
                                                       {" ", "Mission-_"},
                                                       {"", "Mission-"}};
  for (const auto& [id, name] : cases) {
    EXPECT_EQ(EventFolderName(TEventFiles::Samples, MissionOf(id)), name);
    EXPECT_EQ(std::filesystem::path(name).filename(), name);
  }
  const std::pair<const char*, const char*> devices[] = {
      {"CON", "_"},   {"nul.txt", "_.txt"},   {"Com1", "_"}, {"LPT9 .x", "_.x"},
      {"COM", "COM"}, {"CONSOLE", "CONSOLE"}, {"", "_"}};
  for (const auto& [name, safe] : devices) EXPECT_EQ(SafeFileName(name), safe);
}

TEST(ExportNames, ALongIdIsCutBetweenCharacters) {
  const std::string name = ProposedName(kShocksName, MissionOf(std::string(119, 'x') + "€" + std::string(70000, 'y')));
  EXPECT_EQ(name, "Shocks Mission-" + std::string(119, 'x'));
}

TEST(ExportNames, FoldersOfPeaksCarryTheStampAndTheirFilesThePeak) {
  const TMissionData mission = MissionOf("A17");
  EXPECT_EQ(EventFolderName(TEventFiles::Peaks, mission), "Peaks-Mission-A17-2023-04-17-08-05-00");
  EXPECT_EQ(EventFolderName(TEventFiles::Calibration, mission), "Calibration-Mission-A17-2023-04-17-08-05-00");
  TEvent event(7);
  EXPECT_EQ(EventFileName(TEventFiles::Peaks, 7, event), "ID-7-None-0.csv");
  event.AddValues(0, 0.9F, 0, 0);
  EXPECT_EQ(EventFileName(TEventFiles::Peaks, 7, event), "ID-7-X-pos-0.csv");
  event.AddValues(1, 0, 0, -12.93F);
  EXPECT_EQ(EventFileName(TEventFiles::Calibration, 12, event), "ID-12-Z-neg-12.csv");
  EXPECT_EQ(EventFileName(TEventFiles::Samples, 12, event), "ID-12.csv");
  event.MaxSingle = -2.5F;
  EXPECT_EQ(EventFileName(TEventFiles::Peaks, 12, event), "ID-12-Z-neg--2.csv");
  EXPECT_EQ(ProposedEventName(mission, 7), "Mission-A17 ID-7");
  EXPECT_EQ(ProposedEventName(mission, 7, "PSD"), "Mission-A17 ID-7 PSD");
}

TEST(ExportNames, ADateFormatWithAPathSeparatorIsRefused) {
  for (const char* mask : {"mm/dd/yyyy", R"(dd\mm)"}) {
    SetShortDateFormat(mask);
    EXPECT_THROW(EventFolderName(TEventFiles::Peaks, MissionOf("A17")), std::runtime_error);
    EXPECT_EQ(EventFolderName(TEventFiles::Samples, MissionOf("A17")), "Mission-A17");
  }
  SetShortDateFormat("yyyy-mm-dd");
}

TEST(ExportNames, SheetNamesAreValidInSpreadsheets) {
  const std::pair<std::string, std::string> cases[] = {
      {"Mission-A17", "Mission-A17"},
      {R"([a]:b*c?d/e\f)", "_a__b_c_d_e_f"},
      {"'quoted' '", "_quoted' _"},
      {"Mission-äöü€äöü€äöü€äöü€äöü€äöü€", "Mission-äöü€äöü€äöü€äöü€äöü€äöü"},
      {"", "_"}};
  for (const auto& [name, safe] : cases) EXPECT_EQ(SafeSheetName(name), safe);
  EXPECT_EQ(EventSheetName(7), "Event 7");
  EXPECT_EQ(EventSheetName(7, 2), "Event 7 (2)");
}

}  // namespace
