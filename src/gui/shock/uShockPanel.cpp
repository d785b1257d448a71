#include "gui/shock/uShockPanel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "analysis/uAnalysisTable.h"
#include "analysis/uEventOrdering.h"
#include "analysis/uShockMetrics.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uResponseChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uAnalysisBar.h"
#include "gui/common/uGrid.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/shock/uChoiceBar.h"
#include "gui/shock/uEventCards.h"
#include "gui/shock/uPinBar.h"
#include "gui/shock/uResponsePanel.h"
#include "gui/shock/uShockValuesGrid.h"

namespace {

constexpr int kMinList = 212;    // px; the tabs are whole, and "clipped" beside them
constexpr int kMinValues = 120;  // px

// A tab widget shows and hides its pages; others show and hide the grid, so it gets its own page.
QWidget* PageOf(QWidget* grid) {
  auto* page = new QWidget(grid->parentWidget());
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(grid);
  return page;
}

// The choice of what the spectrum shows.
TChoiceBar* MakeChoices(TSpectrumChart& chart, QWidget* parent) {
  auto* bar = new TChoiceBar("btnSpectrumChoices", QObject::tr("Kind and window of the spectrum"), parent);
  const auto add = [&](const char* name, const QString& caption, const auto& table, auto set) {
    QComboBox* list = MakeChoiceList(name, QString(caption).remove('&'), NamesOf(table));
    QObject::connect(list, &QComboBox::currentIndexChanged, &chart, [&chart, &table, set](int entry) {
      (chart.*set)(table.at(static_cast<std::size_t>(entry)).second);
    });
    bar->Add(caption, list);
  };
  add("cmbSpecType", QObject::tr("Spe&ctrum"), kSpectrumTypes, &TSpectrumChart::SetType);
  add("cmbSpecWindow", QObject::tr("&Window"), kWeightingWindows, &TSpectrumChart::SetWindow);
  return bar;
}

}  // namespace

TMainShockPanel::TMainShockPanel(QWidget* parent)
    : QWidget(parent),
      FBelow(new QSplitter(Qt::Horizontal, this)),
      FChart20(new TEventsChart(this)),
      FChart2(new TSelectedEventChart(this)),
      FSpectrum(new TSpectrumChart(this)),
      FSpectrumChoices(MakeChoices(*FSpectrum, this)),
      FResponse(new TResponsePanel(this)),
      FPins(new TPinBar(this)),
      FEventCharts(new QStackedWidget(this)),
      FValues(new TShockValuesGrid(this)),
      FShocks(new TGrid("dbgShocks", tr("Shock events"), EventIndexKey, this)),
      FFilteredShocks(new TGrid("dbgFilteredShocks", tr("Filtered shock events"), EventIndexKey, this)),
      FAnalysis(new TGrid("dbgAnalysis", tr("Shock analysis"), AnalysisIndexKey, this)),
      FCards(new TEventCards(this)),
      FTabs(new QTabWidget(this)),
      FConditions(new TElidedLabel("lblFilterConditions", this, Qt::ElideRight)),
      FClipped(new QLabel(tr("clipped"), this)) {
  setObjectName("MainShockPanel");
  setMinimumWidth(400);  // px, beside filter and Mission Details in the smallest window
  FShocks->SetPlaceholder(tr("No shock events"));
  FFilteredShocks->SetPlaceholder(tr("No event is let through"));
  FChart20->setObjectName("Chart20");
  FChart20->setAccessibleName(tr("Shock events chart"));
  FChart20->SetTimeTitle({});  // dates need none

  FEventCharts->setObjectName("stkEventCharts");
  FBelow->setObjectName("splShockEvent");
  FBelow->setChildrenCollapsible(false);
  FBelow->setHandleWidth(kSurfaceGap);
  FBelow->addWidget(MakeEventList());
  FEventCharts->addWidget(FChart2);
  FEventCharts->addWidget(FSpectrum);
  FEventCharts->addWidget(FResponse);
  auto* charts = new QWidget(FBelow);
  auto* column = new QVBoxLayout(charts);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  auto* bar = new QHBoxLayout;
  bar->setSpacing(0);
  bar->addWidget(FPins);
  bar->addWidget(FSpectrumChoices, 1);
  bar->addWidget(FResponse->Choices(), 1);
  column->addLayout(bar);
  column->addWidget(FEventCharts, 1);
  FBelow->addWidget(charts);
  FSpectrumChoices->hide();
  FResponse->Choices()->hide();
  FBelow->addWidget(FValues);
  FValues->setMinimumWidth(kMinValues);
  FBelow->setSizes({740, 1260, 0});  // the value table beside the chart needs more than the list
  ConnectValues();
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName("splShock");
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(kSurfaceGap);
  splitter->addWidget(FChart20);
  splitter->addWidget(FBelow);
  splitter->setSizes({380, 620});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);
}

