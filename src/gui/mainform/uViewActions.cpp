#include "gui/mainform/uViewActions.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QStackedWidget>
#include <tuple>

#include "gui/analysis/uDamagePanel.h"
#include "gui/charts/uAccelerationChart.h"
#include "gui/charts/uDamageChart.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uNavigatorChart.h"
#include "gui/charts/uSensorsChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uGuard.h"
#include "gui/common/uQtText.h"
#include "gui/filter/uFilterChip.h"
#include "gui/filter/uFilterPanel.h"
#include "gui/mainform/uControls.h"
#include "gui/mainform/uMainParts.h"
#include "gui/mainform/uMissionViews.h"
#include "gui/mainform/uNoteDialogs.h"
#include "gui/mainform/uNotice.h"
#include "gui/overview/uOverviewPanel.h"
#include "gui/overview/uVerdictStrip.h"
#include "gui/report/uEventCardList.h"
#include "gui/report/uReportPanel.h"
#include "gui/shock/uPinBar.h"
#include "gui/shock/uShockPanel.h"
#include "shell/uCompareCommands.h"
#include "shell/uFileFlow.h"
#include "shell/uNavigatorCommands.h"
#include "shell/uNoteCommands.h"
#include "shell/uOrderingCommands.h"

TViewActions::TViewActions(QMainWindow& window, TMainParts& parts, TFileFlow& flow, TControls& controls,
                           TMissionViews& views, TNoteCommands& notes)
    : FWindow(window), FParts(parts), FFlow(flow), FControls(controls), FViews(views), FNotes(notes) {
  ConnectGrids();
  ConnectCharts();
  ConnectNavigator();
  ConnectFilter();
  ConnectEventCards();
  ConnectPins();
  connect(FParts.overview->Verdict(), &TVerdictStrip::Asked, this, &TViewActions::OpenVerdict);
  // Qt gives the focus of a control that is hidden or disabled to the one that happens to come next.
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* before, QWidget* now) {
    if (before == nullptr || before->window() != &FWindow || (before->isVisible() && before->isEnabled())) return;
    QMetaObject::invokeMethod(
        this,
        [this, next = QPointer(now)] {
          if (FWindow.focusWidget() == next) FParts.FocusView();  // also below a message box
        },
        Qt::QueuedConnection);
  });
}

void TViewActions::OnMission(const std::function<void(TShownMission&)>& command) {
  if (FFlow.FileShown()) Guarded(&FWindow, [&] { command(FFlow.Mission()); });
}

void TViewActions::Select(std::size_t event) {
  OnMission([&](TShownMission& mission) { SelectEvent(mission, event, FViews); });
}

