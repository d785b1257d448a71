#include "gui/mainform/KorvexMainForm.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <functional>

#include "base/uFiles.h"
#include "gui/analysis/uDamagePanel.h"
#include "gui/analysis/uStatisticsPanel.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/docks/uFoldingPanel.h"
#include "gui/mainform/uChartMenus.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uCommands.h"
#include "gui/mainform/uControls.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMissionViews.h"
#include "gui/mainform/uNoteChecksum.h"
#include "gui/mainform/uNotice.h"
#include "gui/mainform/uSettingsBinder.h"
#include "gui/mainform/uViewActions.h"
#include "gui/mainform/uViewOutput.h"
#include "gui/mainform/uWindowPlace.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/platform/uDialogs.h"
#include "gui/platform/uPostedMessages.h"
#include "gui/report/uReportPanel.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRecentList.h"
#include "gui/ribbon/uRecordingList.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/settings/uLimitProfileBar.h"
#include "gui/shock/uResponsePanel.h"
#include "gui/shock/uShockPanel.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uRecentFiles.h"
#include "gui/welcome/uWellcomePanel.h"
#include "platform/uProgram.h"
#include "shell/uExportCommands.h"
#include "shell/uFailureList.h"
#include "shell/uLimitProfiles.h"
#include "shell/uNoteCommands.h"
#include "shell/uResponseChoices.h"
#include "shell/uSettingsCommands.h"

namespace {

constexpr QSize kMinWindow(900, 600);  // every view fits into it with all its panels

void ListFolder(TBackstage& backstage, const QString& folder) {
  backstage.SelectPage("backstageBrowsePath");
  backstage.SetBrowsePath(folder);
}

}  // namespace

TKorvexMainForm::TKorvexMainForm(TProgram program, std::function<std::uint64_t()> memoryBound)
    : FProgram(std::move(program)),
      FParts(std::make_unique<TMainParts>(*this)),
      FSettings(std::make_unique<TSettingsBinder>(*this)),
      FControls(std::make_unique<TControls>(*this, *FParts, *FSettings)),
      FDialogs(std::make_unique<TDialogs>(*this)),
      FViews(std::make_unique<TMissionViews>(*this, *FParts, *FControls)),
      FMessages(std::make_unique<TPostedMessages>(
          [this](const TMessage& message) { Guarded(this, [&] { FFlow->HandleMessage(message); }); })),
      FFlow(std::make_unique<TFileFlow>(FProgram, FMessages->Handle(), std::move(memoryBound), *FControls, *FDialogs,
                                        *FViews)),
      FExports(std::make_unique<TExportCommands>(*FFlow, *FControls, *FDialogs, *FViews)),
      FProfiles(std::make_unique<TLimitProfiles>(FProgram.findSettingsFolder, FFlow->Mission(), *FControls, *FDialogs)),
      FNotes(std::make_unique<TNoteCommands>(FProgram, *FFlow, *FDialogs, *FViews)),
      FNoteChecksum(
          std::make_unique<TNoteChecksum>(this, [this](const std::string& text) { FControls->ShowNotice(text, {}); })) {
  setObjectName("KorvexMainForm");
  setAcceptDrops(true);
  setMinimumSize(kMinWindow);
  resize(1280, 800);
  MakeCommands({*this, FProgram, *FParts, *FFlow, *FControls, *FDialogs, *FViews, *FExports, *FNotes});
  ConnectChartMenus(*this);
  ConnectFiles();
  ConnectRecent();
  ConnectSettings();
  ConnectProfiles();
  ConnectNotes();
  ConnectReport();
  ConnectResponse();
  FViewActions = std::make_unique<TViewActions>(*this, *FParts, *FFlow, *FControls, *FViews, *FNotes);
  FormCreate();
}

// Qt's parents take the views after the flow has gone with the mission that they show.
TKorvexMainForm::~TKorvexMainForm() {
  FParts->alarmLimits->hide();
  FViewActions.reset();
  Guarded(nullptr, [this] { FViews->EmptyGridsAndCharts(); });
}

QWidget& TKorvexMainForm::View(TView view) const {
  if (view == TView::Shock) return *FParts->shock;
  if (view == TView::Report) return *FParts->report;
  if (view == TView::DamageBoundary) return *FParts->damage;
  if (view == TView::Statistics) return *FParts->statistics;
  return *FParts->overview;
}

