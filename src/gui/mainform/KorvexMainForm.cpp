#include "gui/mainform/KorvexMainForm.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QStackedWidget>
#include <QUrl>
#include <tuple>

#include "base/uFiles.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/filter/uFilterChip.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uChartMenus.h"
#include "gui/mainform/uCommandTable.h"
#include "gui/mainform/uCommands.h"
#include "gui/mainform/uControls.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMissionViews.h"
#include "gui/mainform/uNotice.h"
#include "gui/mainform/uSettingsBinder.h"
#include "gui/mainform/uViewOutput.h"
#include "gui/mainform/uWindowPlace.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/overview/uVerdictStrip.h"
#include "gui/platform/uDialogs.h"
#include "gui/platform/uPostedMessages.h"
#include "gui/report/uEventCardList.h"
#include "gui/report/uReportPanel.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uBackstagePages.h"
#include "gui/ribbon/uRecentList.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/shock/uShockPanel.h"
#include "gui/shock/uShockValuesGrid.h"
#include "gui/welcome/uLoadingPanel.h"
#include "gui/welcome/uRecentFiles.h"
#include "gui/welcome/uWellcomePanel.h"
#include "shell/uExportCommands.h"
#include "shell/uFailureList.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uOrderingCommands.h"
#include "shell/uSettingsCommands.h"

