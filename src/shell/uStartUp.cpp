#include "shell/uStartUp.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "base/uFiles.h"
#include "shell/uCompareCommands.h"
#include "shell/uFailureList.h"
#include "shell/uLayoutCommands.h"
#include "shell/uSettingsStore.h"
#include "shell/uViewSwitch.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kManualFolder = "doc_shock";
// By TManualTopic.
constexpr std::string_view kManual[] = {"1-Quick-Start.pdf", "2-Charts-and-Navigator.pdf", "3-Metrics-and-Formulas.pdf",
                                        "4-Exports-and-Report.pdf"};
constexpr std::string_view kRecentDocumentsFile = "recentdocuments.ini";

// Without a file the built-in logo is saved, for the user to replace.
void LoadLogos(const fs::path& folder, TFailureList& failures, IControls& controls) {
  for (std::size_t i = 0; i < std::size(kLogoFiles); ++i) {
    const fs::path file = folder / kLogoFiles[i];
    failures.Run(file, [&] { IsThere(file) ? controls.LoadLogo(i, file) : controls.SaveLogo(i, file); });
  }
}

void SaveLogos(const fs::path& folder, TFailureList& failures, IControls& controls) {
  for (std::size_t i = 0; i < std::size(kLogoFiles); ++i) {
    const fs::path file = folder / kLogoFiles[i];
    failures.Run(file, [&] { controls.SaveLogo(i, file); });
  }
}

void LoadLayouts(const fs::path& folder, TShownMission& mission, TFailureList& failures, IControls& controls,
                 IMissionViews& views) {
  const fs::path designed = folder / kDefaultLayoutFile;
  if (!IsThere(designed)) failures.Run(designed, [&] { controls.SaveLayout(designed, {}); });
  const fs::path user = folder / kUserLayoutFile;
  if (!IsThere(user)) return;
  failures.Run(user, [&] {
    controls.LoadLayout(user);
    TakeKeptReference(user, mission, views);
  });
  CloseAllPanels(controls);  // the layout may show them, and no file is shown
}

}  // namespace

std::string StartCaption(const TProgram& program) {
  return fmt::format("{}[W64] v{}", kApplicationTitle, program.version);
}

std::string DemoFolder(const TProgram& program) {
  return Utf8FromPath(program.folder / "data" / "");
}

std::vector<TManualDocument> UserManual(const TProgram& program) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(program.folder / kManualFolder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code unknownKind;
    const bool hidden = Utf8FromPath(entry->path().filename()).starts_with('.');
    if (!hidden && entry->is_regular_file(unknownKind)) files.push_back(entry->path());
  }
  std::ranges::sort(files);
  std::vector<TManualDocument> documents;
  for (const fs::path& file : files) {
    std::string caption = Utf8FromPath(file.filename());
    std::ranges::replace(caption, '-', ' ');
    documents.push_back(
        {fmt::format("frmUserManualIcon_{}", documents.size()), std::move(caption), Utf8FromPath(file)});
  }
  return documents;
}

fs::path ManualDocument(const TProgram& program, TManualTopic topic) {
  return program.folder / kManualFolder / kManual[static_cast<std::size_t>(topic)];
}

void FormCreate(const TProgram& program, TShownMission& mission, TRecentDocuments& recent, IControls& controls,
                IDialogs& dialogs, IMissionViews& views) {
  controls.SetCaption(StartCaption(program));
  constexpr std::pair<std::string_view, std::string_view> kCards[] = {{"lblCardToTTotal", "ToT total"},
                                                                      {"lblCardIoTTotal", "IoT total"},
                                                                      {"lblCardToTMax", "ToT max"},
                                                                      {"lblCardIoTMax", "IoT max"}};
  for (const auto& [card, caption] : kCards) controls.SetText(card, caption);
  EnterWelcomeState(controls);
  controls.SetEnabled("dxBarReload", false);

  const fs::path folder = PathFromUtf8(program.findSettingsFolder());
  if (folder.empty()) return;
  TFailureList failures;
  failures.Run(folder / kSettingsFile, [&] {
    if (const auto settings = ReadSettings(folder)) controls.ShowSettings(*settings);
  });
  LoadLogos(folder, failures, controls);
  LoadLayouts(folder, mission, failures, controls, views);
  const fs::path documents = folder / kRecentDocumentsFile;
  failures.Run(documents, [&] { recent.Load(documents); });
  controls.ShowRecentDocuments(recent);
  failures.Show(dialogs, "Not everything in the settings folder can be used.");
}

void FormShow(const TProgram& program, IControls& controls) {
  std::error_code unknown;
  controls.SetVisible("barbtnlrgOpenDemoFile", fs::exists(program.folder / "data" / "demo.kshock", unknown));
}

void FormClose(const TProgram& program, const TSettings& settings, TRecentDocuments& recent, IControls& controls,
               IDialogs& dialogs) {
  const fs::path folder = PathFromUtf8(program.findSettingsFolder());
  if (folder.empty()) return;
  TFailureList failures;
  SaveLogos(folder, failures, controls);
  failures.Run(folder / kSettingsFile, [&] { WriteSettings(folder, settings); });
  const fs::path documents = folder / kRecentDocumentsFile;
  failures.Run(documents, [&] { recent.Save(documents); });
  failures.Show(dialogs, "Not everything could be saved.");
}