void TKorvexMainForm::ConnectFiles() {
  const auto open = [this](const QString& path) { Guarded(this, [&] { FFlow->Open(Utf8(path)); }); };
  connect(FParts->backstage, &TBackstage::FileChosen, this, open);
  connect(FParts->backstage, &TBackstage::FolderDialogRequested, this, [this] {
    const auto folder = FDialogs->AskForFolder(Utf8(tr("Browse path")), {});
    if (folder) FParts->backstage->SetBrowsePath(QtText(*folder));
  });
  connect(FParts->ribbon, &TRibbon::BackstageRequested, this, [this] {
    if (FFlow->Busy()) return;
    FParts->backstage->SetSummarySource(SummarySource());
    FParts->backstage->SetCurrentFolder(
        FFlow->FileName().empty() ? QString() : QFileInfo(QtText(FFlow->FileName())).absolutePath());
    FParts->backstage->SelectPage("backstageRecent");
    FParts->backstage->show();
  });
  FParts->backstage->SetVersion(QtText(FProgram.version));
  // A floating panel is a window of its own and takes drops, too.
  for (QDockWidget* panel : FParts->docks.All()) {
    panel->setAcceptDrops(true);
    panel->installEventFilter(this);
  }
  connect(FParts->loading, &TLoadingPanel::Cancelled, this, [this] { FFlow->Cancel(); });
  connect(FParts->notice, &TNotice::OpenFailed, this, [this](const QString& folder) {
    FDialogs->ShowMessage(Utf8(tr("The folder cannot be opened.")), Utf8(folder));
  });
  connect(FParts->welcome, &TWellcomePanel::OpenFailed, this, [this](const QString& path) {
    FDialogs->ShowMessage(Utf8(tr("This document cannot be opened.")),
                          Utf8(tr("%1\nThe desktop has no program for it.").arg(path)));
  });
}

// The acceleration limits that are the same for all recordings.
TSummarySource TKorvexMainForm::SummarySource() const {
  const TDisplaySettings& display = FFlow->Mission().Settings.display;
  const std::string folder = FProgram.findSettingsFolder();
  TSummarySource source;
  if (std::filesystem::path kshock = FProgram.folder / kKshockFile; std::filesystem::exists(kshock)) {
    source.kshock = std::move(kshock);
  }
  if (!folder.empty()) source.cacheFolder = PathFromUtf8(folder) / "cache";
  if (display.alarmActive && !display.accelerationFromFile) source.limits = display.LimitsOf(TQuantity::Acceleration);
  return source;
}

void TKorvexMainForm::ConnectRecent() {
  const auto open = [this](const QString& path) {
    FParts->backstage->hide();
    Guarded(this, [&] { FFlow->Open(Utf8(path)); });
  };
  connect(FParts->recentFiles, &TRecentFiles::FileChosen, this, open);
  connect(FParts->recent->Files(), &TRecentListView::Chosen, this, open);
  connect(FParts->recent->Folders(), &TRecentListView::Chosen, this,
          [this](const QString& folder) { ListFolder(*FParts->backstage, folder); });
  const auto change = [this](TRecentListView* view, TRecentList& list) {
    connect(view, &TRecentListView::PinAsked, this, [this, &list](const QString& path, bool pinned) {
      list.SetPinned(Utf8(path), pinned);
      FControls->ShowRecentDocuments(FFlow->Recent());
    });
    connect(view, &TRecentListView::RemoveAsked, this, [this, &list](const QString& path) {
      list.Remove(Utf8(path));
      FControls->ShowRecentDocuments(FFlow->Recent());
    });
  };
  change(FParts->recent->Files(), FFlow->Recent().Files);
  change(FParts->recent->Folders(), FFlow->Recent().Folders);
}

