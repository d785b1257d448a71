// How a recording comes into the window: choosing, reading on a thread, completing, failing, cancelling, closing.
//
//   Welcome → Reading → Filling → Shown      Reading, Filling → Welcome on failure, Cancel and unfit files
//                                Shown ⇄ Exporting
//
// Filling and exporting let the window handle its messages, so whatever the user does then may call back: while the
// flow is busy every command is refused, and a close is remembered and done after. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/uMessages.h"
#include "base/uProgress.h"
#include "model/uReadFileThread.h"
#include "shell/uMainScreen.h"
#include "shell/uStartUp.h"
#include "shell/uViewSwitch.h"

class TFileFlow {
 public:
  enum class TState { Welcome, Reading, Filling, Shown, Exporting };

  // `port` is the handle on which the reader's messages come back to HandleMessage; a read fails before the mission
  // outgrows the bytes that `memoryBound` gives when it begins.
  TFileFlow(TProgram program, std::uint64_t port, std::function<std::uint64_t()> memoryBound, IMainScreen& screen);

  [[nodiscard]] TState State() const { return FState; }
  // A file is being read, the views are being filled or an export runs: commands are refused.
  [[nodiscard]] bool Busy() const { return FState != TState::Welcome && FState != TState::Shown; }
  [[nodiscard]] bool FileShown() const { return FState == TState::Shown; }
  [[nodiscard]] TShownMission& Mission() { return FMission; }
  // The file that is shown, or was the last to be opened.
  [[nodiscard]] const std::string& FileName() const { return FFileName; }
  // The folder of the last file that was opened or saved, at first the data folder.
  [[nodiscard]] const std::string& RememberedFolder() const { return FRememberedFolder; }
  void RememberFolderOf(const std::string& fileName);
  // What was shown last, and before that. Whoever changes it shows it.
  [[nodiscard]] TRecentDocuments& Recent() { return FRecent; }

  // The open command and the demo button: ask for a file; a cancelled dialog leaves everything as it is.
  void AskAndOpen();
  void AskAndOpenDemo();
  // Every other way: an argument, a path, a list entry, a drop.
  void Open(const std::string& fileName);
  // Reads the same file again and keeps selection and view.
  void Reload();
  // Ends the read, the filling or the export; the messages tell when it has ended.
  void Cancel();

  // What the reader posts.
  void HandleMessage(const TMessage& message);

  void SwitchView(TView view);
  [[nodiscard]] TView View() const { return FView; }

  // Exports the shown mission. Cancel and a close end it where `work` lets the window handle its messages; then the
  // result is false. It throws what `work` throws. After a close CloseIfWanted has to be called.
  [[nodiscard]] bool RunExport(const std::function<void(IProgress&)>& work);

  // The window wants to close. A read is ended first; while the views are filled or an export runs the close is
  // remembered and false is returned, and CloseWindow comes later.
  [[nodiscard]] bool MayClose();
  // Does a close that was remembered; false when there is none.
  bool CloseIfWanted();

 private:
  class TScreenProgress;
  struct TKept {  // by a reload
    std::optional<std::size_t> selectedEvent;
    TView view;
    std::string order;  // the index of the event tables
    std::string sensorsOrder, batteryOrder;
    std::vector<std::string_view> closed;  // dock panels
    bool filterPanel;                      // is open
    std::optional<TTimeSpan> band;         // of the navigator, unless it was over everything
  };

  void AskAndOpen(std::string folder);
  void Start(const std::string& fileName, std::optional<TKept> kept);
  void LoadingPreamble();
  void OpenDataFile(const std::string& fileName);
  void ReadFinished();
  void ReadFailed(std::int64_t code);
  void TellBlocks();
  [[nodiscard]] std::string DamageOf(const TReadExtent& extent) const;
  void TellDamage(const TReadExtent& extent);
  void Restore(const TKept& kept);
  void Step(int position, std::string_view text);
  void CompleteLoading();
  void FileLoadComplete();
  void EnableOpening();
  void BackToWelcome();
  void Fail(std::string_view text, std::string_view reason);

  TProgram FProgram;
  std::uint64_t FPort;
  std::function<std::uint64_t()> FMemoryBound;
  IMainScreen& FScreen;
  TState FState = TState::Welcome;
  TView FView = TView::Overview;
  TShownMission FMission;
  std::string FFileName;
  std::string FRememberedFolder;
  TRecentDocuments FRecent;
  std::optional<TKept> FKept;
  std::int64_t FBlocks = 0;
  bool FCancelled = false;
  bool FCloseWanted = false;
  std::unique_ptr<TReadFileThread> FReader;  // while a file is read
};