void TViewActions::ConnectGrids() {
  using TTitleClick = void (*)(TShownMission&, std::string_view, IMissionViews&);
  const auto sortBy = [this](TGrid* grid, TTitleClick titleClick) {
    connect(grid, &TGrid::TitleClicked, this, [this, titleClick](const QString& field) {
      OnMission([&](TShownMission& mission) { titleClick(mission, Utf8(field), FViews); });
    });
  };
  sortBy(FParts.shock->Shocks(), ShockGridTitleClick);
  sortBy(FParts.shock->FilteredShocks(), ShockGridTitleClick);
  sortBy(FParts.shock->Analysis(), AnalysisGridTitleClick);
  sortBy(FParts.docks.DBGrid2, SensorsGridTitleClick);
  sortBy(FParts.docks.DBGrid8, BatteryGridTitleClick);
  for (TGrid* grid : {FParts.shock->Shocks(), FParts.shock->FilteredShocks(), FParts.shock->Analysis(),
                      FParts.overview->MostImportant()}) {
    connect(grid, &TGrid::RowChosen, this, &TViewActions::Select);
    connect(grid, &TGrid::RowHovered, this, [this](std::optional<std::size_t> event) {
      FParts.overview->Chart1()->SetHoveredEvent(event);
      FParts.shock->Chart20()->SetHoveredEvent(event);
    });
    connect(grid, &TGrid::RowOpened, this, [this](std::size_t event) {
      OnMission([&](TShownMission& mission) { ZoomNavigatorToEvent(mission, event, FViews); });
    });
  }
  connect(FParts.damage->Damaging(), &TGrid::RowChosen, this, &TViewActions::Select);
  connect(FParts.damage->Damaging(), &TGrid::RowOpened, this, [this](std::size_t event) {
    Select(event);
    FFlow.SwitchView(TView::Shock);
  });
  // A reading's row is its "ID".
  const auto reachReadings = [this](TGrid* grid, TDataset TMissionDatasets::*table) {
    connect(grid, &TGrid::RowOpened, this, [this, table](std::size_t row) {
      OnMission([&](TShownMission& mission) { ZoomNavigatorToReading(mission, mission.Tables.*table, row, FViews); });
    });
    connect(grid, &TGrid::RowHovered, this, [this, table](std::optional<std::size_t> row) {
      const TDataset& readings = FFlow.Mission().Tables.*table;
      FParts.overview->ChartAllSensors()->SetHoveredTime(row ? ReadingTime(readings, *row) : std::nullopt);
    });
  };
  reachReadings(FParts.docks.DBGrid2, &TMissionDatasets::Sensors);
  reachReadings(FParts.docks.DBGrid8, &TMissionDatasets::Battery);
  connect(FParts.overview, &TMainOverviewPanel::EventAskedFor, this, [this] { FFlow.SwitchView(TView::Shock); });
  connect(FParts.overview, &TMainOverviewPanel::OrderByChosen, this, [this](int entry) {
    OnMission([&](TShownMission& mission) { OrderMostImportantBy(mission, entry, FViews); });
  });
}

void TViewActions::ConnectCharts() {
  for (TTimeChart* chart : FWindow.findChildren<TTimeChart*>()) {
    const bool zooms = chart != FParts.docks.ChartNavigator;
    chart->setStatusTip(zooms ? tr("drag: zoom · middle drag: pan · double-click: reset")
                              : tr("drag: move the band · its edge: resize · outside: new band · double-click: all"));
    connect(chart, &TTimeChart::CursorValueChanged, this, [this, chart](const QString& text) {
      FParts.statusHint->setText(text.isEmpty() ? QString() : chart->statusTip());
      FParts.statusValue->setText(text);
    });
    connect(chart, &TTimeChart::FlagClicked, this, [this](const QString& note) {
      OnMission([&](TShownMission&) { ShowNoteNotice(FNotes.GoTo(Utf8(note)), FControls); });
    });
  }
  for (TRowGrid* grid : FWindow.findChildren<TRowGrid*>()) {
    connect(grid, &TRowGrid::RowsCopied, FParts.statusValue, &QLabel::setText);
  }
  connect(FParts.overview->ChartAllSensors(), &TSensorsChart::SensorsHidden, this,
          [this](const QString& words) { FParts.notice->ShowText(words, {}); });
  for (TEventsChart* chart : {FParts.overview->Chart1(), FParts.shock->Chart20()}) {
    connect(chart, &TEventsChart::EventClicked, this, &TViewActions::Select);
  }
  connect(FParts.damage->Chart(), &TDamageChart::EventClicked, this, &TViewActions::Select);
}

void TViewActions::ConnectNavigator() {
  for (TTimeChart* chart : std::initializer_list<TTimeChart*>{FParts.overview->Chart1(), FParts.shock->Chart20(),
                                                              FParts.overview->ChartAllSensors()}) {
    connect(chart, &TTimeChart::TimeRangeChanged, this, [this, chart] { FViews.UpdateSynced(*chart); });
    // Back to the band.
    connect(chart, &TTimeChart::ZoomReset, this, [this, chart] {
      OnMission([&](TShownMission& mission) { FViews.SetChartSpan(Utf8(chart->objectName()), mission.Band); });
    });
  }
  for (QStackedWidget* stack : {FParts.front, FParts.views}) {
    connect(stack, &QStackedWidget::currentChanged, this, [this] {
      FViews.MarkUnsynced(nullptr);
      FParts.FocusView();
    });
  }
  const TNavigatorChart* navigator = FParts.docks.ChartNavigator;
  const auto on = [this](auto moved) {
    return [this, moved](const TTimeSpan& band) {
      OnMission([&](TShownMission& mission) { moved(mission, band, FViews); });
    };
  };
  connect(navigator, &TNavigatorChart::BandDragging, this, on(NavigatorBandDragging));
  connect(navigator, &TNavigatorChart::BandResizing, this, on(NavigatorBandResizing));
}