void TKorvexMainForm::ConnectSettings() {
  for (TGrid* grid : findChildren<TGrid*>()) grid->SetDisplay(&FFlow->Mission().Display);
  FSettings->Bind(FFlow->Mission().Settings, [this] {
    Guarded(this, [this] { ApplySettings(FFlow->Mission(), *FViews); });
    FParts->alarmLimits->ShowAllowances(FFlow->Mission().Settings.display.profile);
  });
  connect(FParts->alarmLimits, &TAlarmLimitsPanel::LimitRefused, FParts->statusValue, &QLabel::setText);
  connect(findChild<QComboBox*>("cmbSettingsDefFileFilter"), &QComboBox::currentTextChanged, this,
          [this](const QString& patterns) { FParts->backstage->SetFilePatterns(patterns.split(" & ")); });
}

void TKorvexMainForm::ConnectProfiles() {
  TAlarmLimitsPanel& panel = *FParts->alarmLimits;
  const auto list = [this, &panel] { panel.Profiles().ShowProfiles(FProfiles->List(), FProfiles->File()); };
  const auto change = [this, list](auto command) {
    return [this, list, command](const QString& text = {}) {
      Guarded(this, [&] { std::invoke(command, *FProfiles, Utf8(text)); });
      list();
    };
  };
  connect(&panel, &TAlarmLimitsPanel::AboutToOpen, this, list);
  connect(&panel, &TAlarmLimitsPanel::Closed, this, [this] { Guarded(this, [this] { FProfiles->Keep(); }); });
  connect(&panel.Profiles(), &TLimitProfileBar::Chosen, this,
          change([](TLimitProfiles& profiles, const std::string& file) { profiles.Choose(PathFromUtf8(file)); }));
  connect(&panel.Profiles(), &TLimitProfileBar::CreateAsked, this, change(&TLimitProfiles::Create));
  connect(&panel.Profiles(), &TLimitProfileBar::SaveAsAsked, this, change(&TLimitProfiles::SaveAs));
  connect(&panel.Profiles(), &TLimitProfileBar::DeleteAsked, this,
          change([](TLimitProfiles& profiles, const std::string&) { profiles.Delete(); }));
  connect(FParts->damage, &TDamagePanel::LimitsTyped, this,
          [this](const TFragility& limits) { Guarded(this, [&] { FProfiles->SetProduct(limits); }); });
  connect(&panel, &TAlarmLimitsPanel::AllowanceTyped, this,
          [this, &panel](TQuantity quantity, bool isMax, const QLineEdit& edit) {
            Guarded(this, [&] {
              panel.ShowProblem(QtText(FProfiles->Allow(quantity, isMax, Utf8(edit.text()))), edit);
              panel.ShowAllowances(FFlow->Mission().Settings.display.profile);
            });
          });
}

void TKorvexMainForm::ConnectNotes() {
  FViews->OnNotesShown([this] {
    const auto notes = FFlow->Mission().Notes.file;
    if (!notes || notes->Items().empty() || notes->HasChecksum()) return;
    FNoteChecksum->Compute(notes->Recording(), [this](const std::filesystem::path& file, const std::string& sha256) {
      Guarded(this, [&] { FNotes->TakeChecksum(file, sha256); });
    });
  });
}

void TKorvexMainForm::ConnectReport() {
  FParts->report->SetSource(
      [this](const TShownMission& mission) { return ReportContents(mission, *FParts, *FFlow, FProgram); });
  connect(FParts->logos, &TLogos::Changed, this, [this] {
    if (FFlow->FileShown()) Guarded(this, [this] { FParts->report->ShowReport(FFlow->Mission()); });
  });
}

void TKorvexMainForm::ConnectResponse() {
  connect(FParts->shock->Response(), &TResponsePanel::ChoicesChanged, this, [this](const TResponseChoices& choices) {
    InSettingsFolder(kKeptResponseFile, "The choices of the response spectrum are not kept.",
                     [&](const auto& folder) { KeepResponseChoices(folder, choices); });
  });
}

void TKorvexMainForm::InSettingsFolder(const char* file, const char* failure,
                                       const std::function<void(const std::filesystem::path& folder)>& step) {
  const std::filesystem::path folder = PathFromUtf8(FProgram.findSettingsFolder());
  if (folder.empty()) return;
  TFailureList failures;
  failures.Run(folder / file, [&] { step(folder); });
  failures.Show(*FDialogs, failure);
}

void TKorvexMainForm::btnReportConfigOKClick(const TReportConfig& config) {
  Guarded(this, [&] {
    FParts->report->SetConfig(config);
    const std::string folder = FProgram.findSettingsFolder();
    if (!folder.empty()) KeepReportConfig(PathFromUtf8(folder), config);
  });
}

