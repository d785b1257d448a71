#include "gui/shock/uShockPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "analysis/uEventOrdering.h"
#include "analysis/uShockMetrics.h"
#include "gui/charts/uEventsChart.h"
#include "gui/charts/uResponseChart.h"
#include "gui/charts/uSelectedEventChart.h"
#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uGrid.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/shock/uEventCards.h"
#include "gui/shock/uResponsePanel.h"
#include "gui/shock/uShockValuesGrid.h"
#include "gui/shock/uSpectrumPanel.h"

namespace {

// A tab widget shows and hides its pages; others show and hide the grid, so it gets its own page.
QWidget* PageOf(QWidget* grid) {
  auto* page = new QWidget(grid->parentWidget());
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(grid);
  return page;
}

}  // namespace

TMainShockPanel::TMainShockPanel(QWidget* parent)
    : QWidget(parent),
      FBelow(new QSplitter(Qt::Horizontal, this)),
      FChart20(new TEventsChart(this)),
      FChart2(new TSelectedEventChart(this)),
      FSpectrum(new TSpectrumPanel(this)),
      FResponse(new TResponsePanel(this)),
      FEventCharts(new QStackedWidget(this)),
      FValues(new TShockValuesGrid(this)),
      FShocks(new TGrid("dbgShocks", tr("Shock events"), EventIndexKey, this)),
      FFilteredShocks(new TGrid("dbgFilteredShocks", tr("Filtered shock events"), EventIndexKey, this)),
      FCards(new TEventCards(this)),
      FTabs(new QTabWidget(this)),
      FConditions(new TElidedLabel("lblFilterConditions", this, Qt::ElideRight)),
      FClipped(new QLabel(tr("clipped"), this)) {
  setObjectName("MainShockPanel");
  setMinimumWidth(500);  // px, so that docks leave the list and the chart their room
  FShocks->SetPlaceholder(tr("No shock events"));
  FFilteredShocks->SetPlaceholder(tr("No event is let through"));
  FChart20->setObjectName("Chart20");
  FChart20->setAccessibleName(tr("Shock events chart"));
  FChart2->setObjectName("Chart2");
  FChart2->setAccessibleName(tr("Selected event chart"));

  FBelow->setObjectName("splShockEvent");
  FBelow->setChildrenCollapsible(false);
  FBelow->setHandleWidth(kSurfaceGap);
  FBelow->addWidget(MakeEventList());
  FEventCharts->addWidget(FChart2);
  FEventCharts->addWidget(FSpectrum);
  FEventCharts->addWidget(FResponse);
  FBelow->addWidget(FEventCharts);
  FBelow->addWidget(FValues);
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

TSpectrumChart* TMainShockPanel::ChartSpecAnalysis() const {
  return FSpectrum->Chart();
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
  ShowValues();
}

void TMainShockPanel::SetValuesVisible(bool visible) {
  if (visible == FValues->isHidden()) TakeRoomForValues(visible);
  if (const auto pointed = ChartInFront().Marks().IndicatorTime()) MarkValue(*pointed);
}

// The table takes its room from the chart beside it and gives it back.
void TMainShockPanel::TakeRoomForValues(bool visible) {
  QList<int> sizes = FBelow->sizes();
  if (visible) {
    const int room = sizes[1] - FBelow->handleWidth();
    sizes[2] = std::min(FValuesWidth.value_or(FValues->FittingWidth()), room - FEventCharts->minimumSizeHint().width());
    sizes[1] = room - sizes[2];
  } else {
    FValuesWidth = sizes[2];
    sizes[1] += sizes[2] + FBelow->handleWidth();
    sizes[2] = 0;
  }
  FValues->setVisible(visible);
  FBelow->setSizes(sizes);
}

void TMainShockPanel::SetMasks(const TValueMasks& masks) {
  FChart20->SetMasks(masks);
  FChart2->SetMasks(masks);
  FValues->SetMasks(masks);
}

QWidget* TMainShockPanel::MakeEventList() {
  FTabs->setObjectName("pgcShockGrids");
  FTabs->setUsesScrollButtons(false);
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
  FClipped->setObjectName("lblClipped");
  FClipped->setProperty("alarm", true);
  FClipped->setToolTip(tr("The sensor was at the end of its range: the true peak of the selected event is higher"));
  FClipped->setContentsMargins(8, 0, 8, 0);
  FClipped->hide();
  FTabs->setCornerWidget(FClipped);
  auto* box = new QWidget(this);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(FCards);
  layout->addWidget(FTabs);
  return box;
}

void TMainShockPanel::ShowFilter(std::size_t passing, std::size_t all, const QString& conditions) {
  FTabs->setTabText(0, tr("&All events %1").arg(all));
  FTabs->setTabText(1, tr("Fil&tered events %1").arg(passing));
  for (int i = 0; i < FTabs->count(); ++i) FTabs->setTabToolTip(i, FTabs->tabText(i).remove('&'));  // may be cut
  const bool switchedOn = FConditions->isHidden() && !conditions.isEmpty();
  FConditions->setText(conditions);
  FConditions->setVisible(!conditions.isEmpty());
  if (switchedOn) FTabs->setCurrentIndex(1);
}

void TMainShockPanel::ShowClipped(bool clipped) {
  FClipped->setVisible(clipped);
}