void TViewActions::ConnectFilter() {
  FParts.filter->AddActiveButton(FWindow.findChild<QAction*>("actFilterActive"));
  connect(FParts.filter, &TFilterPanel::FilterChanged, this, [this](const TEventFilter& filter) {
    OnMission([&](TShownMission& mission) { ChangeFilter(mission, filter, FViews); });
  });
  connect(FParts.filter, &TFilterPanel::NavigatorSpanRequested, this, [this] {
    const TTimeSpan& band = FFlow.Mission().Band;
    FParts.filter->SetTimeSpan(band.start, band.end);
  });
  connect(FParts.statusEvents, &TFilterChip::OffClicked, this,
          [this] { OnMission([&](TShownMission& mission) { std::ignore = ActivateFilter(mission, false, FViews); }); });
}

void TViewActions::ConnectEventCards() {
  const TEventCardList* cards = FParts.report->Cards();
  connect(cards, &TEventCardList::EventChosen, this, &TViewActions::Select);
  connect(cards, &TEventCardList::EventOpened, this, [this](std::size_t event) {
    Select(event);
    FFlow.SwitchView(TView::Shock);
  });
}

void TViewActions::ConnectPins() {
  const auto show = [this](std::size_t slot, bool visible) {
    OnMission([&](TShownMission& mission) { SetPinVisible(mission, slot, visible, FViews); });
  };
  for (const TAccelerationChart* chart : FParts.shock->EventCharts()) {
    connect(chart, &TAccelerationChart::PinVisibleChanged, this, show);
  }
  const TPinBar* bar = FParts.shock->PinBar();
  connect(bar, &TPinBar::VisibleChanged, this, show);
  connect(bar, &TPinBar::UnpinAsked, this,
          [this](std::size_t slot) { OnMission([&](TShownMission& mission) { Unpin(mission, slot, FViews); }); });
  connect(bar, &TPinBar::UnpinAllAsked, this,
          [this] { OnMission([this](TShownMission& mission) { UnpinAll(mission, FViews); }); });
  connect(bar, &TPinBar::AlignmentChosen, this, [this](TAlignment alignment) {
    OnMission([&](TShownMission& mission) { AlignPins(mission, alignment, FViews); });
  });
}

void TViewActions::OpenVerdict(TVerdictQuestion question, TVerdictAnswer answer) {
  const TVerdict& verdict = FViews.Verdict();
  if (answer == TVerdictAnswer::AllEvents) {
    FFlow.SwitchView(TView::Shock);
  } else if (answer == TVerdictAnswer::SelectEvent) {
    Select(question == TVerdictQuestion::Peak ? verdict.peak->event : verdict.worst->event);
  } else if (answer == TVerdictAnswer::FilterAboveAlarm) {
    OnMission([this](TShownMission& mission) {
      TEventFilter filter;
      filter.aboveAlarm = true;
      ChangeFilter(mission, filter, FViews);
    });
  } else if (answer == TVerdictAnswer::EditLimits) {
    FControls.SelectRibbonTab("tabHome");
    FWindow.findChild<QAction*>("actAlarmLimits")->trigger();
  } else if (answer == TVerdictAnswer::ShowStatistics) {
    FFlow.SwitchView(TView::Statistics);
  } else if (answer == TVerdictAnswer::ShowWhole) {
    OnMission([this](TShownMission& mission) { actNavSetIntAllExecute(mission, FViews); });
  } else if (answer == TVerdictAnswer::ShowExcursion) {
    OnMission([&](TShownMission& mission) {
      if (const auto span = WorstExcursion(verdict, mission.Display)) NavigatorBandResizing(mission, *span, FViews);
    });
  }
}
