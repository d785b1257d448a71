#include "shell/uStartUp.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "base/uFiles.h"
#include "shell/uViewSwitch.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

// The plain files of the folder, in the order in which the search returns them; none when there is no folder.
std::vector<fs::path> ManualDocuments(const fs::path& folder) {
  std::vector<fs::path> documents;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code unknownKind;
    if (entry->is_regular_file(unknownKind)) documents.push_back(entry->path());
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

}  // namespace

std::string StartCaption(const TProgram& program) {
  return fmt::format("{}[W64] v{}", kApplicationTitle, program.version);
}

std::string DemoFolder(const TProgram& program) {
  return Utf8FromPath(program.folder / "data" / "");
}

void FormCreate(const TProgram& program, IMainScreen& screen) {
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
}

void FormShow(const TProgram& program, IMainScreen& screen) {
  screen.SetSkinColour("LayoutControlColor", kWhite);
  screen.SetSkinColour("Common.GroupPanelNoBorder", kWhite);
  screen.RefreshLookAndFeel();
  std::error_code unknown;
  screen.SetVisible("barbtnlrgOpenDemoFile", fs::exists(program.folder / "data" / "demo.kshock", unknown));
  screen.SetUpSensorsAxes();
}

void FormClose(IMainScreen& screen) {
  screen.FreePointAbsorptionLists();
}
