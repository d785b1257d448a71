// Runs what an export writes, whatever that is: the loading panel with Cancel, the window's state before and after, and
// the one message about its end. A cancelled export says so, a failure names the file and the reason. The recording
// that is shown is never replaced. Main thread only.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/uFileFlow.h"

class TExportRunner {
 public:
  using TWork = std::function<void(IProgress&)>;
  // What an export does to the window besides closing the dock panels while it runs.
  struct TSurroundings {
    std::string_view grid = {};    // hidden while the export runs
    bool welcomePanel = false;     // behind the loading panel
    bool endsInShockView = false;  // when complete; the dock panels are then those of the shock view
  };

  TExportRunner(TFileFlow& flow, IControls& controls, IDialogs& dialogs)
      : FFlow(flow), FControls(controls), FDialogs(dialogs) {}

  // Calls `work`, which writes `place`, and restores the window however that ends. True when the export is complete and
  // the window stays open.
  bool Run(const std::filesystem::path& place, const TSurroundings& around, const TWork& work);
  // Writes a file without the loading panel; `failed` heads the message when `contents` or the writing throws.
  void SaveAtOnce(const std::filesystem::path& file, std::string_view failed,
                  const std::function<std::string()>& contents);
  // Says what was written. `Done` also remembers its folder for the next dialog.
  void Done(const std::filesystem::path& file);
  void ShowWritten(const std::filesystem::path& place);

 private:
  // True, after a message, for the recording that is shown.
  [[nodiscard]] bool IsShownRecording(const std::filesystem::path& file);
  void Restore(const TSurroundings& around, const std::vector<std::string_view>& panels, bool complete);

  TFileFlow& FFlow;
  IControls& FControls;
  IDialogs& FDialogs;
};