void TMainShockPanel::ConnectValues() {
  FValues->hide();
  connect(FChart2, &TSelectedEventChart::SamplesChanged, this, &TMainShockPanel::ShowValues);
  for (const TFrequencyChart* chart :
       std::initializer_list<const TFrequencyChart*>{ChartSpecAnalysis(), ChartResponse()}) {
    connect(chart, &TFrequencyChart::LinesChanged, this, [this, chart] {
      if (chart == FrequenciesInFront()) ShowValues();
    });
  }
  for (const TAccelerationChart* chart : EventCharts()) {
    connect(chart, &TTimeChart::IndicatorMoved, this, &TMainShockPanel::MarkValue);
  }
}

TResponseChart* TMainShockPanel::ChartResponse() const {
  return FResponse->Chart();
}

std::array<TAccelerationChart*, 3> TMainShockPanel::EventCharts() const {
  return {FChart2, ChartSpecAnalysis(), ChartResponse()};
}

TFrequencyChart* TMainShockPanel::FrequenciesInFront() const {
  if (FEventCharts->currentWidget() == FSpectrum) return ChartSpecAnalysis();
  return FEventCharts->currentWidget() == FResponse ? ChartResponse() : nullptr;
}

TAccelerationChart& TMainShockPanel::ChartInFront() const {
  if (TFrequencyChart* const chart = FrequenciesInFront()) return *chart;
  return *FChart2;
}

void TMainShockPanel::ShowValues() {
  if (const TFrequencyChart* chart = FrequenciesInFront()) {
    FValues->SetLines(chart->Lines(), chart->ValueUnit());
  } else {
    FValues->SetSamples(FChart2->Samples(), FChart2->StartMs());
  }
}

void TMainShockPanel::MarkValue(double pointed) {
  if (FValues->isHidden()) return;
  const TFrequencyChart* const chart = FrequenciesInFront();
  FValues->MarkRow(chart != nullptr ? chart->LineAt(pointed) : FChart2->NearestSample(pointed));
}

void TMainShockPanel::ShowEvent(const TEventList& events, std::optional<std::size_t> event,
                                const TMissionData& mission) {
  FChart2->ShowEvent(events, event.value_or(events.Count()), mission);
  ChartSpecAnalysis()->ShowEvent(events, event.value_or(events.Count()));
  ChartResponse()->ShowEvent(events, event.value_or(events.Count()), ThresholdsOf(mission).totOn);
}

void TMainShockPanel::ShowPins(const TPins& pins) {
  for (TAccelerationChart* chart : EventCharts()) chart->SetPins(pins);
  FPins->ShowPins(pins);
}

void TMainShockPanel::SetSpectrumVisible(bool visible) {
  ShowInFront(FSpectrum, visible);
}

void TMainShockPanel::SetResponseVisible(bool visible) {
  ShowInFront(FResponse, visible);
}

void TMainShockPanel::ShowInFront(QWidget* chart, bool visible) {
  if (visible) {
    FEventCharts->setCurrentWidget(chart);
  } else if (FEventCharts->currentWidget() == chart) {
    FEventCharts->setCurrentWidget(FChart2);
  }
  FPins->SetAlignmentVisible(FrequenciesInFront() == nullptr);
  FSpectrumChoices->setVisible(FEventCharts->currentWidget() == FSpectrum);
  FResponse->Choices()->setVisible(FEventCharts->currentWidget() == FResponse);
  ShowValues();
}

void TMainShockPanel::SetValuesVisible(bool visible) {
  if (visible == FValues->isHidden()) {
    ShowListBeside(visible);
    TakeRoomForValues(visible);
  }
  if (const auto pointed = ChartInFront().Marks().IndicatorTime()) MarkValue(*pointed);
}

// The list gives way: the keys step through its events all the same.
void TMainShockPanel::ShowListBeside(bool values) {
  int needed = 2 * FBelow->handleWidth() + kMinValues;
  for (int i = 0; i < 2; ++i) needed += FBelow->widget(i)->minimumSizeHint().width();
  FBelow->widget(0)->setVisible(!values || width() >= needed);
  FBelow->refresh();
}

void TMainShockPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowListBeside(!FValues->isHidden());
}

