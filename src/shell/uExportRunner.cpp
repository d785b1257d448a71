#include "shell/uExportRunner.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

#include "base/uFiles.h"
#include "base/uText.h"
#include "platform/uSafeFile.h"
#include "shell/uViewSwitch.h"

namespace fs = std::filesystem;

namespace {

// While an export runs only the loading panel takes input.
void SetWindowEnabled(IControls& controls, bool enabled) {
  for (const std::string_view part : {"Ribbon", "WellcomePanel", "MainPanel"}) controls.SetEnabled(part, enabled);
}

// The file or folder and the reason, each on a line. The error may name the place, else it is `place`.
std::string ExportFailure(const std::exception& error, const fs::path& place) {
  const auto* failure = dynamic_cast<const fs::filesystem_error*>(&error);
  const fs::path& named = failure == nullptr ? place : failure->path1();
  return fmt::format("{}\n{}", Printable(Utf8FromPath(named)), Printable(ReasonOf(error)));
}

// Shows the loading panel when the export first processes messages, so that the panel never shows old texts. The rest
// of the window is disabled after that, because the panel remembers which control had the focus.
class TShowingProgress final : public IProgress {
 public:
  TShowingProgress(IProgress& progress, IControls& controls) : FProgress(progress), FControls(controls) {}
  void SetStatus(std::string_view text) override { FProgress.SetStatus(text); }
  void SetPosition(double position) override { FProgress.SetPosition(position); }
  void SetMaximum(double maximum) override { FProgress.SetMaximum(maximum); }
  void ProcessMessages() override {
    if (!std::exchange(FShown, true)) {
      FControls.SetTaskbarProgress(true);
      FControls.BringToFront("pnlLoading");
      FControls.SetVisible("pnlLoading", true);
      CloseAllPanels(FControls);
      SetWindowEnabled(FControls, false);
    }
    FProgress.ProcessMessages();
  }

 private:
  IProgress& FProgress;
  IControls& FControls;
  bool FShown = false;
};

}  // namespace

bool TExportRunner::Run(const fs::path& place, const TSurroundings& around, const TWork& work) {
  if (IsShownRecording(place)) return false;
  const std::vector<std::string_view> panels = OpenPanels(FControls);
  if (!around.grid.empty()) FControls.SetVisible(around.grid, false);
  bool complete = false;
  std::string failure;
  try {
    complete = FFlow.RunExport([&](IProgress& progress) {
      FControls.SetText("PnlLoadingDetail", Printable(Utf8FromPath(place)));
      if (around.endsInShockView) CloseDockPanels(FControls);
      if (around.welcomePanel) FControls.BringToFront("WellcomePanel");
      TShowingProgress showing(progress, FControls);
      work(showing);
    });
  } catch (const std::exception& error) {
    failure = ExportFailure(error, place);
  }
  Restore(around, panels, complete);
  if (FFlow.CloseIfWanted()) return false;
  if (!failure.empty()) {
    FDialogs.ShowMessage("The export could not be written.", failure);
  } else if (!complete) {
    FControls.ShowNotice("Export cancelled", {});
  }
  return complete;
}

void TExportRunner::Restore(const TSurroundings& around, const std::vector<std::string_view>& panels, bool complete) {
  const bool toShockView = complete && around.endsInShockView;
  SetWindowEnabled(FControls, true);
  FControls.SetVisible("pnlLoading", false);
  FControls.SetTaskbarProgress(false);
  if (around.welcomePanel) FControls.BringToFront("MainPanel");
  for (const std::string_view panel : panels) {
    if (!toShockView || panel == kFilterPanelName) FControls.SetVisible(panel, true);
  }
  if (toShockView) FFlow.SwitchView(TView::Shock);
  if (!around.grid.empty()) FControls.SetVisible(around.grid, true);
}

void TExportRunner::SaveAtOnce(const fs::path& file, std::string_view failed,
                               const std::function<std::string()>& contents) {
  if (IsShownRecording(file)) return;
  try {
    SaveFile(file, contents());
    Done(file);
  } catch (const std::exception& error) {
    FDialogs.ShowMessage(failed, ExportFailure(error, file));
  }
}

bool TExportRunner::IsShownRecording(const fs::path& file) {
  if (!IsSameFile(file, PathFromUtf8(FFlow.FileName()))) return false;
  FDialogs.ShowMessage(
      "The export could not be written.",
      fmt::format("{}\nThis is the recording that is shown. Choose another name.", Printable(Utf8FromPath(file))));
  return true;
}

void TExportRunner::Done(const fs::path& file) {
  FFlow.RememberFolderOf(Utf8FromPath(file));
  ShowWritten(file);
}

void TExportRunner::ShowWritten(const fs::path& place) {
  std::error_code unknown;
  const fs::path folder = fs::is_directory(place, unknown) ? place : place.parent_path();
  FControls.ShowNotice(fmt::format("Written: {}", Printable(Utf8FromPath(place))), folder);
}
