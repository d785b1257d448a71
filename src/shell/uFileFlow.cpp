#include "shell/uFileFlow.h"

#include <fmt/format.h>

#include <exception>
#include <new>
#include <utility>

#include "base/uFiles.h"
#include "base/uText.h"
#include "model/uExceptions1V0.h"
#include "model/uQuantities.h"
#include "shell/uMissionLoad.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uNoteCommands.h"
#include "shell/uOrderingCommands.h"
#include "shell/uViewSwitch.h"

namespace {

constexpr std::string_view kFilter = "Korvex ShockScope File|*.kshock|Korvex Data File|*.kshock;*.korvex";
constexpr int kLoadingSteps = 9;
constexpr std::string_view kCannotBeShown = "The file cannot be shown.";

// Events, peak and title in a line, for the recent documents; a title that is too long is left out.
std::string AboutMission(const TShownMission& mission) {
  constexpr std::size_t kMaxTitle = 200;  // bytes
  std::string about = Counted(mission.Summary.events, "event");
  if (const auto peak = mission.Summary.peakEvent) {
    about += fmt::format(" · peak {} g", MaskFloat("0.##", mission.Events.GetItem(*peak).Max));
  }
  const std::string title = Printable(mission.Data.sTitle);
  // A title of no bytes reads as a blank.
  const bool isBlank = title.find_first_not_of(' ') == std::string::npos;
  return isBlank || title.size() > kMaxTitle ? about : fmt::format("{} · {}", about, title);
}

}  // namespace

// Shows how far the tables or an export are, and ends them when the user cancels or closes.
class TFileFlow::TWindowProgress final : public IProgress {
 public:
  explicit TWindowProgress(TFileFlow& flow) : FFlow(flow) {}
  void SetStatus(std::string_view text) override { FFlow.FControls.SetText("PnlLoadingMsg", text); }
  void SetPosition(double position) override { FFlow.FControls.SetProgress(position); }
  void SetMaximum(double maximum) override { FFlow.FControls.SetProgressMaximum(static_cast<int>(maximum)); }
  void ProcessMessages() override { Process(false); }
  void Process(bool atOnce) {
    FFlow.FControls.ProcessMessages(atOnce);
    if (FFlow.FCancelled || FFlow.FCloseWanted) throw EKorvex(kReadCancelled);
  }

 private:
  TFileFlow& FFlow;
};

TFileFlow::TFileFlow(TProgram program, std::uint64_t port, std::function<std::uint64_t()> memoryBound,
                     IControls& controls, IDialogs& dialogs, IMissionViews& views)
    : FProgram(std::move(program)),
      FPort(port),
      FMemoryBound(std::move(memoryBound)),
      FControls(controls),
      FDialogs(dialogs),
      FViews(views),
      FRememberedFolder(FProgram.dataFolder) {}

void TFileFlow::AskAndOpen() {
  AskAndOpen(FProgram.dataFolder);
}

void TFileFlow::AskAndOpenDemo() {
  AskAndOpen(DemoFolder(FProgram));
}

void TFileFlow::AskAndOpen(std::string folder) {
  if (Busy()) return;
  const int filterIndex = FMission.Settings.fileFilter + 1;
  const auto file = FDialogs.AskForRecording({std::move(folder), kFilter, filterIndex});
  if (file) Open(*file);
}

void TFileFlow::Open(const std::string& fileName) {
  // Dialogs and drops may give other separators than the system's.
  if (!Busy()) Start(Utf8FromPath(PathFromUtf8(fileName)), std::nullopt);
}

void TFileFlow::Reload() {
  if (Busy() || FFileName.empty()) return;
  std::optional<TKept> kept;
  if (FileShown()) {
    kept = {FMission.SelectedEvent,
            FView,
            FMission.Tables.Events.IndexName(),
            FMission.Tables.Sensors.IndexName(),
            FMission.Tables.Battery.IndexName(),
            ClosedDockPanels(FControls),
            FControls.IsVisible(kFilterPanelName),
            FMission.Band};
    // A recording that has grown is seen whole again.
    if (FViews.NavigatorSpan() == kept->band) kept->band.reset();
  }
  Start(std::string(FFileName), std::move(kept));
}

// What goes wrong before the reader exists must not leave the flow waiting for it.
void TFileFlow::Start(const std::string& fileName, std::optional<TKept> kept) {
  try {
    LoadingPreamble();
    // Another recording is seen whole at first; the filter keeps its conditions.
    if (!kept) FMission.FilterActive = false;
    FKept = std::move(kept);
    OpenDataFile(fileName);
  } catch (...) {
    FReader.reset();
    BackToWelcome();
    throw;
  }
}

void TFileFlow::Cancel() {
  if (!Busy()) return;
  FCancelled = true;
  FControls.SetText("PnlLoadingMsg", "Cancelling…");
  if (FReader) FReader->Terminate();
}