namespace {

constexpr QSize kMinWindow(900, 600);  // every view fits into it with all its panels

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
      FExports(std::make_unique<TExportCommands>(*FFlow, *FControls, *FDialogs, *FViews)) {
  setObjectName("KorvexMainForm");
  setAcceptDrops(true);
  setMinimumSize(kMinWindow);
  resize(1280, 800);
  MakeCommands({*this, FProgram, *FParts, *FFlow, *FControls, *FDialogs, *FViews, *FExports});
  ConnectChartMenus(*this);
  ConnectFiles();
  ConnectRecent();
  ConnectGrids();
  ConnectCharts();
  ConnectNavigator();
  ConnectSettings();
  ConnectFilter();
  ConnectReport();
  connect(FParts->overview->Verdict(), &TVerdictStrip::Asked, this, &TKorvexMainForm::OpenVerdict);
  FormCreate();
}

// Qt's parents take the views after the flow has gone with the mission that they show.
TKorvexMainForm::~TKorvexMainForm() {
  FParts->alarmLimits->hide();
  for (QStackedWidget* stack : {FParts->front, FParts->views}) stack->disconnect(this);
  Guarded(nullptr, [this] { FViews->EmptyGridsAndCharts(); });
}

QWidget& TKorvexMainForm::View(TView view) const {
  if (view == TView::Shock) return *FParts->shock;
  if (view == TView::Report) return *FParts->report;
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

void TKorvexMainForm::ConnectRecent() {
  const auto open = [this](const QString& path) {
    FParts->backstage->hide();
    Guarded(this, [&] { FFlow->Open(Utf8(path)); });
  };
  connect(FParts->recentFiles, &TRecentFiles::FileChosen, this, open);
  connect(FParts->recent->Files(), &TRecentListView::Chosen, this, open);
  connect(FParts->recent->Folders(), &TRecentListView::Chosen, this, [this](const QString& folder) {
    FParts->backstage->SelectPage("backstageBrowsePath");
    FParts->backstage->SetBrowsePath(folder);
  });
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

void TKorvexMainForm::ConnectGrids() {
  using TTitleClick = void (*)(TShownMission&, std::string_view, IMissionViews&);
  const auto sortBy = [this](TGrid* grid, TTitleClick titleClick) {
    connect(grid, &TGrid::TitleClicked, this, [this, titleClick](const QString& field) {
      OnMission([&](TShownMission& mission) { titleClick(mission, Utf8(field), *FViews); });
    });
  };
  sortBy(FParts->shock->Shocks(), ShockGridTitleClick);
  sortBy(FParts->shock->FilteredShocks(), ShockGridTitleClick);
  sortBy(FParts->docks.DBGrid2, SensorsGridTitleClick);
  sortBy(FParts->docks.DBGrid8, BatteryGridTitleClick);
  for (TGrid* grid : {FParts->shock->Shocks(), FParts->shock->FilteredShocks(), FParts->overview->MostImportant()}) {
    connect(grid, &TGrid::RowChosen, this, &TKorvexMainForm::Select);
    connect(grid, &TGrid::RowHovered, this, [this](std::optional<std::size_t> event) {
      FParts->overview->Chart1()->SetHoveredEvent(event);
      FParts->shock->Chart20()->SetHoveredEvent(event);
    });
    connect(grid, &TGrid::RowOpened, this, [this](std::size_t event) {
      OnMission([&](TShownMission& mission) { ZoomNavigatorToEvent(mission, event, *FViews); });
    });
  }
  // A reading's row is its "ID".
  const auto reachReadings = [this](TGrid* grid, TDataset TMissionDatasets::*table) {
    connect(grid, &TGrid::RowOpened, this, [this, table](std::size_t row) {
      OnMission([&](TShownMission& mission) { ZoomNavigatorToReading(mission, mission.Tables.*table, row, *FViews); });
    });
    connect(grid, &TGrid::RowHovered, this, [this, table](std::optional<std::size_t> row) {
      const TDataset& readings = FFlow->Mission().Tables.*table;
      FParts->overview->ChartAllSensors()->SetHoveredTime(row ? ReadingTime(readings, *row) : std::nullopt);
    });
  };
  reachReadings(FParts->docks.DBGrid2, &TMissionDatasets::Sensors);
  reachReadings(FParts->docks.DBGrid8, &TMissionDatasets::Battery);
  connect(FParts->overview, &TMainOverviewPanel::EventAskedFor, this, &TKorvexMainForm::actSetViewShockExecute);
  connect(FParts->overview, &TMainOverviewPanel::OrderByChosen, this, [this](int entry) {
    OnMission([&](TShownMission& mission) { OrderMostImportantBy(mission, entry, *FViews); });
  });
}

void TKorvexMainForm::ConnectCharts() {
  for (TTimeChart* chart : findChildren<TTimeChart*>()) {
    const bool zooms = chart != FParts->docks.ChartNavigator;
    chart->setStatusTip(zooms ? tr("drag: zoom · middle drag: pan · double-click: reset")
                              : tr("drag: move the band · drag an edge: resize it"));
    connect(chart, &TTimeChart::CursorValueChanged, this, [this, chart](const QString& text) {
      FParts->statusHint->setText(text.isEmpty() ? QString() : chart->statusTip());
      FParts->statusValue->setText(text);
    });
  }
  for (TRowGrid* grid : findChildren<TRowGrid*>()) {
    connect(grid, &TRowGrid::RowsCopied, FParts->statusValue, &QLabel::setText);
  }
  for (TEventsChart* chart : {FParts->overview->Chart1(), FParts->shock->Chart20()}) {
    connect(chart, &TEventsChart::EventClicked, this, &TKorvexMainForm::Select);
  }
}

void TKorvexMainForm::ConnectNavigator() {
  for (TTimeChart* chart : std::initializer_list<TTimeChart*>{FParts->overview->Chart1(), FParts->shock->Chart20(),
                                                              FParts->overview->ChartAllSensors()}) {
    connect(chart, &TTimeChart::TimeRangeChanged, this, [this, chart] { FViews->UpdateSynced(*chart); });
    // Back to the band.
    connect(chart, &TTimeChart::ZoomReset, this, [this, chart] {
      OnMission([&](TShownMission& mission) { FViews->SetChartSpan(Utf8(chart->objectName()), mission.Band); });
    });
  }
  for (QStackedWidget* stack : {FParts->front, FParts->views}) {
    connect(stack, &QStackedWidget::currentChanged, this, [this] {
      FViews->MarkUnsynced(nullptr);
      FParts->FocusChart();
    });
  }
  const TNavigatorChart* navigator = FParts->docks.ChartNavigator;
  const auto on = [this](auto moved) {
    return [this, moved](const TTimeSpan& band) {
      OnMission([&](TShownMission& mission) { moved(mission, band, *FViews); });
    };
  };
  connect(navigator, &TNavigatorChart::BandDragging, this, on(NavigatorBandDragging));
  connect(navigator, &TNavigatorChart::BandResizing, this, on(NavigatorBandResizing));
}

void TKorvexMainForm::ConnectSettings() {
  for (TGrid* grid : findChildren<TGrid*>()) grid->SetDisplay(&FFlow->Mission().Display);
  FSettings->Bind(FFlow->Mission().Settings,
                  [this] { Guarded(this, [this] { ApplySettings(FFlow->Mission(), *FViews); }); });
  connect(FParts->alarmLimits, &TAlarmLimitsPanel::LimitRefused, FParts->statusValue, &QLabel::setText);
  connect(findChild<QComboBox*>("cmbSettingsDefFileFilter"), &QComboBox::currentTextChanged, this,
          [this](const QString& patterns) { FParts->backstage->SetFilePatterns(patterns.split(" & ")); });
}

void TKorvexMainForm::ConnectFilter() {
  FParts->filter->AddActiveButton(findChild<QAction*>("actFilterActive"));
  connect(FParts->filter, &TFilterPanel::FilterChanged, this, [this](const TEventFilter& filter) {
    OnMission([&](TShownMission& mission) { ChangeFilter(mission, filter, *FViews); });
  });
  connect(FParts->filter, &TFilterPanel::NavigatorSpanRequested, this, [this] {
    const TTimeSpan& band = FFlow->Mission().Band;
    FParts->filter->SetTimeSpan(band.start, band.end);
  });
  connect(FParts->statusEvents, &TFilterChip::OffClicked, this, [this] {
    OnMission([&](TShownMission& mission) { std::ignore = ActivateFilter(mission, false, *FViews); });
  });
}

void TKorvexMainForm::ConnectReport() {
  FParts->report->SetSource(
      [this](const TShownMission& mission) { return ReportContents(mission, *FParts, *FFlow, FProgram); });
  connect(FParts->report->Cards(), &TEventCardList::EventChosen, this, &TKorvexMainForm::Select);
  connect(FParts->report->Cards(), &TEventCardList::EventOpened, this, [this](std::size_t event) {
    Select(event);
    actSetViewShockExecute();
  });
  connect(FParts->logos, &TLogos::Changed, this,
          [this] { OnMission([this](TShownMission& mission) { FParts->report->ShowReport(mission); }); });
}

void TKorvexMainForm::btnReportConfigOKClick(const TReportConfig& config) {
  Guarded(this, [&] {
    FParts->report->SetConfig(config);
    const std::string folder = FProgram.findSettingsFolder();
    if (!folder.empty()) KeepReportConfig(PathFromUtf8(folder), config);
  });
}

void TKorvexMainForm::OpenVerdict(TVerdictQuestion question, TVerdictAnswer answer) {
  const TVerdict& verdict = FViews->Verdict();
  if (answer == TVerdictAnswer::AllEvents) {
    actSetViewShockExecute();
  } else if (answer == TVerdictAnswer::SelectEvent) {
    Select(question == TVerdictQuestion::Peak ? verdict.peak->event : verdict.worst->event);
  } else if (answer == TVerdictAnswer::FilterAboveAlarm) {
    OnMission([this](TShownMission& mission) {
      TEventFilter filter;
      filter.aboveAlarm = true;
      ChangeFilter(mission, filter, *FViews);
    });
  } else if (answer == TVerdictAnswer::EditLimits) {
    FControls->SelectRibbonTab("tabHome");
    findChild<QAction*>("actAlarmLimits")->trigger();
  } else if (answer == TVerdictAnswer::ShowWhole) {
    OnMission([this](TShownMission& mission) { actNavSetIntAllExecute(mission, *FViews); });
  } else if (answer == TVerdictAnswer::ShowExcursion) {
    OnMission([&](TShownMission& mission) {
      if (const auto span = WorstExcursion(verdict, mission.Display)) NavigatorBandResizing(mission, *span, *FViews);
    });
  }
}

void TKorvexMainForm::OnMission(const std::function<void(TShownMission&)>& command) {
  if (FFlow->FileShown()) Guarded(this, [&] { command(FFlow->Mission()); });
}

void TKorvexMainForm::Select(std::size_t event) {
  OnMission([&](TShownMission& mission) { SelectEvent(mission, event, *FViews); });
}

void TKorvexMainForm::FormCreate() {
  setWindowIcon(ProgramIcon());
  setWindowIconText(QtText(kApplicationTitle));
  for (const auto& [name, caption, file] : UserManual(FProgram)) {
    FParts->welcome->AddUserManualIcon(QtText(name), QtText(caption), QtText(file));
  }
  FParts->backstage->ProposeBrowsePath(QtText(FProgram.dataFolder));
  FParts->overview->ChartAllSensors()->PrepareExtraAxes();
  const std::string folder = FProgram.findSettingsFolder();
  if (!folder.empty()) LoadWindowPlace(*this, PathFromUtf8(folder) / kWindowPlaceFile);
  ::FormCreate(FProgram, FFlow->Recent(), *FControls, *FDialogs);
  if (folder.empty()) return;
  TFailureList failures;
  failures.Run(PathFromUtf8(folder) / "report.ini",
               [&] { FParts->report->SetConfig(ReadKeptReportConfig(PathFromUtf8(folder))); });
  failures.Show(*FDialogs, "The report's configuration could not be read.");
}

void TKorvexMainForm::FormShow() {
  ::FormShow(FProgram, *FControls);
  FParts->overview->ChartAllSensors()->SetUpAxes();
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
  Guarded(this, [&] { FFlow->Open(Utf8(urls.constFirst().toLocalFile())); });
}
