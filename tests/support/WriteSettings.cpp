// Writes one file of the settings folder as the window does: write_settings FOLDER WHAT. Prints the error and ends with
// 4 when that fails. Each run changes what the file holds.
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "base/uFiles.h"
#include "base/uProgress.h"
#include "platform/uProcessLimits.h"
#include "shell/uLimitProfileFile.h"
#include "shell/uNotes.h"
#include "shell/uRecentDocuments.h"
#include "shell/uReportConfig.h"
#include "shell/uSettingsStore.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) try {
  if (argc < 3) return 2;
  SurviveFileSizeLimit();
  const fs::path folder = argv[1];
  const std::string text =
      argc > 3 ? argv[3] : std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
  const std::map<std::string, std::function<void()>> writers = {{"settings",
                                                                 [&] {
                                                                   TSettings settings;
                                                                   settings.display.company = text;
                                                                   WriteSettings(folder, settings);
                                                                 }},
                                                                {"recents",
                                                                 [&] {
                                                                   TRecentDocuments recents;
                                                                   recents.Load(folder / "recentdocuments.ini");
                                                                   recents.Add("/recordings/" + text + ".kshock");
                                                                   recents.Save(folder / "recentdocuments.ini");
                                                                 }},
                                                                {"report",
                                                                 [&] {
                                                                   TReportConfig config;
                                                                   config.worstCount =
                                                                       1 + std::hash<std::string>()(text) % kMaxWorst;
                                                                   KeepReportConfig(folder, config);
                                                                 }},
                                                                {"limits",
                                                                 [&] {
                                                                   TLimitProfile profile{};
                                                                   profile.name = text;
                                                                   WriteLimitProfile(folder / "fragile.ini", profile);
                                                                 }},
                                                                {"notes", [&] {
                                                                   TNotes notes(folder / "mission.kshock", {});
                                                                   notes.Add({.text = text});
                                                                   TNoProgress progress;
                                                                   notes.ReadChecksum(progress);
                                                                   notes.Save();
                                                                 }}};
  writers.at(argv[2])();
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 4;
}