void TFileFlow::LoadingPreamble() {
  FState = TState::Reading;
  FCancelled = false;
  EnableOpening(false);
  CloseDockPanels(FControls);
  HideFileControls(FControls);
  FControls.SetVisible("dxLayoutItemReportIsFiltered", false);
  FControls.SetVisible("dxLayoutItemReportIsFilteredCover", false);
  FControls.BringToFront("WellcomePanel");
  FControls.SetText("PnlLoadingMsg", "Reading file data...");
  FControls.SetText("PnlLoadingDetail", "");
  FControls.SetProgressMaximum(kLoadingSteps);
  FControls.SetProgress(0);
  FControls.SetTaskbarProgress(true);
  FControls.SetVisible("pnlLoading", true);
  FControls.BringToFront("pnlLoading");
  FControls.ProcessMessages(true);
}

void TFileFlow::OpenDataFile(const std::string& fileName) {
  FFileName = fileName;
  RememberFolderOf(fileName);
  FBlocks = 0;
  ShowBlocksRead();
  FControls.SetVisible("pnlDamaged", false);
  RemoveMission();
  FControls.SetCaption(fmt::format("{}v{} [{}]", kApplicationTitle, FProgram.version, fileName));
  if (FCloseWanted) {
    BackToWelcome();
    CloseIfWanted();
    return;
  }
  try {
    FReader = std::make_unique<TReadFileThread>(FPort, PathFromUtf8(fileName), FMemoryBound());
  } catch (const std::exception& error) {  // no thread, no memory
    Fail("The file cannot be read.", error.what());
    return;
  }
  if (FCancelled) FReader->Terminate();
}

void TFileFlow::ShowBlocksRead() {
  FControls.SetText("PnlLoadingDetail", fmt::format("{} · {} blocks read", Printable(FFileName), FBlocks));
}

void TFileFlow::RememberFolderOf(const std::string& fileName) {
  FRememberedFolder = Utf8FromPath(PathFromUtf8(fileName).parent_path());
}

void TFileFlow::HandleMessage(const TMessage& message) {
  if (message.Msg != kReadFileMessage || !FReader) return;
  switch (message.wParam) {
    case kReadProgress:
      FBlocks = message.lParam;
      ShowBlocksRead();
      break;
    case kReadFinished:
      ReadFinished();
      break;
    case kReadFailed:
      ReadFailed(message.lParam);
      break;
    default:
      break;
  }
}

void TFileFlow::ReadFinished() {
  FReader->WaitFor();
  const TReadExtent extent = FReader->Extent();
  FReader.reset();
  if (!MissionData.bValid || !EventList.ValidCreator) {
    Fail("This file cannot be displayed.", WhyNotDisplayable(extent));
    return;
  }
  FState = TState::Filling;
  FMission.Damage = DamageText(extent);
  try {
    CompleteLoading();
  } catch (const EKorvex& error) {
    if (error.iException == kReadCancelled) {
      ReadCancelled();
    } else {
      Fail(kCannotBeShown, error.what());
    }
    return;
  } catch (const std::bad_alloc&) {
    Fail(kCannotBeShown, "There is not enough memory for this recording.");
    return;
  } catch (const std::exception& error) {
    Fail(kCannotBeShown, error.what());
    return;
  }
  ShowFileState(extent);
  CloseIfWanted();
}

void TFileFlow::ShowFileState(const TReadExtent& extent) {
  const std::string name = Utf8FromPath(PathFromUtf8(FFileName).filename());
  const std::string_view state = extent.damaged             ? "damaged"
                                 : extent.readError.empty() ? "complete"
                                                            : "not read to its end";
  FControls.SetText("lblStatusFile", fmt::format("{} · {}", Printable(name), state));
  if (FMission.Damage.empty()) return;
  FControls.SetText("lblDamaged", FMission.Damage);
  FControls.SetVisible("pnlDamaged", true);
}

void TFileFlow::ReadFailed(std::int64_t code) {
  FReader->WaitFor();
  FReader.reset();
  constexpr std::string_view kCannotBeOpened = "The file cannot be opened";
  std::string reason = ReadErrorText;
  if (reason.starts_with(kCannotBeOpened)) reason.erase(0, kCannotBeOpened.size() + 2);  // said in the title
  if (code == kReadCancelled) {
    ReadCancelled();
  } else {
    Fail(code == kCannotOpenDataFile ? fmt::format("{}.", kCannotBeOpened) : "The file cannot be read.", reason);
  }
}

void TFileFlow::ReadCancelled() {
  BackToWelcome();
  if (!CloseIfWanted()) FControls.ShowNotice("Reading cancelled", {});
}

void TFileFlow::Step(int position, std::string_view text) {
  TWindowProgress progress(*this);
  progress.SetStatus(text);
  progress.SetPosition(position);
  progress.Process(true);
}