void TKorvexMainForm::FormCreate() {
  setWindowIcon(ProgramIcon());
  setWindowIconText(QtText(kApplicationTitle));
  for (const auto& [name, caption, file] : UserManual(FProgram)) {
    FParts->welcome->AddUserManualIcon(QtText(name), QtText(caption), QtText(file));
  }
  FParts->backstage->ProposeBrowsePath(QtText(FProgram.dataFolder));
  const std::string folder = FProgram.findSettingsFolder();
  if (!folder.empty()) LoadWindowPlace(*this, PathFromUtf8(folder) / kWindowPlaceFile);
  ::FormCreate(FProgram, FFlow->Mission(), FFlow->Recent(), *FControls, *FDialogs, *FViews);
  FProfiles->Restore();
  InSettingsFolder(kKeptReportConfigFile, "The report's configuration could not be read.",
                   [this](const auto& kept) { FParts->report->SetConfig(ReadKeptReportConfig(kept)); });
  InSettingsFolder(kKeptResponseFile, "The choices of the response spectrum could not be read.",
                   [this](const auto& kept) { FParts->shock->Response()->SetChoices(ReadKeptResponseChoices(kept)); });
}

void TKorvexMainForm::FormShow() {
  ::FormShow(FProgram, *FControls);
  FParts->FocusView();
  if (!FProgram.firstArgument.empty()) FFlow->Open(FProgram.firstArgument);
}

void TKorvexMainForm::FormClose() {
  for (TEventsChart* chart : {FParts->overview->Chart1(), FParts->shock->Chart20()}) chart->Clear();
  ::FormClose(FProgram, FFlow->Mission().Settings, FFlow->Recent(), *FControls, *FDialogs);
}

void TKorvexMainForm::SavePlace() {
  const std::string folder = FProgram.findSettingsFolder();
  if (folder.empty()) return;
  const std::filesystem::path file = PathFromUtf8(folder) / kWindowPlaceFile;
  TFailureList ignored;  // a place that is not kept is worth no message
  ignored.Run(file, [&] { SaveWindowPlace(*this, file); });
}

void TKorvexMainForm::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(FShownOnce, true)) return;
  // Queued, so that the window is visible while a recording is read.
  QMetaObject::invokeMethod(
      this, [this] { Guarded(this, [this] { FormShow(); }); }, Qt::QueuedConnection);
}

void TKorvexMainForm::closeEvent(QCloseEvent* event) {
  if (!FFlow->MayClose()) {
    event->ignore();
    return;
  }
  FParts->alarmLimits->hide();  // takes what is being typed
  Guarded(this, [this] { FormClose(); });
  SavePlace();
  QMainWindow::closeEvent(event);
}

bool TKorvexMainForm::event(QEvent* event) {
  if (event->type() == QEvent::StatusTip) {
    FParts->statusHint->setText(static_cast<QStatusTipEvent*>(event)->tip());
    return true;
  }
  return QMainWindow::event(event);
}

bool TKorvexMainForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::DragEnter) dragEnterEvent(static_cast<QDragEnterEvent*>(event));
  if (event->type() == QEvent::Drop) dropEvent(static_cast<QDropEvent*>(event));
  return QMainWindow::eventFilter(watched, event);
}

void TKorvexMainForm::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (!FFlow->Busy() && !urls.isEmpty() && urls.constFirst().isLocalFile()) event->acceptProposedAction();
}

void TKorvexMainForm::dropEvent(QDropEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.isEmpty()) return;
  event->acceptProposedAction();
  const QString path = urls.constFirst().toLocalFile();
  Guarded(this, [&] {
    if (!QFileInfo(path).isDir()) {
      FFlow->Open(Utf8(path));
      if (urls.size() == 1) return;
      const QString text = tr("Opened 1 of %1 files: %2. A window shows one recording.");
      return FParts->notice->ShowText(text.arg(QString::number(urls.size()), QFileInfo(path).fileName()), {});
    }
    Q_EMIT FParts->ribbon->BackstageRequested();
    ListFolder(*FParts->backstage, path);
  });
}