// The table takes its room from the chart beside it, and from the list what the chart needs to stay legible. Closing it
// gives each its room back.
void TMainShockPanel::TakeRoomForValues(bool visible) {
  constexpr int kMinChart = 300;  // px
  QList<int> sizes = FBelow->sizes();
  const int handle = FBelow->handleWidth();
  if (visible) {
    const int wanted = FValuesWidth.value_or(FValues->FittingWidth());
    const int spare = std::max(0, sizes[0] - FBelow->widget(0)->minimumSizeHint().width());
    FFromList = std::clamp(wanted + handle + kMinChart - sizes[1], 0, spare);
    sizes[0] -= FFromList;
    const int room = sizes[1] + FFromList - handle;
    sizes[2] = std::min(wanted, room - FEventCharts->minimumSizeHint().width());
    sizes[1] = room - sizes[2];
  } else {
    FValuesWidth = sizes[2];
    const int fromList = std::min(FFromList, sizes[2] + handle);
    sizes[0] += fromList;
    sizes[1] += sizes[2] + handle - fromList;
    sizes[2] = 0;
  }
  FValues->setVisible(visible);
  FBelow->setSizes(sizes);
}

QWidget* TMainShockPanel::MakeEventList() {
  FTabs->setObjectName("pgcShockGrids");
  FTabs->setUsesScrollButtons(false);
  FTabs->setMinimumWidth(kMinList);
  FTabs->setElideMode(Qt::ElideRight);
  FTabs->setAccessibleName(tr("Event grids"));
  FTabs->addTab(PageOf(FShocks), tr("&All events"));
  QWidget* filtered = PageOf(FFilteredShocks);
  FConditions->setForegroundRole(QPalette::PlaceholderText);
  FConditions->setContentsMargins(8, 4, 8, 4);
  FConditions->hide();
  static_cast<QVBoxLayout*>(filtered->layout())->setSpacing(0);
  static_cast<QVBoxLayout*>(filtered->layout())->insertWidget(0, FConditions);
  FTabs->addTab(filtered, tr("Fil&tered events"));
  FTabs->installEventFilter(this);
  QWidget* analysis = PageOf(FAnalysis);
  FAnalysis->SetPlaceholder(tr("No event is let through"));
  static_cast<QVBoxLayout*>(analysis->layout())->insertWidget(0, new TAnalysisBar("barAnalysis", analysis));
  FTabs->addTab(analysis, tr("A&nalysis"));
  FClipped->setObjectName("lblClipped");
  FClipped->setProperty("alarm", true);
  FClipped->setToolTip(tr("The sensor was at the end of its range: the true peak of the selected event is higher"));
  FClipped->setContentsMargins(8, 0, 8, 0);
  FClipped->setAccessibleName(tr("clipped"));
  FClipped->hide();
  auto* box = new QWidget(this);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(FCards);
  layout->addWidget(FTabs);
  return box;
}

void TMainShockPanel::ShowFilter(std::size_t passing, std::size_t all, const QString& conditions) {
  const QString analysis = FTabs->tabText(2);
  FTabWords = {QStringList{tr("&All events %1").arg(all), tr("Fil&tered events %1").arg(passing), analysis},
               QStringList{tr("&All %1").arg(all), tr("Fil&tered %1").arg(passing), analysis},
               QStringList{tr("&All"), tr("Fil&tered"), analysis}};
  CaptionTabs();
  const bool switchedOn = FConditions->isHidden() && !conditions.isEmpty();
  FConditions->setText(conditions);
  FConditions->setVisible(!conditions.isEmpty());
  if (switchedOn && !IsAnalysisInFront()) FTabs->setCurrentIndex(1);
}

// Short words where the whole ones would be cut, which are then in the tool tips; "clipped" becomes a sign last.
void TMainShockPanel::CaptionTabs() {
  FClipped->setText(tr("clipped"));
  const auto fits = [this] {
    const int corner = FTabs->cornerWidget() == nullptr ? 0 : FClipped->sizeHint().width();
    return FTabs->tabBar()->sizeHint().width() <= FTabs->width() - corner;
  };
  for (const QStringList& words : FTabWords) {
    for (int i = 0; i < words.size(); ++i) {
      FTabs->setTabText(i, words[i]);
      FTabs->setTabToolTip(i, QString(FTabWords.front()[i]).remove('&'));
    }
    if (fits()) return;
  }
  FClipped->setPixmap(Icon("data-warning").pixmap(fontMetrics().height()));
}

bool TMainShockPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) CaptionTabs();
  return QWidget::eventFilter(watched, event);
}

bool TMainShockPanel::IsAnalysisInFront() const {
  return FTabs->currentIndex() == 2;
}

void TMainShockPanel::ShowClipped(bool clipped) {
  // A hidden corner keeps its room, so it is taken away.
  FTabs->setCornerWidget(clipped ? FClipped : nullptr);
  FClipped->setVisible(clipped);
  CaptionTabs();
}