void TFileFlow::CompleteLoading() {
  Step(1, "Loading the data...");
  TWindowProgress progress(*this);
  FillMission(FMission, progress);
  ReadNotes(PathFromUtf8(FFileName), PathFromUtf8(FProgram.findSettingsFolder()), FMission);
  Step(6, "Populating the chart series...");
  FViews.PopulateChartSeries(FMission);
  Step(7, "Updating UI...");
  FViews.UpdateKorvexUI(FMission);
  Step(8, "Preparing Report...");
  FViews.PrepareReport(FMission);
  Step(9, "Finishing up...");
  FileLoadComplete();
}

void TFileFlow::FileLoadComplete() {
  FState = TState::Shown;
  FControls.SetVisible("pnlLoading", false);
  FControls.SetTaskbarProgress(false);
  EnableOpening(true);
  actNavSetIntAllExecute(FMission, FViews);
  if (FKept && FKept->band) KeepNavigatorBand(FMission, *FKept->band, FViews);
  const bool stillThere = FKept && FKept->selectedEvent && *FKept->selectedEvent < FMission.Events.Count();
  SelectEvent(
      FMission,
      stillThere ? FKept->selectedEvent : VisibleOrFirst(FMission.CLDS, FMission.Summary.mostIntense.value_or(0)),
      FViews);
  SwitchView(FKept ? FKept->view : TView::Overview);
  if (FKept) Restore(*FKept);
  if (!FMission.Notes.problem.empty()) FControls.ShowNotice(FMission.Notes.problem, {});
  FRecent.Add(FFileName, AboutMission(FMission));
  FControls.ShowRecentDocuments(FRecent);
}

void TFileFlow::Restore(const TKept& kept) {
  OrderEventsBy(FMission, kept.order, FViews);
  OrderReadingsBy(FMission, kept.sensorsOrder, kept.batteryOrder, FViews);
  for (const std::string_view panel : kept.closed) FControls.SetVisible(panel, false);
  if (kept.filterPanelOpen) FControls.SetVisible(kFilterPanelName, true);
}

void TFileFlow::EnableOpening(bool enabled) {
  for (const std::string_view button : {"dxBarOpenNewFile", "barbtnlrgOpenDemoFile", "dxBarReload"}) {
    FControls.SetEnabled(button, enabled);
  }
}

void TFileFlow::RemoveMission() {
  FViews.EmptyGridsAndCharts();
  FMission.SelectedEvent.reset();
  FMission.ChosenEvent.reset();
  FMission.Tables = {};
  FMission.Analysis.reset();
  FMission.ReferenceIsShown = false;
  FMission.CLDS.Clear();
  FMission.Important.Clear();
  FMission.Notes = {};
  ClearMission();
}

void TFileFlow::BackToWelcome() {
  FState = TState::Welcome;
  RemoveMission();
  FControls.SetVisible("pnlLoading", false);
  FControls.SetTaskbarProgress(false);
  EnableOpening(true);
  FControls.SetCaption(StartCaption(FProgram));
  EnterWelcomeState(FControls);
}

void TFileFlow::Fail(std::string_view text, std::string_view reason) {
  const std::string details = fmt::format("{}\n{}", Printable(FFileName), reason);
  BackToWelcome();
  if (!CloseIfWanted()) FDialogs.ShowMessage(text, details);
}

void TFileFlow::SwitchView(TView view) {
  if (!FileShown()) return;
  FView = view;
  switch (view) {
    case TView::Overview:
      SetViewOverview(FControls, FViews);
      break;
    case TView::Shock:
      SetViewShock(FControls, FViews, FMission.SelectedEvent);
      break;
    case TView::Report:
      SetViewReport(FControls);
      break;
    case TView::DamageBoundary:
    case TView::Statistics:
      SetViewOfAllEvents(FControls, view);
      break;
  }
}

bool TFileFlow::RunExport(const std::function<void(IProgress&)>& work) {
  if (!FileShown()) return false;
  struct TExporting {
    explicit TExporting(TState& state) : FState(state) { FState = TState::Exporting; }
    ~TExporting() { FState = TState::Shown; }
    TExporting(const TExporting&) = delete;
    TExporting& operator=(const TExporting&) = delete;
    TState& FState;
  } exporting(FState);
  FCancelled = false;
  TWindowProgress progress(*this);
  try {
    work(progress);
  } catch (const EKorvex& error) {
    if (error.iException != kReadCancelled) throw;
    return false;
  }
  return true;
}

bool TFileFlow::CloseIfWanted() {
  if (FCloseWanted) FControls.CloseWindow();
  return FCloseWanted;
}

bool TFileFlow::MayClose() {
  if (Busy() && !FReader) {
    FCloseWanted = true;
    return false;
  }
  // The reader is asked to end and waited for.
  FReader.reset();
  return true;
}
