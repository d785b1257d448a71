// The main window. It owns the views and connects what the user does to the sequences of the shell; the order of steps
// and all decisions are theirs.
#pragma once

#include <QMainWindow>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

#include "shell/uFileFlow.h"
#include "shell/uStartUp.h"

class TControls;
class TDialogs;
class TExportCommands;
class TLimitProfiles;
class TMissionViews;
class TNoteChecksum;
class TNoteCommands;
class TPostedMessages;
class TSettingsBinder;
class TViewActions;
struct TMainParts;
struct TReportConfig;
struct TSummarySource;

class TKorvexMainForm : public QMainWindow {
  Q_OBJECT

 public:
  // A read fails before the mission outgrows the bytes that `memoryBound` gives when it begins.
  TKorvexMainForm(TProgram program, std::function<std::uint64_t()> memoryBound);
  ~TKorvexMainForm() override;

  [[nodiscard]] TFileFlow& Flow() { return *FFlow; }
  [[nodiscard]] QWidget& View(TView view) const;

  void FormCreate();
  void FormShow();
  void FormClose();

  void actFileOpenExecute() { FFlow->AskAndOpen(); }
  void barbtnlrgOpenDemoFileClick() { FFlow->AskAndOpenDemo(); }
  // Kept on purpose: a file stays shown until another one is opened or the program ends.
  void actFileCloseExecute() {}
  void actSetViewOverviewExecute() { FFlow->SwitchView(TView::Overview); }
  void actSetViewShockExecute() { FFlow->SwitchView(TView::Shock); }
  void actSetViewReportExecute() { FFlow->SwitchView(TView::Report); }
  void actSetViewDamageBoundaryExecute() { FFlow->SwitchView(TView::DamageBoundary); }
  void actSetViewStatisticsExecute() { FFlow->SwitchView(TView::Statistics); }
  // Lays the report out by this choice, which the next report starts with.
  void btnReportConfigOKClick(const TReportConfig& config);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void ConnectFiles();
  void ConnectRecent();
  void ConnectSettings();
  void ConnectProfiles();
  void ConnectNotes();
  void ConnectReport();
  void ConnectResponse();
  // Runs a step that reads or writes a file of the settings folder, if there is one; says what fails.
  void InSettingsFolder(const char* file, const char* failure,
                        const std::function<void(const std::filesystem::path& folder)>& step);
  void SavePlace();
  [[nodiscard]] TSummarySource SummarySource() const;

  TProgram FProgram;
  std::unique_ptr<TMainParts> FParts;
  std::unique_ptr<TSettingsBinder> FSettings;
  std::unique_ptr<TControls> FControls;
  std::unique_ptr<TDialogs> FDialogs;
  std::unique_ptr<TMissionViews> FViews;
  std::unique_ptr<TPostedMessages> FMessages;
  std::unique_ptr<TFileFlow> FFlow;
  std::unique_ptr<TExportCommands> FExports;
  std::unique_ptr<TLimitProfiles> FProfiles;
  std::unique_ptr<TNoteCommands> FNotes;
  std::unique_ptr<TNoteChecksum> FNoteChecksum;
  std::unique_ptr<TViewActions> FViewActions;
  bool FShownOnce = false;
};
