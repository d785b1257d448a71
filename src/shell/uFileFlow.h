// How a recording comes into the window: choosing, reading on a thread, completing, failing, cancelling, closing.
//
//   Welcome → Reading → Filling → Shown      Reading, Filling → Welcome on failure, Cancel and unfit files
//                                Shown ⇄ Exporting
//
// While a mission is filled or exported the window handles messages, so the user's commands may call back. A busy flow
// refuses every command; it remembers a close and does it afterwards. Main thread only.
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
#include "shell/uIControls.h"
#include "shell/uIDialogs.h"
#include "shell/uIMissionViews.h"
#include "shell/uStartUp.h"

class TFileFlow {
 public:
  enum class TState { Welcome, Reading, Filling, Shown, Exporting };

  // `port` receives the reader's messages; its owner passes them to HandleMessage. `memoryBound` is called when a read
  // begins: the read fails before the mission takes more bytes than that.
  TFileFlow(TProgram program, std::uint64_t port, std::function<std::uint64_t()> memoryBound, IControls& controls,
            IDialogs& dialogs, IMissionViews& views);

  [[nodiscard]] TState State() const { return FState; }
  // Commands are refused.
  [[nodiscard]] bool Busy() const { return FState != TState::Welcome && FState != TState::Shown; }
  [[nodiscard]] bool FileShown() const { return FState == TState::Shown; }
  [[nodiscard]] TShownMission& Mission() { return FMission; }
  // The file that is shown, or was the last to be opened.
  [[nodiscard]] const std::string& FileName() const { return FFileName; }
  // The folder of the last file that was opened or saved, at first the data folder.
  [[nodiscard]] const std::string& RememberedFolder() const { return FRememberedFolder; }
  void RememberFolderOf(const std::string& fileName);
  // Whoever changes the lists calls ShowRecentDocuments.
  [[nodiscard]] TRecentDocuments& Recent() { return FRecent; }

  // The open command and the demo button ask for a file; a cancelled dialog changes nothing.
  void AskAndOpen();
  void AskAndOpenDemo();
  void Open(const std::string& fileName);
  // Reads the same file again and keeps view, selection, order, filter, dock panels and band.
  void Reload();
  // Asks the read, the filling or the export to end; State says when it has.
  void Cancel();

  // What the reader posts.
  void HandleMessage(const TMessage& message);

  void SwitchView(TView view);
  [[nodiscard]] TView View() const { return FView; }

  // Calls `work`, which exports the shown mission. Throws what `work` throws. False when the user cancelled or closed
  // the window, which ends `work` where it processes messages; the caller then calls CloseIfWanted.
  [[nodiscard]] bool RunExport(const std::function<void(IProgress&)>& work);

  // The window asks before it closes. True after a read has been ended. False while a mission is filled or exported:
  // the close is remembered.
  [[nodiscard]] bool MayClose();
  // Closes the window if a close was remembered, else false.
  bool CloseIfWanted();

 private:
  class TWindowProgress;
  struct TKept {  // what a reload keeps
    std::optional<std::size_t> selectedEvent;
    TView view;
    std::string order;  // the index of the event tables
    std::string sensorsOrder, batteryOrder;
    std::vector<std::string_view> closed;  // dock panels
    bool filterPanelOpen;
    std::optional<TTimeSpan> band;  // nothing when it was the whole recording
  };

  void AskAndOpen(std::string folder);
  void Start(const std::string& fileName, std::optional<TKept> kept);
  void LoadingPreamble();
  void OpenDataFile(const std::string& fileName);
  void ReadFinished();
  void ReadFailed(std::int64_t code);
  void ReadCancelled();
  void ShowBlocksRead();
  void ShowFileState(const TReadExtent& extent);
  void Restore(const TKept& kept);
  void Step(int position, std::string_view text);
  void CompleteLoading();
  void FileLoadComplete();
  void EnableOpening(bool enabled);
  void RemoveMission();
  void BackToWelcome();
  void Fail(std::string_view text, std::string_view reason);

  TProgram FProgram;
  std::uint64_t FPort;
  std::function<std::uint64_t()> FMemoryBound;
  IControls& FControls;
  IDialogs& FDialogs;
  IMissionViews& FViews;
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
