#include "shell/uStartUp.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "base/uFiles.h"
#include "shell/uLayoutCommands.h"
#include "shell/uSettingsStore.h"
#include "shell/uSteps.h"
#include "shell/uViewSwitch.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
// By their index among the window's pictures.
constexpr std::string_view kLogoFiles[] = {"Company-Logo.png", "Report-Logo.png"};
constexpr std::string_view kRecentDocumentsFile = "recentdocuments.ini";

// The plain files of the folder that are not hidden, in the order in which the search returns them; none when there is
// no folder.
std::vector<fs::path> ManualDocuments(const fs::path& folder) {
  std::vector<fs::path> documents;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code unknownKind;
    const bool isHidden = entry->path().filename().native().front() == '.';
    if (!isHidden && entry->is_regular_file(unknownKind)) documents.push_back(entry->path());
  }
  return documents;
}

void AddUserManual(const TProgram& program, IMainScreen& screen) {
  std::size_t index = 0;
  for (const fs::path& document : ManualDocuments(program.folder / "doc_shock")) {
    std::string caption = Utf8FromPath(document.filename());
    std::ranges::replace(caption, '-', ' ');
    screen.AddUserManualIcon(fmt::format("frmUserManualIcon_{}", index++), caption, Utf8FromPath(document));
  }
}

// A link that leads nowhere exists too: nothing is to be written through it.
bool Exists(const fs::path& file) {
  std::error_code unknown;
  return fs::exists(fs::symlink_status(file, unknown));
}

// Where the user has no logo yet, the built-in one stands to be replaced.
void LoadLogos(const fs::path& folder, TSteps& steps, IMainScreen& screen) {
  for (std::size_t i = 0; i < std::size(kLogoFiles); ++i) {
    const fs::path file = folder / kLogoFiles[i];
    steps.Run(file, [&] { Exists(file) ? screen.LoadLogo(i, file) : screen.SaveLogo(i, file); });
  }
}

void SaveLogos(const fs::path& folder, TSteps& steps, IMainScreen& screen) {
  for (std::size_t i = 0; i < std::size(kLogoFiles); ++i) {
    const fs::path file = folder / kLogoFiles[i];
    steps.Run(file, [&] { screen.SaveLogo(i, file); });
  }
}

void LoadLayouts(const fs::path& folder, TSteps& steps, IMainScreen& screen) {
  const fs::path designed = folder / kDefaultLayoutFile;
  if (!Exists(designed)) steps.Run(designed, [&] { screen.SaveLayout(designed); });
  const fs::path user = folder / kUserLayoutFile;
  if (!Exists(user)) return;
  steps.Run(user, [&] { screen.LoadLayout(user); });
  CloseAllPanels(screen);  // the layout may show them, and no file is shown
}

}  // namespace

std::string StartCaption(const TProgram& program) {
  return fmt::format("{}[W64] v{}", kApplicationTitle, program.version);
}

std::string DemoFolder(const TProgram& program) {
  return Utf8FromPath(program.folder / "data" / "");
}

void FormCreate(const TProgram& program, TRecentDocuments& recent, IMainScreen& screen) {
  screen.SetApplicationTitle(kApplicationTitle);
  screen.SetCaption(StartCaption(program));
  AddUserManual(program, screen);
  constexpr std::pair<std::string_view, std::string_view> kCards[] = {{"lblCardToTTotal", "ToT total"},
                                                                      {"lblCardIoTTotal", "IoT total"},
                                                                      {"lblCardToTMax", "ToT max"},
                                                                      {"lblCardIoTMax", "IoT max"}};
  for (const auto& [card, caption] : kCards) screen.SetText(card, caption);
  screen.SetOpenDialogFolder(program.dataFolder);
  EnterWelcomeState(screen);
  screen.SetEnabled("dxBarReload", false);
  screen.PrepareSensorsAxes();

  const fs::path folder = PathFromUtf8(program.findSettingsFolder());
  if (folder.empty()) return;
  TSteps steps;
  steps.Run(folder / kSettingsFile, [&] {
    if (const auto settings = ReadSettings(folder)) screen.ShowSettings(*settings);
  });
  LoadLogos(folder, steps, screen);
  LoadLayouts(folder, steps, screen);
  const fs::path documents = folder / kRecentDocumentsFile;
  steps.Run(documents, [&] { recent.Load(documents); });
  screen.ShowRecentDocuments(recent);
  steps.Tell(screen, "Not everything in the settings folder can be used.");
}

void FormShow(const TProgram& program, IMainScreen& screen) {
  screen.SetSkinColour("LayoutControlColor", kWhite);
  screen.SetSkinColour("Common.GroupPanelNoBorder", kWhite);
  screen.RefreshLookAndFeel();
  std::error_code unknown;
  screen.SetVisible("barbtnlrgOpenDemoFile", fs::exists(program.folder / "data" / "demo.kshock", unknown));
  screen.SetUpSensorsAxes();
}

void FormClose(const TProgram& program, const TSettings& settings, TRecentDocuments& recent, IMainScreen& screen) {
  screen.FreePointAbsorptionLists();
  const fs::path folder = PathFromUtf8(program.findSettingsFolder());
  if (folder.empty()) return;
  TSteps steps;
  SaveLogos(folder, steps, screen);
  steps.Run(folder / kSettingsFile, [&] { WriteSettings(folder, settings); });
  const fs::path documents = folder / kRecentDocumentsFile;
  steps.Run(documents, [&] { recent.Save(documents); });
  steps.Tell(screen, "Not everything could be saved.");
}
